// What is installed on the device: finisher, hole punch, fax card, trays.
//
// The PPD's installable options Option1 to Option25 are read once, by the shell's Initialize, into a cache of main
// keyword and chosen option keyword. A table of installed features says which of them make a feature that panels ask
// for by key.
#pragma once

#include "platform/foundation/CFBase.h"
#include "platform/printing/CompiledPPD.h"

/// One way to have a feature. A feature may have several rows; a table ends with a row whose first field is null.
struct InstalledFeature {
    const char* featureKey;
    const char* mainKeyword;      // of an installable option
    const char* optionKeyword;    // the option that means "installed"
    const char* localizationKey;  // of the feature's name; null when it is never shown
    SInt32 ticketValue;           // what the feature stands for in the tickets
};

/// The features of the product line.
extern const InstalledFeature InstalledFeatures[];

/// Marks the printer's installed options in the PPD, reads them and keeps the table, which must outlive the cache.
/// False, and nothing done, when a cache is held already.
Boolean LoadInstallableOptions(PMTicketRef printerInfo, PPDContext context, const InstalledFeature* table);
void UnloadInstallableOptions();

/// The option keyword that is chosen for a main keyword, lent. False when the cache lacks the main keyword.
Boolean getInstallableOptionValue(CFStringRef mainKeyword, CFStringRef* optionKeyword);

/// Whether a feature is installed. False for null and for a key that the table lacks.
Boolean getInstalledFeature(CFStringRef featureKey);

/// The ticket value of the first row of the feature that is installed; false when none is.
Boolean getInstallableOptionTicketValue(CFStringRef featureKey, SInt32* value);

/// The name of the feature as it is installed, a new string from the bundle's texts. When it is not installed or has no
/// name, the constant CFSTR("STRING NOT FOUND"), which is not to be released; compare the pointers to tell.
CFStringRef CopyLocalizedStringForInstalledFeatureFromPlugin(CFStringRef featureKey, CFBundleRef bundle);

/// The file name of the picture of the device as it is installed, constant or the feature database's. A model's
/// "Pictures" in the database are dictionaries, each with its file's name under "Picture" and the options with which it
/// is the one under their main keywords; the first that fits is taken. Where there are none, the pictures are those of
/// the office models. Null when the cache lacks Option1.
CFStringRef GetDeviceMimic();

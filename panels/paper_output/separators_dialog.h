// Sheets that separate transparencies: whether there are any, whether they are printed, and their color.
#pragma once

#include "platform/foundation/CFRef.h"
#include "platform/printing/PMTicket.h"
#include "platform/toolbox/Controls.h"

// Rows of SeparatorOptionMap (model/settings/setting_map.h).
inline constexpr SInt32 kSeparatorsNone = 1;
inline constexpr SInt32 kSeparatorsBlank = 2;
inline constexpr SInt32 kSeparatorsPrinted = 3;

/// Reads the separators from the ticket: an option of SeparatorOptionMap, none without one that it has; a color of the
/// option map of "MediaColor", white without one that it has.
void SyncSeparatorsFromTicket(PMTicketRef ticket, SInt32* option, SInt32* color);
void SyncSeparatorsToTicket(PMTicketRef ticket, SInt32 option, SInt32 color);

/// The separators in words: "Blank Separators, Blue". The color's name is the PPD's.
CFRef<CFStringRef> CopySeparatorText(CFBundleRef bundle, SInt32 option, SInt32 color);

/// Adds a line with the separators to a view that shows a summary. For paper that is transparent only, which the caller
/// sees to.
void AppendSeparatorSummary(ControlRef textView, CFBundleRef bundle, SInt32 option, SInt32 color);

/// Shows the dialog (nib "FinishingDialogs", window "Separators"). Option and color change on OK only. Without colors
/// of paper in the PPD no color is asked for. Returns the status of loading the nib.
OSStatus RunModalSeparatorsDialog(CFBundleRef bundle, SInt32* option, SInt32* color);

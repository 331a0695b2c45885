// The controls of the LAN fax setup that show a fax's options.
#pragma once

#include "jobtypes/dialogs/fax_window.h"

// Control numbers.
enum LANFaxControl : SInt32 {
    kFaxTabs = 1000,
    kFaxRecipientsPane = 1100,
    kFaxBrowser = 1111,
    kFaxEditButton = 1120,
    kFaxRemoveButton = 1122,
    kFaxSaveGroupButton = 1123,
    kFaxOptionsPane = 1200,
    kFaxConfirmationSheet = 1202,
    kFaxSendSpeed = 1204,
    kFaxResolution = 1206,
    kFaxSendTime = 1208,
    kFaxClock = 1209,
    kFaxPrefixBox = 1211,
    kFaxPrefix = 1212,
    kFaxCardBox = 1213,
    kFaxCard = 1214,
    kFaxCover = 1216,
    kFaxCoverSetup = 1217,
    kFaxNotes = 1219,
    kFaxCardHint = 1226,
    kFaxClockHint = 1227,
    kFaxPreferencesPane = 1300,
    kFaxPromptDuplicate = 1302,
    kFaxPromptRemove = 1303,
};

/// Limits what can be typed.
void LimitLANFaxFields(const FaxWindow& window);

/// Shows the options.
void SyncToUI(const FaxWindow& window, CFDictionaryRef options);
/// Takes them from the controls.
void SyncFromUI(const FaxWindow& window, CFMutableDictionaryRef options);

// Enable what a choice needs, and give that the focus.
void UpdateSendTimeControls(const FaxWindow& window);
void UpdateDialingPrefixControls(const FaxWindow& window);
void UpdateCreditCardControls(const FaxWindow& window);
void UpdateCoverSheetControls(const FaxWindow& window);

/// Tells when the moment that the clock shows is over, so that the fax goes later.
void UpdateSendTimeHint(const FaxWindow& window);
/// The card number is shown as dots; this tells how many digits it has, so that a missing one is seen.
void UpdateCreditCardHint(const FaxWindow& window);

// Code units of what is dialed beside a fax number; 0 where the box is off.
CFIndex DialingPrefixLength(const FaxWindow& window);
CFIndex CreditCardLength(const FaxWindow& window);

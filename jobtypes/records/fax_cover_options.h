// What a fax's options say of its cover sheet.
#pragma once

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"

/// Whom the sheet names, as the choice is stored.
enum FaxCoverRecipients : CFIndex {
    kFaxCoverNoRecipients = 1,
    kFaxCoverRecipientList = 2,
    kFaxCoverRecipientText = 3,  // the sender's own words
};

/// The labels on the sheet in the user's language.
struct FaxCoverLabels {
    CFRef<CFStringRef> from;
    CFRef<CFStringRef> phone;
    CFRef<CFStringRef> fax;
    CFRef<CFStringRef> to;
    CFRef<CFStringRef> notes;
};

/// Texts that are null are empty.
struct FaxCoverOptions {
    using Text = CFRef<CFStringRef>;

    bool showSender = true;
    Text senderName;
    Text senderOrganization;
    Text senderEmailAddress;
    Text senderPhoneNumber;
    Text senderFaxNumber;
    CFIndex showRecipients = kFaxCoverRecipientList;
    Text customRecipientText;
    Text notes;
    CFIndex size = 1;    // item of FaxCoverSizeMap, from 1
    Text watermarkName;  // of a stored one; null for none
    Text imageName;      // of a stored one; null for none

    /// What is absent, or of another kind than it should be, has its default.
    [[nodiscard]] static FaxCoverOptions fromDictionary(CFDictionaryRef dictionary);
    /// Empty texts are removed; the label of the notes goes with the notes.
    void toDictionary(CFMutableDictionaryRef dictionary, const FaxCoverLabels& labels) const;
};

/// A new string of the sender's lines, each with its end: name, organization and e-mail, then phone and fax behind
/// their labels. What is empty or null has no line.
[[nodiscard]] CFRef<CFStringRef> CreateLANFaxSenderInformation(CFStringRef name, CFStringRef organization,
                                                               CFStringRef email, CFStringRef phoneLabel,
                                                               CFStringRef phone, CFStringRef faxLabel,
                                                               CFStringRef fax);

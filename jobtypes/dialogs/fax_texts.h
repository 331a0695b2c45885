// Texts of the fax dialogs, and the notices that show them.
//
// Keys are looked up in the table "LANFax"; titles of notices' buttons are in the default table, as everywhere.
#pragma once

#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "ui/message_text.h"

#include <initializer_list>

/// The text of a key; "STRING NOT FOUND" when it has none.
CFRef<CFStringRef> CopyFaxText(CFBundleRef bundle, CFStringRef key);

/// The same with the arguments filled in (see CopyFilledInMessage).
CFRef<CFStringRef> CopyFaxMessage(CFBundleRef bundle, CFStringRef key, std::initializer_list<CFStringRef> arguments);

/// A number for such a message.
CFRef<CFStringRef> CopyNumberText(CFIndex number);

/// Warns with an OK button.
void ShowFaxNotice(CFBundleRef bundle, CFStringRef headerKey, CFStringRef message);

struct FaxQuestion {
    CFStringRef headerKey;
    CFStringRef message;
    CFStringRef defaultKey;  // of the buttons' titles
    CFStringRef alternateKey;
    CFStringRef checkBoxKey;  // null: no check box
};
struct FaxAnswer {
    bool isDefault;
    bool isChecked;
};
FaxAnswer AskFaxQuestion(CFBundleRef bundle, const FaxQuestion& question);

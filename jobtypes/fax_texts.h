// Texts of the fax dialogs, and the notices that show them.
//
// Keys are looked up in the table "LANFax"; titles of notices' buttons are in the default table, as everywhere.
#pragma once

#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"

#include <initializer_list>

/// The text of a key; "STRING NOT FOUND" when it has none.
CFRef<CFStringRef> CopyFaxText(CFBundleRef bundle, CFStringRef key);

/// Another person's text as it can be shown on one line: what is longer than `longest` code units is cut, with an
/// ellipsis, and characters that break lines or turn the order of their neighbours round become blanks. Empty for null.
CFRef<CFStringRef> CopyTextForOneLine(CFStringRef text, CFIndex longest);

/// The text of a key with the arguments in the places of "%1$@", "%2$@" and so on, so that a language may turn their
/// order round. Arguments are shown as texts for one line.
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

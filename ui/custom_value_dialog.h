// A small dialog that asks for one text.
#pragma once

#include "platform/toolbox/Events.h"

inline constexpr SInt16 kCustomValueOK = 1;
inline constexpr SInt16 kCustomValueCancel = 2;

/// What the dialog asks for: keys of the bundle's texts.
struct CustomValueTexts {
    CFStringRef title;
    CFStringRef label;  // of the field
    CFStringRef hint;   // above it
};

/// Shows the dialog (nib "Utilities", window "CustomValue") with the text in its field, which takes at most `maximum`
/// UTF-16 code units (below 1: any length), until the user ends it.
///
/// *text is lent on entry (null for an empty field). Afterwards it is a new string, owned by the caller, when *result
/// is kCustomValueOK, and null when it is kCustomValueCancel. Returns the status of loading the nib; a dialog that
/// could not be shown counts as cancelled. Without texts it asks for a value.
OSStatus RunModalCustomValueDialog(CFBundleRef bundle, SInt32 maximum, CFStringRef* text, SInt16* result,
                                   const CustomValueTexts* texts = nullptr);

/// The dialog's command handler: 'ok  ' and 'not!' end it.
OSStatus CustomValueEventHandler(EventHandlerCallRef next, EventRef event, void* userData);

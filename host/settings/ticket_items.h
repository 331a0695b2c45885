// Items of a ticket that anybody may have written: of another type than expected they read as missing.
#pragma once

#include "host/script/text.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFNumber.h"
#include "platform/printing/PMTicket.h"

#include <string>

/// Who sets an item: the dialog.
#define kHostClient CFSTR("com.tavro.print.dialog")

inline SInt32 numberItem(PMTicketRef ticket, CFStringRef key, SInt32 fallback) {
    CFNumberRef number = nullptr;
    SInt32 value = 0;
    return PMTicketGetCFNumber(ticket, kPMTopLevel, kPMTopLevel, key, &number) == noErr &&
                   CFNumberGetValue(number, kCFNumberSInt32Type, &value)
               ? value
               : fallback;
}

inline bool booleanItem(PMTicketRef ticket, CFStringRef key) {
    CFBooleanRef value = nullptr;
    return PMTicketGetCFBoolean(ticket, kPMTopLevel, kPMTopLevel, key, &value) == noErr && CFBooleanGetValue(value);
}

/// Empty when it is missing.
inline std::string stringItem(PMTicketRef ticket, CFStringRef key) {
    CFStringRef value = nullptr;
    PMTicketGetCFString(ticket, kPMTopLevel, kPMTopLevel, key, &value);
    return utf8(value);
}

/// Lent; null when it is missing.
inline CFDictionaryRef dictionaryItem(PMTicketRef ticket, CFStringRef key) {
    CFDictionaryRef value = nullptr;
    PMTicketGetCFDictionary(ticket, kPMTopLevel, kPMTopLevel, key, &value);
    return value;
}

/// Lent; null when it is missing.
inline CFArrayRef arrayItem(PMTicketRef ticket, CFStringRef key) {
    CFArrayRef value = nullptr;
    PMTicketGetCFArray(ticket, kPMTopLevel, kPMTopLevel, key, &value);
    return value;
}

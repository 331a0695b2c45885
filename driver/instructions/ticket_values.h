// Values of tickets and of dictionaries in them, as the standard library has them. What is missing, or of another type,
// is the fallback.
#pragma once

#include "model/settings/ppd_access.h"
#include "model/settings/record_ticket.h"
#include "platform/foundation/text.h"
#include "platform/printing/PMTicket.h"

#include <string>

/// Who sets an item: the driver.
#define kDriverClient CFSTR("com.tavro.print.driver")

inline std::string textOf(PMTicketRef ticket, CFStringRef key) {
    CFStringRef value = nullptr;
    PMTicketGetCFString(ticket, kPMTopLevel, kPMTopLevel, key, &value);
    return utf8Text(value);
}

inline bool flagOf(PMTicketRef ticket, CFStringRef key) {
    CFBooleanRef value = nullptr;
    return PMTicketGetCFBoolean(ticket, kPMTopLevel, kPMTopLevel, key, &value) == noErr && CFBooleanGetValue(value);
}

/// Lent; null when there is none.
inline CFDictionaryRef dictionaryOf(PMTicketRef ticket, CFStringRef key) {
    CFDictionaryRef value = nullptr;
    PMTicketGetCFDictionary(ticket, kPMTopLevel, kPMTopLevel, key, &value);
    return value;
}

/// Lent; null when there is none.
inline CFArrayRef arrayOf(PMTicketRef ticket, CFStringRef key) {
    CFArrayRef value = nullptr;
    PMTicketGetCFArray(ticket, kPMTopLevel, kPMTopLevel, key, &value);
    return value;
}

/// The option that is asked for of a PPD's main keyword; empty for none.
inline std::string choiceOf(PMTicketRef ticket, CFStringRef mainKeyword) {
    CFStringRef option = nullptr;
    PPDGetMainKeywordValue(ticket, mainKeyword, &option);
    return utf8Text(option);
}

inline SInt32 numberIn(CFDictionaryRef dictionary, CFStringRef key, SInt32 fallback = 0) {
    ReadTicketValue(dictionary, key, &fallback);
    return fallback;
}

inline bool flagIn(CFDictionaryRef dictionary, CFStringRef key, bool fallback) {
    const void* const value = CFDictionaryGetValue(dictionary, key);
    return CFGetTypeID(value) == CFBooleanGetTypeID() ? CFBooleanGetValue(static_cast<CFBooleanRef>(value)) != 0
                                                      : fallback;
}

inline std::string textIn(CFDictionaryRef dictionary, CFStringRef key) {
    return utf8Text(GetRecordString(dictionary, key));
}

// Items of a ticket that anybody may have written: of another type than expected they read as missing.
#pragma once

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

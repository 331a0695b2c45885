#include "model/records/image_shift.h"

#include "model/settings/record_ticket.h"

namespace {

SInt32 Read(CFDictionaryRef ticket, CFStringRef key, SInt32 defaultValue) {
    SInt32 value = defaultValue;
    ReadTicketValue(ticket, key, &value);
    return value;
}

}  // namespace

void ImageShiftInitialize(CFBundleRef bundle, _ImageShiftContext* context, _IS_Options* options) {
    if (options != nullptr) {
        options->valid = 1;
        options->word2 = 1;
        options->word3 = kTicketValueUnset;
        options->option = kTicketValueUnset;
        options->inches = 1;
    }
    if (context != nullptr) {
        *context = {bundle, options, {}};
    }
}

CFRef<CFMutableDictionaryRef> ImageShiftCreateTicketFromOptions(const _IS_Options* options, JobContext) {
    if (options == nullptr || options->valid == 0 || options->option == kTicketValueUnset) {
        return nullptr;
    }
    auto ticket = CreateRecordDictionary();
    WriteTicketValue(ticket.get(), CFSTR("Option"), options->option);
    WriteTicketValue(ticket.get(), CFSTR("Inches"), options->inches != 0 ? 1 : 0);
    WriteTicketValue(ticket.get(), CFSTR("X1"), options->x1);
    WriteTicketValue(ticket.get(), CFSTR("Y1"), options->y1);
    WriteTicketValue(ticket.get(), CFSTR("X2"), options->x2);
    WriteTicketValue(ticket.get(), CFSTR("Y2"), options->y2);
    return ticket;
}

void ImageShiftSetOptionsFromTicket(_IS_Options* options, CFDictionaryRef ticket) {
    if (options == nullptr) {
        return;
    }
    options->valid = 1;
    options->option = Read(ticket, CFSTR("Option"), kTicketValueUnset);
    options->inches = Read(ticket, CFSTR("Inches"), 1) != 0 ? 1 : 0;
    options->x1 = Read(ticket, CFSTR("X1"), 0);
    options->y1 = Read(ticket, CFSTR("Y1"), 0);
    options->x2 = Read(ticket, CFSTR("X2"), 0);
    options->y2 = Read(ticket, CFSTR("Y2"), 0);
}

#include "model/records/special_page.h"

#include "model/settings/record_ticket.h"

SpecialPage::SpecialPage(CFDictionaryRef ticket) : stock_(StockOfTicket(GetRecordDictionary(ticket, CFSTR("Stock")))) {
    ReadTicketValue(ticket, CFSTR("StartPage"), &startPage_);
}

CFRef<CFMutableDictionaryRef> SpecialPage::asTicket() const {
    auto ticket = CreateRecordDictionary();
    WriteTicketValue(ticket.get(), CFSTR("StartPage"), startPage_);
    CFDictionarySetValue(ticket.get(), CFSTR("Stock"), stock_.asTicket().get());
    return ticket;
}

Cover::Cover(CFDictionaryRef ticket) : SpecialPage(ticket) {
    ReadTicketValue(ticket, CFSTR("SidesImaged"), &sidesImaged_);
}

CFRef<CFMutableDictionaryRef> Cover::asTicket() const {
    auto ticket = SpecialPage::asTicket();
    WriteTicketValue(ticket.get(), CFSTR("SidesImaged"), sidesImaged_);
    return ticket;
}

std::unique_ptr<SpecialPage> Cover::clone() const {
    return std::make_unique<Cover>(*this);
}

bool Cover::operator==(const Cover& other) const {
    return sidesImaged_ == other.sidesImaged_ && stock() == other.stock();
}

Insert::Insert(CFDictionaryRef ticket) : SpecialPage(ticket) {
    ReadTicketValue(ticket, CFSTR("Quantity"), &quantity_);
}

CFRef<CFMutableDictionaryRef> Insert::asTicket() const {
    auto ticket = SpecialPage::asTicket();
    WriteTicketValue(ticket.get(), CFSTR("Quantity"), quantity_);
    return ticket;
}

std::unique_ptr<SpecialPage> Insert::clone() const {
    return std::make_unique<Insert>(*this);
}

ExceptionPage::ExceptionPage() {
    ImageShiftInitialize(nullptr, nullptr, &imageShift_);
}

ExceptionPage::ExceptionPage(CFDictionaryRef ticket) : SpecialPage(ticket) {
    ImageShiftInitialize(nullptr, nullptr, &imageShift_);
    const CFDictionaryRef shift = GetRecordDictionary(ticket, CFSTR("com.tavro.print.ImageShiftOptionsPage"));
    if (shift != nullptr) {
        ImageShiftSetOptionsFromTicket(&imageShift_, shift);
    }
    ReadTicketValue(ticket, CFSTR("EndPage"), &endPage_);
    ReadTicketValue(ticket, CFSTR("SidesImaged"), &plex_);
    ReadTicketValue(ticket, CFSTR("LightenDarken"), &lightenDarken_);
}

CFRef<CFMutableDictionaryRef> ExceptionPage::asTicket() const {
    auto ticket = SpecialPage::asTicket();
    WriteTicketValue(ticket.get(), CFSTR("EndPage"), endPage_);
    const auto shift = ImageShiftCreateTicketFromOptions(&imageShift_, JobContext::exception);
    if (shift) {
        CFDictionarySetValue(ticket.get(), CFSTR("com.tavro.print.ImageShiftOptionsPage"), shift.get());
    }
    WriteIfSet(ticket.get(), CFSTR("SidesImaged"), plex_);
    WriteIfSet(ticket.get(), CFSTR("LightenDarken"), lightenDarken_);
    return ticket;
}

std::unique_ptr<SpecialPage> ExceptionPage::clone() const {
    return std::make_unique<ExceptionPage>(*this);
}

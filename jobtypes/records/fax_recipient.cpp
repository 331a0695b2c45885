#include "jobtypes/records/fax_recipient.h"

#include "model/settings/record_ticket.h"

#include <string>

namespace {

struct Field {
    CFStringRef key;
    CFStringRef (FaxRecipient::*get)() const;
    void (FaxRecipient::*set)(CFStringRef);
};

/// All texts, in their order in the ticket: key, getter, setter.
const auto& Fields() {
    static const Field fields[] = {
        {kFaxRecipientFirstNameProperty, &FaxRecipient::firstName, &FaxRecipient::setFirstName},
        {kFaxRecipientLastNameProperty, &FaxRecipient::lastName, &FaxRecipient::setLastName},
        {kFaxRecipientFaxNumberProperty, &FaxRecipient::faxNumber, &FaxRecipient::setFaxNumber},
        {kFaxRecipientFaxNumberLabelProperty, &FaxRecipient::faxNumberLabel, &FaxRecipient::setFaxNumberLabel},
        {kFaxRecipientOrganizationProperty, &FaxRecipient::organization, &FaxRecipient::setOrganization},
        {kFaxRecipientPhoneNumberProperty, &FaxRecipient::phoneNumber, &FaxRecipient::setPhoneNumber},
        {kFaxRecipientEmailAddressProperty, &FaxRecipient::emailAddress, &FaxRecipient::setEmailAddress},
        {kFaxRecipientMailboxProperty, &FaxRecipient::mailbox, &FaxRecipient::setMailbox},
        {kFaxRecipientUIDProperty, &FaxRecipient::uid, &FaxRecipient::setUID},
    };
    static_assert(std::size(fields) == 9);
    return fields;
}

std::u16string UnitsOf(CFStringRef text) {
    std::u16string units(std::size_t(CFStringGetLength(text)), u'\0');
    CFStringGetCharacters(text, CFRangeMake(0, CFIndex(units.size())), units.data());
    return units;
}

}  // namespace

FaxRecipient::FaxRecipient(CFStringRef firstName, CFStringRef lastName, CFStringRef faxNumber) {
    setFirstName(firstName);
    setLastName(lastName);
    setFaxNumber(faxNumber);
}

FaxRecipient::FaxRecipient(CFDictionaryRef ticket) {
    fromTicket(ticket);
}

FaxRecipient::FaxRecipient(const FaxRecipient& other) {
    *this = other;
}

FaxRecipient& FaxRecipient::operator=(const FaxRecipient& other) {
    if (this != &other) {
        for (const Field& field : Fields()) {
            (this->*field.set)((other.*field.get)());
        }
    }
    return *this;
}

CFRef<CFMutableDictionaryRef> FaxRecipient::toTicket() const {
    auto made = CreateRecordDictionary();
    for (const Field& field : Fields()) {
        if (CFStringRef text = (this->*field.get)()) {
            CFDictionarySetValue(made.get(), field.key, text);
        }
    }
    return made;
}

void FaxRecipient::fromTicket(CFDictionaryRef ticket) {
    if (ticket == nullptr) {
        return;
    }
    for (const Field& field : Fields()) {
        (this->*field.set)(GetRecordString(ticket, field.key));
    }
}

FaxRecipient* FaxRecipientRetain(FaxRecipient* recipient) {
    if (recipient != nullptr) {
        recipient->retain();
    }
    return recipient;
}

void FaxRecipientRelease(FaxRecipient* recipient) {
    if (recipient != nullptr && recipient->release() == 0) {
        delete recipient;
    }
}

CFRef<CFStringRef> DisplayNameFromRecipient(const FaxRecipient* recipient) {
    std::u16string name = UnitsOf(recipient->firstName());
    if (recipient->firstName() != nullptr && recipient->lastName() != nullptr) {
        name += u' ';
    }
    name += UnitsOf(recipient->lastName());
    return CFRef<CFStringRef>::adopt(
        CFStringCreateWithCharacters(kCFAllocatorDefault, name.data(), CFIndex(name.size())));
}

// The way of fax recipients into the address book.

#include "jobtypes/records/fax_recipient_list.h"

#include "model/settings/record_ticket.h"

namespace {

void RegisterMailboxProperty(ABAddressBookRef book) {
    if (ABTypeOfProperty(book, kABPersonRecordType, kXMailboxABProperty) == kABErrorInProperty) {
        const auto types = CreateRecordDictionary();
        WriteTicketValue(types.get(), kXMailboxABProperty, kABStringProperty);
        ABAddPropertiesAndTypes(book, kABPersonRecordType, types.get());
    }
}

CFRef<ABMutableMultiValueRef> CreateMultiValue() {
    return CFRef<ABMutableMultiValueRef>::adopt(ABMultiValueCreateMutable());
}

}  // namespace

bool FaxRecipient::commitToAddressBook() {
    ABAddressBookRef book = ABGetSharedAddressBook();
    const auto person = CFRef<ABPersonRef>::adopt(ABPersonCreate());
    ABRecordSetValue(person.get(), kABFirstNameProperty, firstName());

    const auto phones = CreateMultiValue();
    ABMultiValueAdd(phones.get(), faxNumber(), kABPhoneWorkFAXLabel, nullptr);
    if (phoneNumber() != nullptr) {
        ABMultiValueAdd(phones.get(), phoneNumber(), kABPhoneWorkLabel, nullptr);
    }
    ABRecordSetValue(person.get(), kABPhoneProperty, phones.get());

    if (emailAddress() != nullptr) {
        const auto emails = CreateMultiValue();
        ABMultiValueAdd(emails.get(), emailAddress(), kABEmailWorkLabel, nullptr);
        ABRecordSetValue(person.get(), kABEmailProperty, emails.get());
    }
    if (organization() != nullptr) {
        ABRecordSetValue(person.get(), kABOrganizationProperty, organization());
    }
    if (mailbox() != nullptr) {
        RegisterMailboxProperty(book);
        ABRecordSetValue(person.get(), kXMailboxABProperty, mailbox());
    }

    if (!ABAddRecord(book, person.get())) {
        return false;
    }
    ABSave(book);  // what could not be written now is written with the next change
    uid_ = Text::adopt(ABRecordCopyUniqueId(person.get()));
    return true;
}

CFRef<ABRecordRef> FaxRecipient::abRecord() const {
    return CFRef<ABRecordRef>::adopt(uid() != nullptr ? ABCopyRecordForUniqueId(ABGetSharedAddressBook(), uid())
                                                      : nullptr);
}

bool FaxRecipientList::saveAsABGroupWithName(CFStringRef name) const {
    ABAddressBookRef book = ABGetSharedAddressBook();
    const auto group = CFRef<ABGroupRef>::adopt(ABGroupCreate());
    if (!group) {
        return false;
    }
    ABRecordSetValue(group.get(), kABGroupNameProperty, name);
    if (!ABAddRecord(book, group.get())) {
        return false;
    }
    for (const FaxRecipientOwner& recipient : recipients_) {
        if (recipient->uid() == nullptr) {
            recipient->commitToAddressBook();
        }
        ABGroupAddMember(group.get(), recipient->abRecord().get());
    }
    return ABSave(book);
}

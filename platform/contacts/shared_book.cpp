// The platform's calls about the shared address book.

#include "platform/contacts/AddressBook.h"
#include "platform/contacts/address_book.h"
#include "platform/contacts/card_library.h"
#include "platform/contacts/vcard_file.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFNumber.h"

#include <algorithm>
#include <cstdlib>

namespace {

/// The desktop's address book where a session offers one, else our file.
std::unique_ptr<CardStore> openStore() {
    const char* bus = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    std::unique_ptr<CardStore> desktop = bus && *bus && cardLibrary() ? cardLibrary()->openDesktopBook() : nullptr;
    return desktop ? std::move(desktop) : std::make_unique<VCardFile>();
}

CFArrayRef copyArray(const std::optional<std::vector<CFRef<ABRecordRef>>>& records) {
    if (!records) {
        return nullptr;
    }
    CFMutableArrayRef array =
        CFArrayCreateMutable(kCFAllocatorDefault, CFIndex(records->size()), &kCFTypeArrayCallBacks);
    for (const auto& record : *records) {
        CFArrayAppendValue(array, record.get());
    }
    return array;
}

}  // namespace

ABAddressBookRef ABGetSharedAddressBook() {
    static AddressBook& book = *new AddressBook(openStore());
    return &book;
}

Boolean ABAddRecord(ABAddressBookRef book, ABRecordRef record) {
    return book && checked(record) && book->add(record);
}

Boolean ABSave(ABAddressBookRef book) {
    return book && book->save();
}

ABRecordRef ABCopyRecordForUniqueId(ABAddressBookRef book, CFStringRef uniqueId) {
    if (!book || CFStringGetLength(uniqueId) == 0) {
        return nullptr;
    }
    return book->find(std::string(bareId(textOf(uniqueId).toStdString()))).leak();
}

CFArrayRef ABCopyArrayOfAllPeople(ABAddressBookRef book) {
    return book ? copyArray(book->all(RecordKind::Person)) : nullptr;
}

CFArrayRef ABCopyArrayOfAllGroups(ABAddressBookRef book) {
    return book ? copyArray(book->all(RecordKind::Group)) : nullptr;
}

CFArrayRef ABGroupCopyArrayOfAllMembers(ABGroupRef group) {
    const ABRecordObject* object = checked(group);
    const bool isGroup = object && object->recordKind() == RecordKind::Group;
    return isGroup ? copyArray(ABGetSharedAddressBook()->members(*object->card)) : nullptr;
}

ABPropertyType ABTypeOfProperty(ABAddressBookRef, CFStringRef recordType, CFStringRef property) {
    const RecordKind kind = CFEqual(recordType, kABPersonRecordType) ? RecordKind::Person : RecordKind::Group;
    const std::optional<Property> found = findProperty(kind, property);
    return found ? found->type : kABErrorInProperty;
}

CFIndex ABAddPropertiesAndTypes(ABAddressBookRef, CFStringRef recordType, CFDictionaryRef typesByName) {
    const auto count = std::size_t(CFDictionaryGetCount(typesByName));
    std::vector<const void*> names(count);
    std::vector<const void*> types(count);
    CFDictionaryGetKeysAndValues(typesByName, names.data(), types.data());
    const bool supported = std::all_of(types.begin(), types.end(), [](const void* type) {
        CFIndex value = 0;
        return CFNumberGetValue(static_cast<CFNumberRef>(type), kCFNumberCFIndexType, &value) &&
               value == kABStringProperty;
    });
    if (!supported || !CFEqual(recordType, kABPersonRecordType)) {
        return -1;
    }
    return std::count_if(names.begin(), names.end(),
                         [](const void* name) { return addPersonProperty(static_cast<CFStringRef>(name)); });
}

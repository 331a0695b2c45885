#include "platform/contacts/AddressBook.h"
#include "platform/contacts/records.h"
#include "platform/contacts/vcard_file.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFNumber.h"

#include <algorithm>

/// The records that are not saved yet or that somebody holds, over the store of all.
class AddressBook {
public:
    explicit AddressBook(std::unique_ptr<CardStore> store) : store_(std::move(store)) {}

    bool add(ABRecordRef record) {
        if (find(record->card.uniqueId()) || !store_->isUsable()) {
            return false;
        }
        record->changed = true;
        records_.push_back(CFRef<ABRecordRef>::retain(record));
        return true;
    }

    bool save() {
        std::vector<const Card*> changed;
        for (const auto& record : records_) {
            if (record.get()->changed) {
                changed.push_back(&record.get()->card);
            }
        }
        if (!changed.empty() && !store_->save(changed)) {
            return false;
        }
        for (const auto& record : records_) {
            record.get()->changed = false;
        }
        std::erase_if(records_, [](const auto& record) { return record.get()->count() == 1; });
        return true;
    }

    /// Lent; null when there is none.
    ABRecordRef find(const std::string& uniqueId) {
        const auto held = std::find_if(records_.begin(), records_.end(), [&uniqueId](const auto& record) {
            return record.get()->card.uniqueId() == uniqueId;
        });
        if (held != records_.end()) {
            return held->get();
        }
        std::optional<Card> card = store_->find(uniqueId);
        if (!card) {
            return nullptr;
        }
        records_.push_back(CFRef<ABRecordRef>::adopt(new ABRecordObject(*std::move(card))));
        return records_.back().get();
    }

private:
    std::unique_ptr<CardStore> store_;
    std::vector<CFRef<ABRecordRef>> records_;
};

ABAddressBookRef ABGetSharedAddressBook() {
    static AddressBook& book = *new AddressBook(std::make_unique<VCardFile>());
    return &book;
}

Boolean ABAddRecord(ABAddressBookRef book, ABRecordRef record) {
    return book && checked(record) && book->add(record);
}

Boolean ABSave(ABAddressBookRef book) {
    return book && book->save();
}

ABRecordRef ABCopyRecordForUniqueId(ABAddressBookRef book, CFStringRef uniqueId) {
    // A card without an id would answer to the empty one.
    if (!book || CFStringGetLength(uniqueId) == 0) {
        return nullptr;
    }
    return CFRef<ABRecordRef>::retain(book->find(textOf(uniqueId).toStdString())).leak();
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

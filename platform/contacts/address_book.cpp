#include "platform/contacts/AddressBook.h"
#include "platform/contacts/records.h"
#include "platform/contacts/vcard_file.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFNumber.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

/// The records that are not saved yet or that somebody holds, over the store of all.
class AddressBook {
public:
    using Record = CFRef<ABRecordRef>;

    explicit AddressBook(std::unique_ptr<CardStore> store) : store_(std::move(store)) {}

    bool add(ABRecordRef record) {
        const std::string id = idOf(record);
        const auto known = store_->find({id});
        if (!known || !known->empty() || byId_.contains(id)) {
            return false;
        }
        record->changed = true;
        keep(Record::retain(record));
        return true;
    }

    bool save() {
        std::vector<Card*> changed;
        for (const Record& record : records_) {
            if (record.get()->changed) {
                changed.push_back(&record.get()->card);
            }
        }
        if (!changed.empty() && !store_->save(changed)) {
            return false;
        }
        for (const Record& record : records_) {
            record.get()->changed = false;
        }
        forgetUnused();
        return true;
    }

    Record find(const std::string& bareId) {
        auto cards = store_->find({bareId});
        if (cards && !cards->empty()) {
            return recordOf(std::move(cards->front()));
        }
        const auto held = byId_.find(bareId);
        return held != byId_.end() && held->second->changed ? Record::retain(held->second) : Record();
    }

    /// All records of a kind; nothing when they cannot be read.
    std::optional<std::vector<Record>> all(RecordKind kind) {
        auto cards = store_->all();
        return cards ? std::optional(recordsOf(std::move(*cards), kind)) : std::nullopt;
    }

    /// In the group's order.
    std::optional<std::vector<Record>> members(const Card& group) {
        const std::vector<std::string> ids = group.members();
        auto cards = store_->find(ids);
        if (!cards) {
            return std::nullopt;
        }
        const std::vector<Record> people = recordsOf(std::move(*cards), RecordKind::Person);
        std::unordered_map<std::string, Record> found;
        for (const Record& person : people) {
            found.emplace(idOf(person.get()), person);
        }
        std::vector<Record> members;
        for (const std::string& id : ids) {
            if (const auto person = found.find(id); person != found.end()) {
                members.push_back(std::move(person->second));
                found.erase(person);
            }
        }
        return members;
    }

private:
    static std::string idOf(ABRecordRef record) { return std::string(bareId(record->card.uniqueId())); }

    void keep(Record record) {
        byId_.emplace(idOf(record.get()), record.get());
        records_.push_back(std::move(record));
    }

    /// The one object of that card, whose changes win over what the store has.
    Record recordOf(Card card) {
        const auto held = byId_.find(std::string(bareId(card.uniqueId())));
        if (held == byId_.end()) {
            keep(Record::adopt(new ABRecordObject(std::move(card))));
            return records_.back();
        }
        if (!held->second->changed) {
            held->second->card = std::move(card);
        }
        return Record::retain(held->second);
    }

    /// The objects of the cards of that kind, and then those that are not saved yet.
    std::vector<Record> recordsOf(std::vector<Card> cards, RecordKind kind) {
        forgetUnused();
        std::vector<Record> result;
        std::unordered_set<ABRecordRef> seen;
        const auto take = [&](const Record& record) {
            if (record.get()->recordKind() == kind && seen.insert(record.get()).second) {
                result.push_back(record);
            }
        };
        for (Card& card : cards) {
            take(recordOf(std::move(card)));
        }
        for (const Record& record : records_) {
            if (record.get()->changed) {
                take(record);
            }
        }
        return result;
    }

    void forgetUnused() {
        std::erase_if(records_,
                      [](const Record& record) { return record.get()->count() == 1 && !record.get()->changed; });
        byId_.clear();
        for (const Record& record : records_) {
            byId_.emplace(idOf(record.get()), record.get());
        }
    }

    std::unique_ptr<CardStore> store_;
    std::vector<Record> records_;
    std::unordered_map<std::string, ABRecordRef> byId_;  // all of records_, by bareId()
};

namespace {

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
    return isGroup ? copyArray(ABGetSharedAddressBook()->members(object->card)) : nullptr;
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

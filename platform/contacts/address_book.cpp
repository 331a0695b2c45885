#include "platform/contacts/address_book.h"

#include <algorithm>
#include <unordered_set>

namespace {

std::string idOf(ABRecordRef record) {
    return std::string(bareId(record->card->uniqueId()));
}

}  // namespace

bool AddressBook::add(ABRecordRef record) {
    const std::string id = idOf(record);
    const auto known = store_->find({id});
    if (!known || !known->empty() || byId_.contains(id)) {
        return false;
    }
    record->changed = true;
    keep(Record::retain(record));
    return true;
}

bool AddressBook::save() {
    std::vector<Card*> changed;
    for (const Record& record : records_) {
        if (record.get()->changed) {
            changed.push_back(record.get()->card.get());
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

AddressBook::Record AddressBook::find(const std::string& bareId) {
    auto cards = store_->find({bareId});
    if (cards && !cards->empty()) {
        return recordOf(std::move(cards->front()));
    }
    const auto held = byId_.find(bareId);
    return held != byId_.end() && held->second->changed ? Record::retain(held->second) : Record();
}

std::optional<std::vector<AddressBook::Record>> AddressBook::all(RecordKind kind) {
    auto cards = store_->all();
    return cards ? std::optional(recordsOf(std::move(*cards), kind)) : std::nullopt;
}

std::optional<std::vector<AddressBook::Record>> AddressBook::members(const Card& group) {
    const std::vector<std::string> ids = group.members();
    auto cards = store_->find(ids);
    if (!cards) {
        return std::nullopt;
    }
    std::unordered_map<std::string, Record> found;
    for (const Record& person : recordsOf(std::move(*cards), RecordKind::Person)) {
        found.emplace(idOf(person.get()), person);
    }
    std::vector<Record> members;
    for (const std::string& id : ids) {
        if (const auto person = found.find(id); person != found.end()) {
            members.push_back(std::move(person->second));
            found.erase(person);  // a member once
        }
    }
    return members;
}

void AddressBook::keep(Record record) {
    byId_.emplace(idOf(record.get()), record.get());
    records_.push_back(std::move(record));
}

/// The one object of that card. Changes that are not saved yet win over what the store has.
AddressBook::Record AddressBook::recordOf(CardOwner card) {
    const auto held = byId_.find(std::string(bareId(card->uniqueId())));
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
std::vector<AddressBook::Record> AddressBook::recordsOf(std::vector<CardOwner> cards, RecordKind kind) {
    forgetUnused();
    std::vector<Record> result;
    std::unordered_set<ABRecordRef> seen;
    const auto take = [&](const Record& record) {
        if (record.get()->recordKind() == kind && seen.insert(record.get()).second) {
            result.push_back(record);
        }
    };
    for (CardOwner& card : cards) {
        take(recordOf(std::move(card)));
    }
    for (const Record& record : records_) {
        if (record.get()->changed) {
            take(record);
        }
    }
    return result;
}

void AddressBook::forgetUnused() {
    std::erase_if(records_, [](const Record& record) { return record.get()->count() == 1 && !record.get()->changed; });
    byId_.clear();
    for (const Record& record : records_) {
        byId_.emplace(idOf(record.get()), record.get());
    }
}

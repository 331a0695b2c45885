// The address book over the store of its cards.
#pragma once

#include "platform/contacts/card_store.h"
#include "platform/contacts/records.h"

#include <memory>
#include <unordered_map>

/// Has the records that are not saved yet or that somebody holds, and one object for each.
class AddressBook {
public:
    using Record = CFRef<ABRecordRef>;

    explicit AddressBook(std::unique_ptr<CardStore> store) : store_(std::move(store)) {}

    bool add(ABRecordRef record);
    bool save();
    /// Null when there is none.
    Record find(const std::string& bareId);
    /// All records of a kind; nothing when they cannot be read.
    std::optional<std::vector<Record>> all(RecordKind kind);
    /// The people of a group, in its order.
    std::optional<std::vector<Record>> members(const Card& group);

    /// Where the cards are; what is put there shows with the next call.
    CardStore& store() { return *store_; }

private:
    void keep(Record record);
    Record recordOf(CardOwner card);
    std::vector<Record> recordsOf(std::vector<CardOwner> cards, RecordKind kind);
    void forgetUnused();

    std::unique_ptr<CardStore> store_;
    std::vector<Record> records_;
    std::unordered_map<std::string, ABRecordRef> byId_;  // all of records_, by bareId()
};

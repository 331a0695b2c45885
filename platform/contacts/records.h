// The objects behind people, groups and multi-values.
#pragma once

#include "platform/contacts/AddressBook.h"
#include "platform/contacts/card.h"
#include "platform/contacts/properties.h"
#include "platform/foundation/objects.h"

// Beyond the kinds of the foundation's own objects.
inline constexpr ObjectKind kRecordObject{101};
inline constexpr ObjectKind kMultiValueObject{102};

struct ABRecordObject final : CFObject {
    static constexpr ObjectKind kKind = kRecordObject;

    explicit ABRecordObject(CardOwner content) : CFObject(kKind), card(std::move(content)) {}

    RecordKind recordKind() const { return card->isGroup() ? RecordKind::Group : RecordKind::Person; }

    CardOwner card;        // never null
    bool changed = false;  // since it was read or saved
};

struct ABMultiValueObject final : CFObject {
    static constexpr ObjectKind kKind = kMultiValueObject;

    ABMultiValueObject() : CFObject(kKind) {}

    std::vector<LabelledText> entries;
};

// The properties of records, and where vCards keep them.
#pragma once

#include "platform/contacts/AddressBook.h"
#include "platform/contacts/card.h"

#include <optional>
#include <string>

enum class RecordKind { Person, Group };

struct Property {
    ABPropertyType type;
    /// The vCard's attribute, such as "TEL"; none for what only the whole card tells.
    std::string attribute;
    /// For the attribute "N".
    std::optional<NamePart> part = std::nullopt;
};

/// Nothing for a property that records of the kind do not have, or that the program has not made known.
std::optional<Property> findProperty(RecordKind kind, CFStringRef name);

/// Where a property of the program's own is kept, known or not; nothing for a name that has not the form of one.
std::optional<Property> findOwnProperty(RecordKind kind, CFStringRef name);

/// Makes a string property of people known. False when it is already.
bool addPersonProperty(CFStringRef name);

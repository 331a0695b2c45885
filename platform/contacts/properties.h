// The properties of records, and where vCards keep them.
#pragma once

#include "platform/contacts/AddressBook.h"

#include <optional>
#include <string>

enum class RecordKind { Person, Group };

struct Property {
    ABPropertyType type;
    /// The vCard's attribute, such as "TEL".
    std::string attribute;
};

/// Nothing for a property that records of the kind do not have.
std::optional<Property> findProperty(RecordKind kind, CFStringRef name);

/// Makes a string property of people known. False when it is already.
bool addPersonProperty(CFStringRef name);

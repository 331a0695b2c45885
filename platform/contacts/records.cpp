#include "platform/contacts/records.h"

#include "platform/contacts/card_library.h"
#include "platform/foundation/CFNumber.h"

namespace {

std::string utf8Of(CFTypeRef string) {
    return textOf(static_cast<CFStringRef>(string)).toStdString();
}

bool isString(CFTypeRef value) {
    return CFGetTypeID(value) == CFStringGetTypeID();
}

/// The value as the property's type; nothing for null.
bool setString(Card& card, const Property& property, CFTypeRef value) {
    if (value && !isString(value)) {
        return false;
    }
    const auto text = value ? std::optional(utf8Of(value)) : std::nullopt;
    if (property.part) {
        card.setNamePart(*property.part, text);
    } else {
        card.setText(property.attribute.c_str(), text);
    }
    return true;
}

bool setMultiValue(Card& card, const Property& property, CFTypeRef value) {
    const auto* entries = checked(static_cast<const ABMultiValueObject*>(value));
    if (value && !entries) {
        return false;
    }
    card.setLabelledTexts(property.attribute.c_str(), entries ? entries->entries : std::vector<LabelledText>());
    return true;
}

CFRef<CFStringRef> stringOf(const std::string& utf8) {
    return makeString(QString::fromStdString(utf8));
}

CFTypeRef copyString(const Card& card, const Property& property) {
    const auto text = property.part ? card.namePart(*property.part) : card.textOf(property.attribute.c_str());
    return text ? stringOf(*text).leak() : nullptr;
}

CFTypeRef copyMultiValue(const Card& card, const Property& property) {
    auto entries = card.labelledTexts(property.attribute.c_str());
    if (entries.empty()) {
        return nullptr;
    }
    auto* object = new ABMultiValueObject;
    object->entries = std::move(entries);
    return object;
}

CFTypeRef copyPersonFlags(const Card& card) {
    const CFIndex flags = card.isCompany() ? kABShowAsCompany : 0;
    return CFNumberCreate(kCFAllocatorDefault, kCFNumberCFIndexType, &flags);
}

/// Null without the library for cards.
CardOwner makeCard() {
    CardLibrary* library = cardLibrary();
    return library ? library->make() : nullptr;
}

/// Null outside of the multi-value.
const LabelledText* entryAt(ABMultiValueRef multiValue, CFIndex index) {
    const ABMultiValueObject* object = checked(multiValue);
    return object && index >= 0 && std::size_t(index) < object->entries.size() ? &object->entries[std::size_t(index)]
                                                                               : nullptr;
}

}  // namespace

ABPersonRef ABPersonCreate() {
    CardOwner card = makeCard();
    return card ? new ABRecordObject(std::move(card)) : nullptr;
}

ABGroupRef ABGroupCreate() {
    CardOwner card = makeCard();
    if (!card) {
        return nullptr;
    }
    card->makeGroup();
    return new ABRecordObject(std::move(card));
}

CFStringRef ABRecordCopyUniqueId(ABRecordRef record) {
    const ABRecordObject* object = checked(record);
    return object ? stringOf(object->card->uniqueId()).leak() : nullptr;
}

CFTypeRef ABRecordCopyValue(ABRecordRef record, CFStringRef property) {
    const ABRecordObject* object = checked(record);
    if (!object) {
        return nullptr;
    }
    std::optional<Property> found = findProperty(object->recordKind(), property);
    found = found ? found : findOwnProperty(object->recordKind(), property);
    if (!found) {
        return nullptr;
    }
    switch (found->type) {
        case kABStringProperty:
            return copyString(*object->card, *found);
        case kABMultiStringProperty:
            return copyMultiValue(*object->card, *found);
        case kABIntegerProperty:
            return copyPersonFlags(*object->card);
        case kABErrorInProperty:
            break;
    }
    return nullptr;
}

Boolean ABRecordSetValue(ABRecordRef record, CFStringRef property, CFTypeRef value) {
    ABRecordObject* object = checked(record);
    const std::optional<Property> found = object ? findProperty(object->recordKind(), property) : std::nullopt;
    if (!found || found->type == kABIntegerProperty) {
        return false;
    }
    const bool done = found->type == kABMultiStringProperty ? setMultiValue(*object->card, *found, value)
                                                            : setString(*object->card, *found, value);
    object->changed |= done;
    return done;
}

Boolean ABGroupAddMember(ABGroupRef group, ABPersonRef person) {
    ABRecordObject* object = checked(group);
    const ABRecordObject* member = checked(person);
    if (!object || !member || object->recordKind() != RecordKind::Group || member->recordKind() != RecordKind::Person) {
        return false;
    }
    object->card->addMember(*member->card);
    object->changed = true;
    return true;
}

ABMutableMultiValueRef ABMultiValueCreateMutable() {
    return new ABMultiValueObject;
}

Boolean ABMultiValueAdd(ABMutableMultiValueRef multiValue, CFTypeRef value, CFStringRef label,
                        CFStringRef* identifier) {
    ABMultiValueObject* object = checked(multiValue);
    if (!object || !isString(value) || identifier) {
        return false;
    }
    object->entries.push_back({utf8Of(label), utf8Of(value)});
    return true;
}

CFIndex ABMultiValueCount(ABMultiValueRef multiValue) {
    const ABMultiValueObject* object = checked(multiValue);
    return object ? CFIndex(object->entries.size()) : 0;
}

CFTypeRef ABMultiValueCopyValueAtIndex(ABMultiValueRef multiValue, CFIndex index) {
    const LabelledText* entry = entryAt(multiValue, index);
    return entry ? stringOf(entry->text).leak() : nullptr;
}

CFStringRef ABMultiValueCopyLabelAtIndex(ABMultiValueRef multiValue, CFIndex index) {
    const LabelledText* entry = entryAt(multiValue, index);
    return entry ? stringOf(entry->label).leak() : nullptr;
}

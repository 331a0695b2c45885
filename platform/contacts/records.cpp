#include "platform/contacts/records.h"

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
    if (property.attribute == "N") {
        card.setGivenName(text);
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

}  // namespace

ABPersonRef ABPersonCreate() {
    return new ABRecordObject(Card());
}

ABGroupRef ABGroupCreate() {
    Card card;
    card.makeGroup();
    return new ABRecordObject(std::move(card));
}

CFStringRef ABRecordCopyUniqueId(ABRecordRef record) {
    const ABRecordObject* object = checked(record);
    return object ? makeString(QString::fromStdString(object->card.uniqueId())).leak() : nullptr;
}

Boolean ABRecordSetValue(ABRecordRef record, CFStringRef property, CFTypeRef value) {
    ABRecordObject* object = checked(record);
    const std::optional<Property> found = object ? findProperty(object->recordKind(), property) : std::nullopt;
    if (!found) {
        return false;
    }
    const bool done = found->type == kABMultiStringProperty ? setMultiValue(object->card, *found, value)
                                                            : setString(object->card, *found, value);
    object->changed |= done;
    return done;
}

Boolean ABGroupAddMember(ABGroupRef group, ABPersonRef person) {
    ABRecordObject* object = checked(group);
    const ABRecordObject* member = checked(person);
    if (!object || !member || object->recordKind() != RecordKind::Group || member->recordKind() != RecordKind::Person) {
        return false;
    }
    object->card.addMember(member->card);
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

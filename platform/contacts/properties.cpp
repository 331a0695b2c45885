#include "platform/contacts/properties.h"

#include "platform/foundation/objects.h"

#include <QSet>

#include <algorithm>
#include <iterator>

namespace {

struct KnownProperty {
    RecordKind kind;
    const char* name;
    ABPropertyType type;
    const char* attribute;
    std::optional<NamePart> part;
};

// kind, name, type, attribute of the vCard, part of the name
constexpr KnownProperty kKnownProperties[] = {
    {RecordKind::Person, "First", kABStringProperty, "N", NamePart::Given},
    {RecordKind::Person, "Last", kABStringProperty, "N", NamePart::Family},
    {RecordKind::Person, "Organization", kABStringProperty, "ORG", std::nullopt},
    {RecordKind::Person, "Phone", kABMultiStringProperty, "TEL", std::nullopt},
    {RecordKind::Person, "Email", kABMultiStringProperty, "EMAIL", std::nullopt},
    {RecordKind::Person, "ABPersonFlags", kABIntegerProperty, "", std::nullopt},
    {RecordKind::Group, "GroupName", kABStringProperty, "FN", std::nullopt},
};
static_assert(std::size(kKnownProperties) == 7);

/// The names of the people's properties that the program has added.
QSet<QString>& addedProperties() {
    static auto& added = *new QSet<QString>;
    return added;
}

Property ownProperty(const QString& name) {
    QString attribute = "X-" + name.toUpper();
    std::replace_if(
        attribute.begin(), attribute.end(), [](QChar c) { return c.unicode() > 127 || !c.isLetterOrNumber(); },
        QChar('-'));
    return {kABStringProperty, attribute.toStdString()};
}

}  // namespace

std::optional<Property> findProperty(RecordKind kind, CFStringRef name) {
    const QString text = textOf(name);
    const auto* known = std::find_if(std::begin(kKnownProperties), std::end(kKnownProperties), [&](const auto& row) {
        return row.kind == kind && text == QLatin1String(row.name);
    });
    if (known != std::end(kKnownProperties)) {
        return Property{known->type, known->attribute, known->part};
    }
    return addedProperties().contains(text) ? findOwnProperty(kind, name) : std::nullopt;
}

std::optional<Property> findOwnProperty(RecordKind kind, CFStringRef name) {
    const QString text = textOf(name);
    return kind == RecordKind::Person && text.contains('.') ? std::optional(ownProperty(text)) : std::nullopt;
}

bool addPersonProperty(CFStringRef name) {
    if (findProperty(RecordKind::Person, name) || !findOwnProperty(RecordKind::Person, name)) {
        return false;
    }
    addedProperties().insert(textOf(name));
    return true;
}

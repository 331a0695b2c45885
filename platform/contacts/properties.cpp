#include "platform/contacts/properties.h"

#include "platform/foundation/objects.h"

#include <QMap>

#include <algorithm>
#include <iterator>

namespace {

struct KnownProperty {
    RecordKind kind;
    const char* name;
    ABPropertyType type;
    const char* attribute;
};

// kind, name, type, attribute of the vCard
constexpr KnownProperty kKnownProperties[] = {
    {RecordKind::Person, "First", kABStringProperty, "N"},
    {RecordKind::Person, "Organization", kABStringProperty, "ORG"},
    {RecordKind::Person, "Phone", kABMultiStringProperty, "TEL"},
    {RecordKind::Person, "Email", kABMultiStringProperty, "EMAIL"},
    {RecordKind::Group, "GroupName", kABStringProperty, "FN"},
};
static_assert(std::size(kKnownProperties) == 5);

/// The attributes of the people's properties that the program has added, by name.
QMap<QString, QString>& addedProperties() {
    static auto& added = *new QMap<QString, QString>;
    return added;
}

}  // namespace

std::optional<Property> findProperty(RecordKind kind, CFStringRef name) {
    const QString text = textOf(name);
    const auto* known = std::find_if(std::begin(kKnownProperties), std::end(kKnownProperties), [&](const auto& row) {
        return row.kind == kind && text == QLatin1String(row.name);
    });
    if (known != std::end(kKnownProperties)) {
        return Property{known->type, known->attribute};
    }
    const auto added = addedProperties().constFind(text);
    if (kind != RecordKind::Person || added == addedProperties().constEnd()) {
        return std::nullopt;
    }
    return Property{kABStringProperty, added->toStdString()};
}

bool addPersonProperty(CFStringRef name) {
    if (findProperty(RecordKind::Person, name)) {
        return false;
    }
    const QString text = textOf(name);
    QString attribute = "X-" + text.toUpper();
    std::replace_if(
        attribute.begin(), attribute.end(), [](QChar c) { return c.unicode() > 127 || !c.isLetterOrNumber(); },
        QChar('-'));
    addedProperties().insert(text, attribute);
    return true;
}

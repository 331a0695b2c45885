// The tree of a nib's window, and its compiled form.

#include "platform/toolbox/nib_element.h"

#include <QDataStream>
#include <QIODevice>
#include <algorithm>

namespace {

constexpr quint32 kMagic = 0x54564E57;  // "TVNW"
constexpr quint32 kFormat = 1;
constexpr int kDeepest = 64;  // of elements in each other
constexpr quint32 kMostChildren = 4096;

void write(QDataStream& out, const NibElement& element) {
    out << static_cast<quint8>(element.kind) << element.className << element.name;
    out << static_cast<quint32>(element.properties.size());
    for (const NibProperty& property : element.properties) {
        out << property.name << property.value << property.isText;
    }
    const NibPlace& place = element.place;
    out << place.row << place.column << place.rowSpan << place.columnSpan << place.alignment << element.items;
    out << static_cast<quint32>(element.children.size());
    for (const NibElement& child : element.children) {
        write(out, child);
    }
}

bool read(QDataStream& in, NibElement* element, int depth) {
    quint8 kind = 0;
    quint32 count = 0;
    in >> kind >> element->className >> element->name >> count;
    if (in.status() != QDataStream::Ok || kind > static_cast<quint8>(NibElement::Kind::spacer) || depth > kDeepest ||
        count > kMostChildren) {
        return false;
    }
    element->kind = static_cast<NibElement::Kind>(kind);
    element->properties.resize(count);
    for (NibProperty& property : element->properties) {
        in >> property.name >> property.value >> property.isText;
    }
    NibPlace& place = element->place;
    in >> place.row >> place.column >> place.rowSpan >> place.columnSpan >> place.alignment >> element->items >> count;
    if (in.status() != QDataStream::Ok || count > kMostChildren) {
        return false;
    }
    element->children.resize(count);
    return std::ranges::all_of(element->children,
                               [&in, depth](NibElement& child) { return read(in, &child, depth + 1); });
}

}  // namespace

const QVariant* NibElement::find(const char* property) const {
    const auto found =
        std::ranges::find_if(properties, [property](const NibProperty& each) { return each.name == property; });
    return found == properties.end() ? nullptr : &found->value;
}

QByteArray compiledWindow(const NibWindowTree& tree) {
    QByteArray data;
    QDataStream out(&data, QIODevice::WriteOnly);
    out.setVersion(QDataStream::Qt_6_0);
    out << kMagic << kFormat;
    write(out, tree.window);
    out << tree.tabOrder;
    return data;
}

std::optional<NibWindowTree> readCompiledWindow(const QByteArray& data, QString* reason) {
    QDataStream in(data);
    in.setVersion(QDataStream::Qt_6_0);
    quint32 magic = 0;
    quint32 format = 0;
    in >> magic >> format;
    NibWindowTree tree;
    if (magic != kMagic || format != kFormat) {
        *reason = QStringLiteral("no window of this version");
        return std::nullopt;
    }
    if (!read(in, &tree.window, 0)) {
        *reason = QStringLiteral("it is damaged");
        return std::nullopt;
    }
    in >> tree.tabOrder;
    if (in.status() != QDataStream::Ok) {
        *reason = QStringLiteral("it is damaged");
        return std::nullopt;
    }
    return tree;
}

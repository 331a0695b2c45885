#include "platform/foundation/CFPropertyList.h"
#include "platform/foundation/collections.h"
#include "platform/foundation/large_buffer.h"
#include "platform/foundation/number_value.h"
#include "platform/foundation/plain_property_list.h"

#include <QIODevice>
#include <QLocale>
#include <QXmlStreamWriter>

#include <algorithm>
#include <cmath>

namespace {

/// Whether XML 1.0 can hold the text: its production Char leaves out most control characters, and surrogates.
bool isXmlText(const QString& text) {
    const auto allowed = [](QChar c) {
        const char16_t unit = c.unicode();
        return unit >= 0x20 ? unit < 0xFFFE : unit == u'\t' || unit == u'\n' || unit == u'\r';
    };
    return text.isValidUtf16() && std::all_of(text.begin(), text.end(), allowed);
}

qsizetype base64SizeOf(const CFDataObject& data) {
    const auto* base64 = std::get_if<Base64Text>(&data.content);
    return base64 ? base64->view().size() : (data.bytes().size() + 2) / 3 * 4;
}

/// Of a dictionary: what its own data takes in XML, with its tags. A large property list is hardly anything else.
qsizetype estimateSize(CFTypeRef root) {
    constexpr qsizetype kTagsAndKey = 256;
    qsizetype size = 0;
    if (const auto* dictionary = checked(static_cast<CFDictionaryRef>(root))) {
        for (const auto& [key, value] : dictionary->entries) {
            const auto* data =
                dictionary->values == Elements::Objects ? checked(static_cast<CFDataRef>(value)) : nullptr;
            size += kTagsAndKey + (data ? base64SizeOf(*data) : 0);
        }
    }
    return size;
}

class Writer {
public:
    /// Nothing when the tree holds what no property list can.
    QByteArray write(CFTypeRef root) {
        reserveLargeBuffer(&bytes_, estimateSize(root));
        xml_.setAutoFormatting(true);
        xml_.setAutoFormattingIndent(-1);  // one tab
        xml_.writeStartDocument();
        xml_.writeDTD(QLatin1String(kPropertyListDocType));
        xml_.writeStartElement(QStringLiteral("plist"));
        xml_.writeAttribute(QStringLiteral("version"), QStringLiteral("1.0"));
        if (!writeValue(root, 0)) {
            return {};
        }
        xml_.writeEndDocument();
        return bytes_;
    }

private:
    bool writeValue(CFTypeRef value, int depth) {
        if (!value) {
            return false;
        }
        switch (const auto* object = static_cast<const CFObject*>(value); object->kind()) {
            case ObjectKind::String:
                return writeText(QStringLiteral("string"), static_cast<const CFStringObject*>(object)->text);
            case ObjectKind::Number:
                return writeNumber(static_cast<const CFNumberObject*>(object)->value);
            case ObjectKind::Bool:
                xml_.writeEmptyElement(value == kCFBooleanTrue ? QStringLiteral("true") : QStringLiteral("false"));
                return true;
            case ObjectKind::Data:
                writeData(*static_cast<const CFDataObject*>(object));
                return true;
            case ObjectKind::Array:
                return depth < kPropertyListMaximumDepth &&
                       writeArray(*static_cast<const CFArrayObject*>(object), depth + 1);
            case ObjectKind::Dictionary:
                return depth < kPropertyListMaximumDepth &&
                       writeDictionary(*static_cast<const CFDictionaryObject*>(object), depth + 1);
            default:
                return false;
        }
    }

    bool writeText(const QString& element, const QString& text) {
        if (!isXmlText(text)) {
            return false;
        }
        xml_.writeStartElement(element);
        // A bare carriage return is read back as a line feed.
        const QList<QStringView> lines = QStringView(text).split(u'\r');
        for (qsizetype i = 0; i < lines.size(); ++i) {
            if (i > 0) {
                xml_.writeEntityReference(QStringLiteral("#13"));
            }
            xml_.writeCharacters(lines[i].toString());
        }
        xml_.writeEndElement();
        return true;
    }

    /// Base64 needs no escaping, so it goes to the file by the XML writer, once that has ended the start tag.
    void writeData(const CFDataObject& data) {
        xml_.writeStartElement(QStringLiteral("data"));
        xml_.writeCharacters(QString());
        if (const auto* base64 = std::get_if<Base64Text>(&data.content)) {
            xml_.device()->write(base64->view().data(), base64->view().size());
        } else {
            xml_.device()->write(data.bytes().toBase64());
        }
        xml_.writeEndElement();
    }

    bool writeNumber(const NumberValue& value) {
        if (const auto* integer = std::get_if<std::int64_t>(&value)) {
            xml_.writeTextElement(QStringLiteral("integer"), QString::number(*integer));
            return true;
        }
        const double real = std::get<double>(value);
        if (!std::isfinite(real)) {
            return false;
        }
        xml_.writeTextElement(QStringLiteral("real"), QString::number(real, 'g', QLocale::FloatingPointShortest));
        return true;
    }

    bool writeArray(const CFArrayObject& array, int depth) {
        xml_.writeStartElement(QStringLiteral("array"));
        for (const void* value : array.values) {
            if (array.elements != Elements::Objects || !writeValue(value, depth)) {
                return false;
            }
        }
        xml_.writeEndElement();
        return true;
    }

    bool writeDictionary(const CFDictionaryObject& dictionary, int depth) {
        if (dictionary.keys != Elements::Objects || dictionary.values != Elements::Objects) {
            return false;
        }
        xml_.writeStartElement(QStringLiteral("dict"));
        for (const auto& [key, value] : dictionary.entries) {
            const CFStringObject* text = checked(static_cast<CFStringRef>(key));
            if (!text || !writeText(QStringLiteral("key"), text->text) || !writeValue(value, depth)) {
                return false;
            }
        }
        xml_.writeEndElement();
        return true;
    }

    QByteArray bytes_;
    QXmlStreamWriter xml_{&bytes_};
};

}  // namespace

CFDataRef CFPropertyListCreateXMLData(CFAllocatorRef, CFTypeRef propertyList) {
    QByteArray bytes = Writer().write(propertyList);
    return bytes.isEmpty() ? nullptr : new CFDataObject(std::move(bytes));
}

#include "platform/foundation/CFPropertyList.h"
#include "platform/foundation/collections.h"
#include "platform/foundation/number_value.h"
#include "platform/foundation/plain_property_list.h"
#include "platform/foundation/text_position.h"

#include <QXmlStreamReader>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace {

using Value = CFRef<CFTypeRef>;

/// Reads one document. The first fault ends it: raise() stops the XML reader, every loop sees no further token and
/// every value comes back as nothing.
class Reader {
public:
    Reader(const QByteArray& bytes, CFOptionFlags mutability)
        : bytes_(bytes),
          mutableContainers_(mutability != kCFPropertyListImmutable),
          mutableLeaves_(mutability == kCFPropertyListMutableContainersAndLeaves) {
        // Property lists have no namespaces; a colon is a letter of an unknown element.
        xml_.setNamespaceProcessing(false);
        xml_.addData(bytes);
    }

    Value read() {
        Value root = readDocument();
        // The XML reader waits for the rest of a character that is never to come.
        const QByteArrayView behindEnd = QByteArrayView(bytes_).sliced(bytes_.lastIndexOf('>') + 1);
        if (std::ranges::any_of(behindEnd, [](char c) { return static_cast<unsigned char>(c) >= 0x80; })) {
            raise(messageOf("half a character behind the end"));
        }
        return xml_.hasError() ? Value() : root;
    }

    /// The place is that of the last character that was read: the XML reader counts columns from 0, and stands behind.
    CFRef<CFStringRef> fault() const {
        const TextPosition last = {xml_.lineNumber(), std::max<qint64>(xml_.columnNumber(), 1)};
        return describeFault(last, xml_.errorString().simplified());
    }

private:
    void raise(const QString& reason) {
        if (!xml_.hasError()) {
            xml_.raiseError(reason);
        }
    }
    Value refuse(const QString& reason) {
        raise(reason);
        return nullptr;
    }

    /// The next tag: StartElement, EndElement or EndDocument; Invalid at a fault. Anything but blanks before it is one.
    QXmlStreamReader::TokenType nextTag() {
        for (;;) {
            switch (const QXmlStreamReader::TokenType token = xml_.readNext()) {
                case QXmlStreamReader::StartElement:
                case QXmlStreamReader::EndElement:
                case QXmlStreamReader::EndDocument:
                case QXmlStreamReader::Invalid:
                    return token;
                case QXmlStreamReader::DTD:
                    // The only use of declared entities would be to make a small file large.
                    if (!xml_.entityDeclarations().isEmpty()) {
                        raise(messageOf("entities must not be declared"));
                    }
                    break;
                case QXmlStreamReader::Characters:
                    if (!xml_.isWhitespace()) {
                        raise(messageOf("text between elements"));
                    }
                    break;
                case QXmlStreamReader::EntityReference:
                    raiseEntity();
                    break;
                default:
                    break;
            }
        }
    }

    void raiseEntity() { raise(messageOf("unknown entity &%1;", {xml_.name().toString().toStdString()})); }

    /// The text of the element whose start tag was read, up to its end tag.
    QString readText() {
        // The XML reader's readElementText() drops unknown entities without a word when the file has a DOCTYPE.
        const QString element = xml_.name().toString();
        QString text;
        for (;;) {
            switch (xml_.readNext()) {
                case QXmlStreamReader::Invalid:
                    return {};
                case QXmlStreamReader::Characters:
                    text += xml_.text();
                    break;
                case QXmlStreamReader::EndElement:
                    if (!text.isValidUtf16()) {
                        raise(
                            messageOf("half a character in <%1>", {element.toStdString()}));  // an odd encoding's doing
                    }
                    return text;
                case QXmlStreamReader::StartElement:
                    raise(messageOf("<%1> inside <%2>", {xml_.name().toString().toStdString(), element.toStdString()}));
                    break;
                case QXmlStreamReader::EntityReference:
                    raiseEntity();
                    break;
                default:
                    break;
            }
        }
    }

    Value readDocument() {
        if (nextTag() != QXmlStreamReader::StartElement || xml_.name() != u"plist") {
            return refuse(messageOf("not a property list: <plist> is missing"));
        }
        if (nextTag() != QXmlStreamReader::StartElement) {
            return refuse(messageOf("the property list is empty"));
        }
        Value root = readValue(0);
        if (nextTag() == QXmlStreamReader::StartElement) {
            return refuse(messageOf("a second value in the property list"));
        }
        nextTag();  // the end of the document; the XML reader complains of anything else
        return root;
    }

    /// The value whose start tag was read; `depth` containers are open around it.
    Value readValue(int depth) {
        const QStringView name = xml_.name();
        if (name == u"string") {
            return Value::adopt(new CFStringObject(readText(), mutableLeaves_));
        }
        if (name == u"integer") {
            return readInteger();
        }
        if (name == u"real") {
            return readReal();
        }
        if (name == u"true" || name == u"false") {
            const CFBooleanRef truth = name == u"true" ? kCFBooleanTrue : kCFBooleanFalse;
            return readText().trimmed().isEmpty() ? Value::retain(truth) : refuse(messageOf("text inside a boolean"));
        }
        if (name == u"data") {
            return readData();
        }
        if (name != u"array" && name != u"dict") {
            return refuse(name == u"date" ? messageOf("dates are not supported")
                                          : messageOf("unknown element <%1>", {name.toString().toStdString()}));
        }
        if (depth == kPropertyListMaximumDepth) {
            return refuse(messageOf("more than %1 levels deep", {kPropertyListMaximumDepth}));
        }
        return name == u"array" ? readArray(depth + 1) : readDictionary(depth + 1);
    }

    Value readInteger() {
        const QByteArray text = readText().trimmed().toUtf8();
        const bool negative = text.startsWith('-');
        QByteArrayView digits = QByteArrayView(text).sliced(negative || text.startsWith('+') ? 1 : 0);
        int base = 10;
        if (digits.startsWith("0x") || digits.startsWith("0X")) {
            digits = digits.sliced(2);
            base = 16;
        }
        std::uint64_t magnitude = 0;
        const auto [end, error] = std::from_chars(digits.begin(), digits.end(), magnitude, base);
        if (digits.isEmpty() || end != digits.end() || error == std::errc::invalid_argument) {
            return refuse(messageOf("\"%1\" is no integer", {QString::fromUtf8(text).toStdString()}));
        }
        constexpr std::uint64_t kLargest = std::numeric_limits<std::int64_t>::max();
        if (error != std::errc() || magnitude > kLargest + (negative ? 1 : 0)) {
            return refuse(messageOf("the integer %1 is too large", {QString::fromUtf8(text).toStdString()}));
        }
        // The lowest integer has no positive counterpart, so the sign is set among the unsigned ones.
        return makeNumber(static_cast<std::int64_t>(negative ? 0 - magnitude : magnitude));
    }

    Value readReal() {
        const QByteArray text = readText().trimmed().toUtf8();
        const QByteArrayView digits = QByteArrayView(text).sliced(text.startsWith('+') ? 1 : 0);
        double real = 0;
        const auto [end, error] = std::from_chars(digits.begin(), digits.end(), real);
        if (digits.isEmpty() || end != digits.end() || error == std::errc::invalid_argument ||
            (text.startsWith('+') && digits.startsWith('-'))) {
            return refuse(messageOf("\"%1\" is no real number", {QString::fromUtf8(text).toStdString()}));
        }
        // "inf" and "nan" are numbers to from_chars, but to no setting.
        if (error != std::errc() || !std::isfinite(real)) {
            return refuse(messageOf("the real number %1 is out of range", {QString::fromUtf8(text).toStdString()}));
        }
        return makeNumber(real);
    }

    static Value makeNumber(NumberValue value) { return Value::adopt(new CFNumberObject(value)); }

    Value readData() {
        QByteArray base64 = readText().toUtf8();
        base64.removeIf([](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
        auto decoded = QByteArray::fromBase64Encoding(std::move(base64), QByteArray::AbortOnBase64DecodingErrors);
        if (!decoded) {
            return refuse(messageOf("data that is no base64"));
        }
        return Value::adopt(new CFDataObject(*std::move(decoded), mutableLeaves_));
    }

    Value readArray(int depth) {
        auto array = CFRef<CFMutableArrayRef>::adopt(new CFArrayObject(Elements::Objects, mutableContainers_));
        while (nextTag() == QXmlStreamReader::StartElement) {
            array.get()->append(readValue(depth).get());
        }
        return Value::adopt(array.leak());
    }

    Value readDictionary(int depth) {
        auto dictionary = CFRef<CFMutableDictionaryRef>::adopt(
            new CFDictionaryObject(Elements::Objects, Elements::Objects, mutableContainers_));
        while (nextTag() == QXmlStreamReader::StartElement) {
            if (xml_.name() != u"key") {
                return refuse(messageOf("<%1> where a <key> belongs", {xml_.name().toString().toStdString()}));
            }
            const CFRef<CFStringRef> key = makeString(readText());
            // Two values for one setting: there is no telling which one was meant.
            if (dictionary.get()->find(key.get())) {
                return refuse(messageOf("the key \"%1\" stands there twice", {textOf(key.get()).toStdString()}));
            }
            if (nextTag() != QXmlStreamReader::StartElement) {
                return refuse(messageOf("the key \"%1\" has no value", {textOf(key.get()).toStdString()}));
            }
            dictionary.get()->insert(key.get(), readValue(depth).get(), true);
        }
        return Value::adopt(dictionary.leak());
    }

    const QByteArray bytes_;
    QXmlStreamReader xml_;
    const bool mutableContainers_;
    const bool mutableLeaves_;
};

}  // namespace

CFTypeRef CFPropertyListCreateFromXMLData(CFAllocatorRef, CFDataRef data, CFOptionFlags mutability,
                                          CFStringRef* error) {
    CFRef<CFStringRef> fault;
    Value value;
    const CFDataObject* object = checked(data);
    if (!object) {
        fault = describeFault({}, messageOf("there is no data"));
    } else if (object->bytes().size() > kPropertyListMaximumBytes) {
        fault = describeFault({}, messageOf("larger than %1 bytes", {kPropertyListMaximumBytes}));
    } else if (object->bytes().startsWith("bplist")) {
        fault = describeFault({}, messageOf("a binary property list; only those in XML are read"));
    } else if (value = readPlainPropertyList(object->bytes(), mutability); !value) {
        Reader reader(object->bytes(), mutability);
        value = reader.read();
        fault = value ? nullptr : reader.fault();
    }
    if (error) {
        *error = fault.leak();
    }
    return value.leak();
}

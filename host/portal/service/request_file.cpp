#include "host/portal/service/request_file.h"

#include "platform/files/plain_file.h"
#include "platform/files/url_access.h"
#include "platform/foundation/CFNumber.h"
#include "platform/foundation/CFPropertyList.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"

#include <QMetaType>
#include <QString>

#include <cmath>
#include <vector>

namespace {

// Of one request: more than any program has to say.
constexpr qsizetype kMostCharacters = 4096;
constexpr int kMostValues = 256;
constexpr std::int64_t kMostBytes = std::int64_t{16} << 20;

CFRef<CFStringRef> cfString(const QString& text) {
    return CFRef<CFStringRef>::adopt(CFStringCreateWithCharacters(
        nullptr, reinterpret_cast<const UniChar*>(text.utf16()), static_cast<CFIndex>(text.size())));
}

QString qString(CFStringRef string) {
    QString text(static_cast<qsizetype>(CFStringGetLength(string)), QChar());
    CFStringGetCharacters(string, CFRangeMake(0, CFStringGetLength(string)), reinterpret_cast<UniChar*>(text.data()));
    return text;
}

CFRef<CFTypeRef> objectOf(const QVariant& value);

CFRef<CFMutableDictionaryRef> dictionaryOf(const QVariantMap& values) {
    auto dictionary = CFRef<CFMutableDictionaryRef>::adopt(
        CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    for (auto value = values.begin(); value != values.end(); ++value) {
        CFDictionarySetValue(dictionary.get(), cfString(value.key()).get(), objectOf(value.value()).get());
    }
    return dictionary;
}

CFRef<CFTypeRef> objectOf(const QVariant& value) {
    switch (value.typeId()) {
        case QMetaType::QVariantMap:
            return CFRef<CFTypeRef>::adopt(dictionaryOf(value.toMap()).leak());
        case QMetaType::Bool:
            return CFRef<CFTypeRef>::retain(value.toBool() ? kCFBooleanTrue : kCFBooleanFalse);
        case QMetaType::Double: {
            const double number = value.toDouble();
            return CFRef<CFTypeRef>::adopt(CFNumberCreate(nullptr, kCFNumberDoubleType, &number));
        }
        default:
            return CFRef<CFTypeRef>::adopt(cfString(value.toString()).leak());
    }
}

QVariantMap mapOf(CFDictionaryRef dictionary) {
    const auto count = static_cast<std::size_t>(CFDictionaryGetCount(dictionary));
    std::vector<const void*> keys(count);
    std::vector<const void*> values(count);
    CFDictionaryGetKeysAndValues(dictionary, keys.data(), values.data());
    QVariantMap map;
    for (std::size_t i = 0; i < count; ++i) {
        QVariant& value = map[qString(static_cast<CFStringRef>(keys[i]))];
        double number = 0;
        if (CFGetTypeID(values[i]) == CFDictionaryGetTypeID()) {
            value = mapOf(static_cast<CFDictionaryRef>(values[i]));
        } else if (CFGetTypeID(values[i]) == CFStringGetTypeID()) {
            value = qString(static_cast<CFStringRef>(values[i]));
        } else if (CFGetTypeID(values[i]) == CFNumberGetTypeID() &&
                   CFNumberGetValue(static_cast<CFNumberRef>(values[i]), kCFNumberDoubleType, &number)) {
            value = number;
        }
    }
    return map;
}

}  // namespace

QString plainText(const QString& text) {
    QString plain = text.left(kMostCharacters);
    if (!plain.isEmpty() && plain.back().isHighSurrogate()) {
        plain.chop(1);
    }
    for (QChar& character : plain) {
        if (character < u' ' || character.unicode() >= 0xFFFE) {
            character = u' ';
        }
    }
    return plain;
}

QVariantMap plainValues(const QVariantMap& values) {
    QVariantMap plain;
    for (auto value = values.begin(); value != values.end() && plain.size() < kMostValues; ++value) {
        if (value->typeId() == QMetaType::QString) {
            plain[plainText(value.key())] = plainText(value->toString());
        } else if (value->typeId() == QMetaType::Double && std::isfinite(value->toDouble())) {
            plain[plainText(value.key())] = *value;
        }
    }
    return plain;
}

bool writeValues(const QVariantMap& values, const std::string& path) {
    const auto data = CFRef<CFDataRef>::adopt(CFPropertyListCreateXMLData(nullptr, dictionaryOf(values).get()));
    const auto url = CFRef<CFURLRef>::adopt(CFURLCreateFromFileSystemRepresentation(
        nullptr, reinterpret_cast<const UInt8*>(path.data()), static_cast<CFIndex>(path.size()), false));
    SInt32 error = 0;
    return data && CFURLWriteDataAndPropertiesToResource(url.get(), data.get(), nullptr, &error);
}

std::optional<QVariantMap> readValues(const std::string& path) {
    const auto data = readPlainFile(path, kMostBytes);
    const auto root = data ? CFRef<CFTypeRef>::adopt(CFPropertyListCreateFromXMLData(nullptr, data.get(),
                                                                                     kCFPropertyListImmutable, nullptr))
                           : CFRef<CFTypeRef>();
    if (CFGetTypeID(root.get()) != CFDictionaryGetTypeID()) {
        return std::nullopt;
    }
    return mapOf(static_cast<CFDictionaryRef>(root.get()));
}

#include "platform/foundation/CFString.h"

#include "platform/foundation/objects.h"
#include "platform/foundation/text_encoding.h"

#include <QCollator>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace {

struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
};
using ConstantStrings = std::unordered_map<std::string, CFRef<CFStringRef>, TextHash, std::equal_to<>>;

bool contains(CFStringRef string, CFRange range) {
    const qsizetype length = string->text.size();
    return range.location >= 0 && range.length >= 0 && range.location <= length &&
           range.length <= length - range.location;
}

CFStringRef createFromBytes(QByteArrayView bytes, CFStringEncoding encoding) {
    std::optional<QString> text = decodeText(bytes, encoding);
    return text ? makeString(*std::move(text)).leak() : nullptr;
}

/// Null, with a word of it, for a string that never changes.
CFStringObject* changeable(CFMutableStringRef string, const char* function) {
    CFStringObject* object = checked(string);
    if (object && !object->isMutable) {
        std::fprintf(stderr, "%s: this string cannot be changed\n", function);
        return nullptr;
    }
    return object;
}

}  // namespace

bool CFStringObject::equals(const CFObject& other) const {
    return text == static_cast<const CFStringObject&>(other).text;
}

CFHashCode CFStringObject::hash() const {
    return qHash(text);
}

QString textOf(CFStringRef string) {
    const CFStringObject* object = checked(string);
    return object ? object->text : QString();
}

CFTypeID CFStringGetTypeID() {
    return static_cast<CFTypeID>(ObjectKind::String);
}

CFStringRef CFStringMakeConstant(const char* text) {
    // Never destroyed: constant strings are used until the last static object is gone.
    static auto& constants = *new ConstantStrings;
    static auto& mutex = *new std::mutex;
    const std::lock_guard lock(mutex);
    const std::string_view key(text);
    auto found = constants.find(key);
    if (found == constants.end()) {
        CFRef<CFStringRef> string = makeString(QString::fromUtf8(text));
        string.get()->makeImmortal();
        found = constants.emplace(key, std::move(string)).first;
    }
    return found->second.get();
}

CFStringRef CFStringCreateWithCString(CFAllocatorRef, const char* bytes, CFStringEncoding encoding) {
    return bytes ? createFromBytes(QByteArrayView(bytes, qsizetype(std::strlen(bytes))), encoding) : nullptr;
}

CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8* bytes, CFIndex length, CFStringEncoding encoding,
                                    Boolean) {
    return length < 0 || (length > 0 && !bytes) ? nullptr : createFromBytes(QByteArrayView(bytes, length), encoding);
}

CFStringRef CFStringCreateWithCharacters(CFAllocatorRef, const UniChar* characters, CFIndex length) {
    return length < 0 || (length > 0 && !characters)
               ? nullptr
               : makeString(QString(reinterpret_cast<const QChar*>(characters), length)).leak();
}

CFStringRef CFStringCreateCopy(CFAllocatorRef, CFStringRef string) {
    const CFStringObject* object = checked(string);
    return object ? makeString(object->text).leak() : nullptr;
}

CFMutableStringRef CFStringCreateMutableCopy(CFAllocatorRef, CFIndex, CFStringRef string) {
    const CFStringObject* object = checked(string);
    return object ? new CFStringObject(object->text, true) : nullptr;
}

CFStringRef CFStringCreateWithSubstring(CFAllocatorRef, CFStringRef string, CFRange range) {
    const CFStringObject* object = checked(string);
    return object && contains(object, range) ? makeString(object->text.mid(range.location, range.length)).leak()
                                             : nullptr;
}

void CFStringReplaceAll(CFMutableStringRef string, CFStringRef replacement) {
    if (CFStringObject* object = changeable(string, __func__)) {
        object->text = textOf(replacement);
    }
}

namespace {

QString folded(const QString& string, CFStringCompareFlags options) {
    QString text = string.normalized(QString::NormalizationForm_KD);
    if (options & kCFCompareDiacriticInsensitive) {
        text.removeIf([](QChar c) { return c.category() == QChar::Mark_NonSpacing; });
    }
    for (QChar& c : text) {
        if (c > u'9' && c.category() == QChar::Number_DecimalDigit) {
            c = QChar(u'0' + c.digitValue());
        }
    }
    return (options & kCFCompareCaseInsensitive) ? text.toCaseFolded() : text;
}

}  // namespace

void CFStringFold(CFMutableStringRef string, CFStringCompareFlags options, CFLocaleRef) {
    if (CFStringObject* object = changeable(string, __func__)) {
        object->text = folded(object->text, options);
    }
}

CFIndex CFStringGetLength(CFStringRef string) {
    const CFStringObject* object = checked(string);
    return object ? object->text.size() : 0;
}

UniChar CFStringGetCharacterAtIndex(CFStringRef string, CFIndex index) {
    const CFStringObject* object = checked(string);
    return object && contains(object, {index, 1}) ? object->text.at(index).unicode() : UniChar{0};
}

void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar* buffer) {
    const CFStringObject* object = checked(string);
    if (object && buffer && contains(object, range)) {
        std::memcpy(buffer, object->text.utf16() + range.location, std::size_t(range.length) * sizeof(UniChar));
    }
}

Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex bufferSize, CFStringEncoding encoding) {
    if (!buffer || bufferSize <= 0) {
        return false;
    }
    buffer[0] = '\0';
    const CFStringObject* object = checked(string);
    const std::optional<QByteArray> bytes = object ? encodeText(object->text, encoding) : std::nullopt;
    // A zero inside the text would end it early for every reader.
    if (!bytes || bytes->size() >= bufferSize || bytes->contains('\0')) {
        return false;
    }
    std::memcpy(buffer, bytes->constData(), std::size_t(bytes->size()) + 1);
    return true;
}

namespace {

/// As the user's language sorts words. Without a language, letters stand together whatever their case and marks.
class WordOrder {
public:
    WordOrder() : hasLanguage_(collator_.locale().language() != QLocale::C) {
        collator_.setCaseSensitivity(Qt::CaseInsensitive);
    }

    /// The thread's own: making one takes much longer than a comparison.
    static const WordOrder& own() {
        thread_local const WordOrder order;
        return order;
    }

    [[nodiscard]] int compare(const QString& left, const QString& right) const {
        return hasLanguage_ ? collator_.compare(left, right) : QString::compare(plain(left), plain(right));
    }

    void rank(std::span<const CFStringRef> strings, UInt32* ranks) const {
        if (hasLanguage_) {
            rankBy(strings, ranks, [this](const QString& text) { return collator_.sortKey(text); });
        } else {
            rankBy(strings, ranks, plain);
        }
    }

private:
    static QString plain(const QString& text) {
        return folded(text, kCFCompareCaseInsensitive | kCFCompareDiacriticInsensitive);
    }

    template <typename MakeKey>
    static void rankBy(std::span<const CFStringRef> strings, UInt32* ranks, MakeKey makeKey) {
        std::vector<decltype(makeKey(QString()))> keys;
        keys.reserve(strings.size());
        std::vector<std::size_t> order;
        for (const CFStringRef string : strings) {
            order.push_back(keys.size());
            keys.push_back(makeKey(textOf(string)));
        }
        std::sort(order.begin(), order.end(), [&](std::size_t one, std::size_t two) { return keys[one] < keys[two]; });
        UInt32 rank = 0;
        for (std::size_t i = 0; i < order.size(); ++i) {
            rank += i > 0 && keys[order[i - 1]] < keys[order[i]] ? 1 : 0;
            ranks[order[i]] = rank;
        }
    }

    QCollator collator_;
    bool hasLanguage_;
};

}  // namespace

void CFStringGetLocalizedRanks(const CFStringRef* strings, CFIndex count, UInt32* ranks) {
    WordOrder().rank({strings, static_cast<std::size_t>(count)}, ranks);
}

CFComparisonResult CFStringCompare(CFStringRef left, CFStringRef right, CFStringCompareFlags options) {
    const Qt::CaseSensitivity sensitivity =
        (options & kCFCompareCaseInsensitive) ? Qt::CaseInsensitive : Qt::CaseSensitive;
    const int result = (options & kCFCompareLocalized) ? WordOrder::own().compare(textOf(left), textOf(right))
                                                       : QString::compare(textOf(left), textOf(right), sensitivity);
    return result < 0 ? kCFCompareLessThan : result > 0 ? kCFCompareGreaterThan : kCFCompareEqualTo;
}

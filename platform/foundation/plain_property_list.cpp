#include "platform/foundation/plain_property_list.h"

#include "platform/foundation/CFPropertyList.h"
#include "platform/foundation/collections.h"
#include "platform/foundation/number_value.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>
#include <unordered_map>

namespace {

using Value = CFRef<CFTypeRef>;

struct Entity {
    std::string_view name;  // with what stands around it
    char character;
};
constexpr Entity kEntities[] = {
    // reference, character
    {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''},
};
static_assert(std::size(kEntities) == 5);

/// Whether the text means itself in XML. Control characters do not, nor does a '>', which may end what must not stand
/// there; and behind the byte 0xEF there are, among others, byte-order marks and codes that are no characters.
bool isPlain(std::string_view text) {
    return std::ranges::none_of(text, [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return (byte < 0x20 && c != '\t' && c != '\n') || c == '>' || byte == 0xEF;
    });
}

class Scanner {
public:
    Scanner(const QByteArray& bytes, CFOptionFlags mutability)
        : bytes_(bytes),
          rest_(bytes.constData(), static_cast<std::size_t>(bytes.size())),
          mutableContainers_(mutability != kCFPropertyListImmutable),
          mutableLeaves_(mutability == kCFPropertyListMutableContainersAndLeaves) {}

    Value read() {
        if (!take(R"(<?xml version="1.0" encoding="UTF-8"?>)")) {
            return nullptr;
        }
        skipBlanks();
        if (!take(kPropertyListDocType) || !takeTag(R"(<plist version="1.0">)")) {
            return nullptr;
        }
        Value root = readValue(0);
        if (!root || !takeTag("</plist>")) {
            return nullptr;
        }
        skipBlanks();
        return rest_.empty() ? root : nullptr;
    }

private:
    bool take(std::string_view expected) {
        const bool isThere = rest_.starts_with(expected);
        if (isThere) {
            rest_.remove_prefix(expected.size());
        }
        return isThere;
    }
    void skipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\n"), rest_.size())); }
    bool takeTag(std::string_view tag) {
        skipBlanks();
        return take(tag);
    }

    /// What stands before the end tag, which is taken as well. Nothing when another tag comes first.
    std::optional<std::string_view> takeTextBefore(std::string_view endTag) {
        const std::size_t end = rest_.find('<');
        if (end == std::string_view::npos || !rest_.substr(end).starts_with(endTag)) {
            return std::nullopt;
        }
        const std::string_view text = rest_.substr(0, end);
        rest_.remove_prefix(end + endTag.size());
        return text;
    }

    static std::optional<QString> meaningOf(std::string_view text) {
        const QByteArrayView bytes(text.data(), static_cast<qsizetype>(text.size()));
        if (!isPlain(text) || !bytes.isValidUtf8()) {
            return std::nullopt;
        }
        if (text.find('&') == std::string_view::npos) {
            return QString::fromUtf8(bytes);
        }
        QByteArray meaning;
        while (!text.empty()) {
            const auto entity =
                std::ranges::find_if(kEntities, [text](const Entity& row) { return text.starts_with(row.name); });
            if (entity == std::end(kEntities) && text.front() == '&') {
                return std::nullopt;
            }
            meaning += entity == std::end(kEntities) ? text.front() : entity->character;
            text.remove_prefix(entity == std::end(kEntities) ? 1 : entity->name.size());
        }
        return QString::fromUtf8(meaning);
    }

    /// The key of that text. The dictionaries of a list mostly have the same keys: each is made once.
    CFStringRef keyOf(std::string_view text) {
        CFRef<CFStringRef>& key = keys_[text];
        if (!key) {
            if (const auto meaning = meaningOf(text)) {
                key = makeString(*meaning);
            }
        }
        return key.get();
    }

    /// The value that begins here; `depth` containers are open around it.
    Value readValue(int depth) {
        skipBlanks();
        if (take("<string>")) {
            const auto text = takeTextBefore("</string>");
            const auto meaning = text ? meaningOf(*text) : std::nullopt;
            return meaning ? Value::adopt(new CFStringObject(*meaning, mutableLeaves_)) : nullptr;
        }
        if (take("<integer>")) {
            return readNumber<std::int64_t>(takeTextBefore("</integer>"));
        }
        if (take("<real>")) {
            return readNumber<double>(takeTextBefore("</real>"));
        }
        if (take("<true/>")) {
            return Value::retain(kCFBooleanTrue);
        }
        if (take("<false/>")) {
            return Value::retain(kCFBooleanFalse);
        }
        if (take("<data>")) {
            return readData();
        }
        if (depth == kPropertyListMaximumDepth) {
            return nullptr;
        }
        if (take("<dict>")) {
            return readDictionary(depth + 1);
        }
        return take("<array>") ? readArray(depth + 1) : nullptr;
    }

    /// Without the blanks, the plus signs and the other bases that people may write.
    template <typename Number>
    static Value readNumber(std::optional<std::string_view> text) {
        Number number{};
        if (!text) {
            return nullptr;
        }
        const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), number);
        const bool isNumber =
            error == std::errc() && end == text->data() + text->size() && std::isfinite(static_cast<double>(number));
        return isNumber ? Value::adopt(new CFNumberObject(number)) : nullptr;
    }

    Value readData() {
        const qsizetype start = bytes_.size() - static_cast<qsizetype>(rest_.size());
        const auto text = takeTextBefore("</data>");
        auto base64 =
            text ? Base64Text::of(bytes_, start, static_cast<qsizetype>(text->size())) : std::optional<Base64Text>();
        return base64 ? Value::adopt(new CFDataObject(*std::move(base64), mutableLeaves_)) : nullptr;
    }

    Value readArray(int depth) {
        auto array = CFRef<CFMutableArrayRef>::adopt(new CFArrayObject(Elements::Objects, mutableContainers_));
        while (!takeTag("</array>")) {
            const Value value = readValue(depth);
            if (!value) {
                return nullptr;
            }
            array.get()->append(value.get());
        }
        return Value::adopt(array.leak());
    }

    Value readDictionary(int depth) {
        auto dictionary = CFRef<CFMutableDictionaryRef>::adopt(
            new CFDictionaryObject(Elements::Objects, Elements::Objects, mutableContainers_));
        while (!takeTag("</dict>")) {
            const auto text = take("<key>") ? takeTextBefore("</key>") : std::nullopt;
            const CFStringRef key = text ? keyOf(*text) : nullptr;
            const Value value = key ? readValue(depth) : nullptr;
            const std::size_t count = dictionary.get()->entries.size();
            dictionary.get()->insert(key, value.get(), false);
            if (dictionary.get()->entries.size() == count) {
                return nullptr;  // at a fault, or when the key is there already
            }
        }
        return Value::adopt(dictionary.leak());
    }

    const QByteArray bytes_;
    std::string_view rest_;
    std::unordered_map<std::string_view, CFRef<CFStringRef>> keys_;  // by their texts in the bytes
    const bool mutableContainers_;
    const bool mutableLeaves_;
};

}  // namespace

CFRef<CFTypeRef> readPlainPropertyList(const QByteArray& bytes, CFOptionFlags mutability) {
    return Scanner(bytes, mutability).read();
}

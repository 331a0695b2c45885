#include "watermark/records/xml_entities.h"

#include "model/settings/record_ticket.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct XmlEntity {
    std::u16string_view name;
    std::u16string_view text;
};

constexpr XmlEntity kXmlEntities[] = {
    // name    text
    {u"amp", u"&"}, {u"quot", u"\""}, {u"lt", u"<"}, {u"gt", u">"}, {u"apos", u"'"},
};
static_assert(std::size(kXmlEntities) == 5);

std::u16string TextOf(CFStringRef string) {
    std::u16string text(static_cast<std::size_t>(CFStringGetLength(string)), u'\0');
    CFStringGetCharacters(string, CFRangeMake(0, static_cast<CFIndex>(text.size())), text.data());
    return text;
}

CFRef<CFStringRef> CreateString(std::u16string_view text) {
    return CFRef<CFStringRef>::adopt(
        CFStringCreateWithCharacters(kCFAllocatorDefault, text.data(), static_cast<CFIndex>(text.size())));
}

/// The digit's value; 16 for what is none.
unsigned DigitValue(char16_t digit) {
    if (digit >= u'0' && digit <= u'9') {
        return digit - u'0';
    }
    const auto letter = static_cast<char16_t>(digit | 0x20);
    return letter >= u'a' && letter <= u'f' ? letter - u'a' + 10U : 16U;
}

/// The character of a numeric reference, "#65" or "#x41"; nothing when it is malformed or there is no such character.
std::optional<std::u16string> CharacterOf(std::u16string_view name) {
    constexpr char32_t kLastCharacter = 0x10FFFF;
    const unsigned base = name.starts_with(u"#x") ? 16 : 10;
    const std::u16string_view digits = name.substr(base == 16 ? 2 : 1);
    char32_t code = 0;
    for (const char16_t digit : digits) {
        const unsigned value = DigitValue(digit);
        code = code * base + value;
        if (value >= base || code > kLastCharacter) {
            return std::nullopt;
        }
    }
    const bool isHalf = code >= 0xD800 && code <= 0xDFFF;
    if (code == 0 || isHalf) {  // no digits are 0, too
        return std::nullopt;
    }
    if (code < 0x10000) {
        return std::u16string(1, static_cast<char16_t>(code));
    }
    const char32_t above = code - 0x10000;
    return std::u16string{static_cast<char16_t>(0xD800 + (above >> 10)),
                          static_cast<char16_t>(0xDC00 + (above & 0x3FF))};
}

class EntityTable {
public:
    explicit EntityTable(CFDictionaryRef entities) : entities_(entities) {
        for (const auto& entity : kXmlEntities) {
            longest_ = std::max(longest_, entity.name.size());
        }
        std::vector<const void*> keys(static_cast<std::size_t>(CFDictionaryGetCount(entities)));
        CFDictionaryGetKeysAndValues(entities, keys.data(), nullptr);
        for (const void* key : keys) {
            longest_ = std::max(longest_, static_cast<std::size_t>(CFStringGetLength(static_cast<CFStringRef>(key))));
        }
    }

    std::optional<std::u16string> find(std::u16string_view name) const {
        if (name.starts_with(u'#')) {
            if (auto character = CharacterOf(name)) {
                return character;
            }
        }
        // In a text full of "&" most of what looks like a name reaches to a ";" far away.
        if (name.size() > longest_) {
            return std::nullopt;
        }
        if (const CFStringRef own = GetRecordString(entities_, CreateString(name).get())) {
            return TextOf(own);
        }
        const auto* const entity = std::find_if(std::begin(kXmlEntities), std::end(kXmlEntities),
                                                [name](const XmlEntity& candidate) { return candidate.name == name; });
        return entity != std::end(kXmlEntities) ? std::optional<std::u16string>(entity->text) : std::nullopt;
    }

private:
    CFDictionaryRef entities_;
    std::size_t longest_ = 0;
};

}  // namespace

CFStringRef XMLCreateStringByUnescapingEntities(CFAllocatorRef, CFStringRef string, CFDictionaryRef entities) {
    if (string == nullptr) {
        return nullptr;
    }
    constexpr auto kNone = std::u16string_view::npos;
    const std::u16string source = TextOf(string);
    const std::u16string_view text = source;
    const EntityTable table(entities);
    std::u16string result;
    result.reserve(text.size());
    std::size_t position = 0;
    std::size_t end = text.find(u';');  // the next one from the position on
    while (position < text.size()) {
        const std::size_t ampersand = std::min(text.find(u'&', position), text.size());
        result += text.substr(position, ampersand - position);
        position = ampersand;
        if (end != kNone && end < ampersand) {
            end = text.find(u';', ampersand);
        }
        if (end == kNone) {
            result += text.substr(position);
            break;
        }
        if (ampersand == text.size()) {
            break;
        }
        if (const auto replacement = table.find(text.substr(ampersand + 1, end - ampersand - 1))) {
            result += *replacement;
            position = end + 1;
        } else {
            result += u'&';
            position = ampersand + 1;
        }
    }
    return CreateString(result).leak();
}

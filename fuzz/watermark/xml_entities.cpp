// Any UTF-16 text as one with XML entities.
//
// Contract: a text without '&' stays as it is, no text grows by XML's own entities, and what is escaped comes back,
// whether by name or by number, among entities of the caller's own.

#include "watermark/records/xml_entities.h"

#include "fuzz/fuzz_target.h"
#include "platform/foundation/CFString.h"

#include <cstring>
#include <string>

namespace {

std::u16string unescaped(const std::u16string& text, CFDictionaryRef entities) {
    const auto string = CFRef<CFStringRef>::adopt(
        CFStringCreateWithCharacters(nullptr, text.data(), static_cast<CFIndex>(text.size())));
    const auto result = CFRef<CFStringRef>::adopt(XMLCreateStringByUnescapingEntities(nullptr, string.get(), entities));
    std::u16string characters(static_cast<std::size_t>(CFStringGetLength(result.get())), u'\0');
    CFStringGetCharacters(result.get(), CFRangeMake(0, static_cast<CFIndex>(characters.size())), characters.data());
    return characters;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::u16string text(size / 2, u'\0');
    std::memcpy(text.data(), data, text.size() * 2);

    const std::u16string plain = unescaped(text, nullptr);
    FUZZ_EXPECT(plain.size() <= text.size());
    FUZZ_EXPECT(text.find(u'&') != std::u16string::npos || plain == text);

    const auto own = CFRef<CFMutableDictionaryRef>::adopt(
        CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    CFDictionarySetValue(own.get(), CFSTR("and"), CFSTR("&"));
    CFDictionarySetValue(own.get(), CFSTR("#x"), CFSTR("&#38;and;"));
    std::u16string escaped;
    for (const char16_t unit : text) {
        switch (unit) {
            case u'&':
                escaped += escaped.size() % 3 == 0 ? u"&amp;" : escaped.size() % 3 == 1 ? u"&#38;" : u"&and;";
                break;
            case u'<':
                escaped += u"&lt;";
                break;
            case u';':
                escaped += u"&#x3b;";
                break;
            default:
                escaped += unit;
        }
    }
    FUZZ_EXPECT(unescaped(escaped, own.get()) == text);
    unescaped(text, own.get());
    return 0;
}

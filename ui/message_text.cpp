#include "ui/message_text.h"

#include <algorithm>
#include <string>

namespace {

constexpr CFIndex kLongestArgument = 80;

/// The first code units of a string that has so many.
std::u16string UnitsOf(CFStringRef string, CFIndex count) {
    std::u16string units(static_cast<std::size_t>(count), u'\0');
    if (!units.empty()) {
        CFStringGetCharacters(string, CFRangeMake(0, count), units.data());
    }
    return units;
}

CFRef<CFStringRef> StringOf(const std::u16string& units) {
    return CFRef<CFStringRef>::adopt(
        CFStringCreateWithCharacters(kCFAllocatorDefault, units.data(), static_cast<CFIndex>(units.size())));
}

/// Controls, line and paragraph separators, and the marks that embed, override or isolate directions. Others that are
/// not seen join letters and belong to the text.
bool IsUnfitForOneLine(UniChar unit) {
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || (unit >= 0x2028 && unit <= 0x202E) ||
           (unit >= 0x2066 && unit <= 0x2069);
}

std::u16string UnitsForOneLine(CFStringRef text, CFIndex longest) {
    std::u16string units = UnitsOf(text, std::min(CFStringGetLength(text), longest));
    if (CFStringGetLength(text) > longest) {
        if (!units.empty() && (units.back() & 0xFC00) == 0xD800) {
            units.pop_back();
        }
        units += u'…';
    }
    std::ranges::replace_if(units, IsUnfitForOneLine, u' ');
    return units;
}

}  // namespace

CFRef<CFStringRef> CopyTextForOneLine(CFStringRef text, CFIndex longest) {
    return StringOf(UnitsForOneLine(text, longest));
}

CFRef<CFStringRef> CopyFilledInMessage(CFStringRef text, std::initializer_list<CFStringRef> arguments) {
    const std::u16string pattern = UnitsOf(text, CFStringGetLength(text));
    std::u16string message;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const auto argument = i + 3 < pattern.size() ? static_cast<std::size_t>(pattern[i + 1] - u'1') : 0;
        const bool isPlace = pattern[i] == u'%' && pattern.compare(i + 2, 2, u"$@") == 0 && argument < arguments.size();
        if (isPlace) {
            message += UnitsForOneLine(arguments.begin()[argument], kLongestArgument);
            i += 3;
        } else {
            message += pattern[i];
        }
    }
    return StringOf(message);
}

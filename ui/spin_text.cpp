#include "ui/spin_text.h"

#include "model/settings/number_text.h"
#include "platform/foundation/CFCharacterSet.h"
#include "platform/foundation/CFNumberFormatter.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"

#include <charconv>
#include <cmath>
#include <string>

namespace {

constexpr UInt8 kAngleMark[] = {0xCB, 0x9A, 0x00};  // the terminating zero belongs to it
constexpr UniChar kAngleCharacter = u'\u02DA';

std::u16string Characters(CFStringRef string) {
    std::u16string characters(static_cast<std::size_t>(CFStringGetLength(string)), u'\0');
    CFStringGetCharacters(string, CFRangeMake(0, CFStringGetLength(string)), characters.data());
    return characters;
}

CFStringRef CreateString(const std::u16string& characters) {
    return CFStringCreateWithCharacters(kCFAllocatorDefault, characters.data(),
                                        static_cast<CFIndex>(characters.size()));
}

std::u16string SuffixText(SpinTextFormat::Suffix suffix) {
    switch (suffix) {
        case SpinTextFormat::Suffix::angle:
            return Characters(
                CFRef<CFStringRef>::adopt(CFStringCreateWithBytes(kCFAllocatorDefault, kAngleMark,
                                                                  std::size(kAngleMark), kCFStringEncodingUTF8, false))
                    .get());
        case SpinTextFormat::Suffix::percent:
            return u"%";
        case SpinTextFormat::Suffix::none:
            break;
    }
    return {};
}

CFNumberFormatterRef Formatter() {
    static const auto formatter = [] {
        const auto locale = CFRef<CFLocaleRef>::adopt(CFLocaleCopyCurrent());
        return CFRef<CFNumberFormatterRef>::adopt(
            CFNumberFormatterCreate(kCFAllocatorDefault, locale.get(), kCFNumberFormatterDecimalStyle));
    }();
    return formatter.get();
}

/// The number times 10^decimals, cut off behind its point. By its decimal digits: 8.29 * 100 is a little less than 829.
std::optional<SInt32> Scaled(double number, SInt32 decimals) {
    constexpr double kLimit = 1e11;  // far beyond every value, and short to write
    if (!(std::fabs(number) < kLimit)) {
        return std::nullopt;
    }
    char text[400];
    char* end = std::to_chars(text, std::end(text), number, std::chars_format::fixed).ptr;
    std::string digits(text, end);
    const std::size_t point = std::min(digits.find('.'), digits.size());
    std::string fraction = point < digits.size() ? digits.substr(point + 1) : std::string();
    fraction.resize(static_cast<std::size_t>(decimals), '0');
    digits.replace(point, std::string::npos, fraction);
    SInt32 value = 0;
    const bool fits = std::from_chars(digits.data(), digits.data() + digits.size(), value).ec == std::errc();
    return fits ? std::optional(value) : std::nullopt;
}

}  // namespace

CFStringRef CreateSpinText(SInt32 value, const SpinTextFormat& format) {
    const auto number = CFRef<CFStringRef>::adopt(
        CreateLocalizedCFStringFromNumberWithDecimals(value / std::pow(10.0, format.decimals), format.decimals));
    return CreateString(Characters(number.get()) + SuffixText(format.suffix));
}

std::optional<SInt32> SpinTextValue(CFStringRef text, const SpinTextFormat& format) {
    std::u16string number = Characters(text);
    std::erase_if(number, [](UniChar c) {
        return CFCharacterSetIsLongCharacterMember(CFCharacterSetGetPredefined(kCFCharacterSetControl), c);
    });
    const UniChar suffix = format.suffix == SpinTextFormat::Suffix::angle ? kAngleCharacter : u'%';
    if (format.suffix != SpinTextFormat::Suffix::none && number.ends_with(suffix)) {
        number.pop_back();
    }
    if (number.empty()) {
        return 0;
    }
    const auto string = CFRef<CFStringRef>::adopt(CreateString(number));
    if (format.decimals > 0) {
        double real = 0;
        return CFNumberFormatterGetValueFromString(Formatter(), string.get(), nullptr, kCFNumberDoubleType, &real)
                   ? Scaled(real, format.decimals)
                   : std::nullopt;
    }
    SInt32 value = 0;
    return CFNumberFormatterGetValueFromString(Formatter(), string.get(), nullptr, kCFNumberSInt32Type, &value)
               ? std::optional(value)
               : std::nullopt;
}

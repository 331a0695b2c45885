#include "host/settings/texts.h"

#include "platform/foundation/CFNumberFormatter.h"
#include "platform/foundation/text.h"

#include <algorithm>

CFRef<CFStringRef> localized(CFBundleRef bundle, CFStringRef key) {
    return CFRef<CFStringRef>::adopt(
        CFBundleCopyLocalizedString(bundle, key, CFSTR("STRING NOT FOUND"), CFSTR("Localizable")));
}

CFRef<CFStringRef> localized(CFBundleRef bundle, CFStringRef key, const std::string& value) {
    return localized(bundle, key, std::vector{value});
}

namespace {

/// A number in the user's digits; anything else as it is.
std::string shown(const std::string& value) {
    const bool isNumber = !value.empty() && std::ranges::all_of(value, [](char c) { return c >= '0' && c <= '9'; });
    return isNumber
               ? utf8Text(
                     CFRef<CFStringRef>::adopt(CFNumberListCreateLocalized(nullptr, makeString(value).get())).get())
               : value;
}

}  // namespace

CFRef<CFStringRef> localized(CFBundleRef bundle, CFStringRef key, const std::vector<std::string>& values) {
    const std::string text = utf8Text(localized(bundle, key).get());
    std::string filled;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t number =
            text[i] == '%' && i + 1 < text.size() ? static_cast<std::size_t>(text[i + 1] - '0') : 0;
        if (number >= 1 && number <= values.size()) {
            filled += shown(values[number - 1]);
            ++i;
        } else {
            filled += text[i];
        }
    }
    return makeString(filled);
}

std::string listed(CFBundleRef bundle, const std::vector<std::string>& sentences) {
    if (sentences.size() == 1) {
        return sentences.front();
    }
    std::string lines;
    for (const std::string& sentence : sentences) {
        lines += (lines.empty() ? "" : "\n") + utf8Text(localized(bundle, CFSTR("List Line"), sentence).get());
    }
    return lines;
}

std::string joined(CFBundleRef bundle, const std::vector<std::string>& words) {
    const std::string comma = utf8Text(localized(bundle, CFSTR("List Comma")).get());
    std::string all;
    for (const std::string& word : words) {
        all += all.empty() || word.empty() ? word : comma + word;
    }
    return all;
}

std::string shortened(const std::string& name, std::size_t most) {
    const std::size_t end = most * 3 / 8;
    std::u16string units(static_cast<std::size_t>(CFStringGetLength(makeString(name).get())), u'\0');
    if (units.size() <= most) {
        return name;
    }
    CFStringGetCharacters(makeString(name).get(), CFRangeMake(0, static_cast<CFIndex>(units.size())), units.data());
    // A pair of surrogates that is cut apart would be no text any more.
    const auto isSecondHalf = [](char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; };
    std::size_t head = most - end;
    std::size_t tail = units.size() - end;
    head -= isSecondHalf(units[head]) ? 1 : 0;
    tail += isSecondHalf(units[tail]) ? 1 : 0;
    units = units.substr(0, head) + u"…" + units.substr(tail);
    return utf8Text(CFRef<CFStringRef>::adopt(
                        CFStringCreateWithCharacters(nullptr, units.data(), static_cast<CFIndex>(units.size())))
                        .get());
}

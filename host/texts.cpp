#include "host/texts.h"

#include "host/script/text.h"

CFRef<CFStringRef> localized(CFBundleRef bundle, CFStringRef key) {
    return CFRef<CFStringRef>::adopt(
        CFBundleCopyLocalizedString(bundle, key, CFSTR("STRING NOT FOUND"), CFSTR("Localizable")));
}

CFRef<CFStringRef> localized(CFBundleRef bundle, CFStringRef key, const std::string& value) {
    return localized(bundle, key, std::vector{value});
}

CFRef<CFStringRef> localized(CFBundleRef bundle, CFStringRef key, const std::vector<std::string>& values) {
    const std::string text = utf8(localized(bundle, key).get());
    std::string filled;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t number =
            text[i] == '%' && i + 1 < text.size() ? static_cast<std::size_t>(text[i + 1] - '0') : 0;
        if (number >= 1 && number <= values.size()) {
            filled += values[number - 1];
            ++i;
        } else {
            filled += text[i];
        }
    }
    return cfString(filled);
}

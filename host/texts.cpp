#include "host/texts.h"

#include "host/script/text.h"

CFRef<CFStringRef> localized(CFBundleRef bundle, CFStringRef key) {
    return CFRef<CFStringRef>::adopt(
        CFBundleCopyLocalizedString(bundle, key, CFSTR("STRING NOT FOUND"), CFSTR("Localizable")));
}

CFRef<CFStringRef> localized(CFBundleRef bundle, CFStringRef key, const std::string& value) {
    std::string text = utf8(localized(bundle, key).get());
    if (const std::size_t place = text.find("%1"); place != std::string::npos) {
        text.replace(place, 2, value);
    }
    return cfString(text);
}

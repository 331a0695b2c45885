#include "ui/help.h"

#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Help.h"

OSStatus DisplayHelp(CFBundleRef bundle, CFStringRef anchor, CFStringRef page) {
    const CFTypeRef name = CFBundleGetValueForInfoDictionaryKey(bundle, CFSTR("CFBundleHelpBookName"));
    if (CFGetTypeID(name) != CFStringGetTypeID()) {
        return paramErr;
    }
    const auto book = static_cast<CFStringRef>(name);
    return anchor != nullptr ? AHLookupAnchor(book, anchor) : AHGotoPage(book, page, nullptr);
}

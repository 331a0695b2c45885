#include "platform/files/user_names.h"

#include "platform/foundation/CFRef.h"

#include <string>
#include <vector>

#include <pwd.h>
#include <unistd.h>

namespace {

/// Null when the bytes are no UTF-8.
CFRef<CFStringRef> createText(std::string_view bytes) {
    return CFRef<CFStringRef>::adopt(CFStringCreateWithBytes(kCFAllocatorDefault,
                                                             reinterpret_cast<const UInt8*>(bytes.data()),
                                                             CFIndex(bytes.size()), kCFStringEncodingUTF8, false));
}

}  // namespace

std::string_view fullNameInAccount(std::string_view entry) {
    const std::string_view name = entry.substr(0, entry.find(','));
    const std::size_t first = name.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view()
                                           : name.substr(first, name.find_last_not_of(' ') - first + 1);
}

CFStringRef CSCopyUserName(Boolean useShortName) {
    std::vector<char> buffer(16 * 1024);
    struct passwd account = {};
    struct passwd* found = nullptr;
    getpwuid_r(getuid(), &account, buffer.data(), buffer.size(), &found);
    if (found == nullptr) {
        return createText("").leak();
    }
    const std::string_view fullName = fullNameInAccount(found->pw_gecos != nullptr ? found->pw_gecos : "");
    CFRef<CFStringRef> name = createText(useShortName || fullName.empty() ? found->pw_name : fullName);
    return name ? name.leak() : createText(useShortName ? "" : found->pw_name).leak();
}

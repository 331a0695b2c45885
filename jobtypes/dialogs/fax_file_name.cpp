#include "jobtypes/dialogs/fax_file_name.h"

#include "platform/foundation/CFURL.h"

#include <array>
#include <cstring>

CFRef<CFStringRef> CopyFileName(CFURLRef file) {
    std::array<UInt8, 4096> path{};
    CFURLGetFileSystemRepresentation(file, true, path.data(), static_cast<CFIndex>(path.size()));
    const char* text = reinterpret_cast<const char*>(path.data());
    const char* slash = std::strrchr(text, '/');
    const char* name = slash != nullptr ? slash + 1 : text;
    auto string =
        CFRef<CFStringRef>::adopt(CFStringCreateWithCString(kCFAllocatorDefault, name, kCFStringEncodingUTF8));
    return string ? string
                  : CFRef<CFStringRef>::adopt(
                        CFStringCreateWithCString(kCFAllocatorDefault, name, kCFStringEncodingISOLatin1));
}

#include "platform/files/url_access.h"

#include "platform/files/pending_file.h"
#include "platform/files/plain_file.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFURL.h"
#include "platform/foundation/text.h"

#include <cerrno>
#include <string>

namespace {

/// Sets errno to why it failed.
bool fail(int reason) {
    errno = reason;
    return false;
}

/// Hands errno to the caller when it failed.
bool report(bool success, SInt32* error) {
    if (error) {
        *error = success ? 0 : errno;
    }
    return success;
}

}  // namespace

Boolean CFURLCreateDataAndPropertiesFromResource(CFAllocatorRef, CFURLRef url, CFDataRef* data,
                                                 CFDictionaryRef* properties, CFArrayRef desiredProperties,
                                                 SInt32* error) {
    if (!data || properties || desiredProperties) {
        return report(fail(EINVAL), error);
    }
    *data = nullptr;
    const std::string path = filePath(url);
    if (path.empty()) {
        return report(fail(EINVAL), error);
    }
    if (auto bytes = readPlainFile(path, kMaximumFileBytes)) {
        *data = bytes.leak();
    }
    return report(*data != nullptr, error);
}

Boolean CFURLWriteDataAndPropertiesToResource(CFURLRef url, CFDataRef data, CFDictionaryRef properties, SInt32* error) {
    if (!data || properties) {
        return report(fail(EINVAL), error);
    }
    const std::string path = filePath(url);
    if (path.empty()) {
        return report(fail(EINVAL), error);
    }
    PendingFile file(path);
    const bool isDone = file.write(bytesOf(data)) && file.commit();
    errno = file.error();
    return report(isDone, error);
}

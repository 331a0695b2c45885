#include "platform/files/url_access.h"

#include "platform/files/descriptor.h"
#include "platform/files/pending_file.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFURL.h"

#include <array>
#include <cerrno>
#include <climits>
#include <optional>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

/// Sets errno to why it failed.
bool fail(int reason) {
    errno = reason;
    return false;
}

std::optional<std::string> pathOf(CFURLRef url) {
    UInt8 path[PATH_MAX];
    if (!CFURLGetFileSystemRepresentation(url, true, path, sizeof path)) {
        errno = EINVAL;
        return std::nullopt;
    }
    return reinterpret_cast<const char*>(path);
}

/// Null with errno set when it cannot be read.
CFRef<CFMutableDataRef> readAll(int file) {
    struct stat status;
    if (fstat(file, &status) != 0) {
        return nullptr;
    }
    if (S_ISDIR(status.st_mode)) {
        errno = EISDIR;
        return nullptr;
    }
    // A pipe has no size, and a file may grow, so the size is a first guess.
    const bool hasSize = S_ISREG(status.st_mode) && status.st_size < kMaximumFileBytes;
    auto data = CFRef<CFMutableDataRef>::adopt(CFDataCreateMutable(nullptr, hasSize ? CFIndex(status.st_size) : 0));
    std::array<UInt8, std::size_t{64} * 1024> buffer;
    for (;;) {
        const ssize_t count = read(file, buffer.data(), buffer.size());
        if (count == 0) {
            return data;
        }
        if (count < 0) {
            if (errno != EINTR) {
                return nullptr;
            }
            continue;
        }
        CFDataAppendBytes(data.get(), buffer.data(), CFIndex(count));
        if (CFDataGetLength(data.get()) > kMaximumFileBytes) {
            errno = EFBIG;
            return nullptr;
        }
    }
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
    const std::optional<std::string> path = pathOf(url);
    if (!path) {
        return report(false, error);
    }
    const Descriptor file(open(path->c_str(), O_RDONLY | O_CLOEXEC));
    if (auto bytes = file ? readAll(file.get()) : nullptr) {
        *data = bytes.leak();
    }
    return report(*data != nullptr, error);
}

Boolean CFURLWriteDataAndPropertiesToResource(CFURLRef url, CFDataRef data, CFDictionaryRef properties, SInt32* error) {
    if (!data || properties) {
        return report(fail(EINVAL), error);
    }
    const std::optional<std::string> path = pathOf(url);
    if (!path) {
        return report(false, error);
    }
    PendingFile file(*path);
    const auto* const bytes = reinterpret_cast<const char*>(CFDataGetBytePtr(data));
    const bool isDone = file.write({bytes, static_cast<std::size_t>(CFDataGetLength(data))}) && file.commit();
    errno = file.error();
    return report(isDone, error);
}

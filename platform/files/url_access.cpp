#include "platform/files/url_access.h"

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFURL.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// Written over POSIX calls, because QSaveFile (Qt 6.4) reports success when syncing the file has failed; does not sync
// the folder; gives an existing file's wider rights to the new one; and on file systems without unnamed files opens
// the new one under a name that others can read until its rights are set.

namespace {

/// An open file, closed with its owner.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() { close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    explicit operator bool() const { return number_ >= 0; }
    int get() const { return number_; }
    bool close() { return number_ < 0 || ::close(std::exchange(number_, -1)) == 0; }

private:
    int number_;
};

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

bool writeAll(int file, const UInt8* bytes, CFIndex length) {
    while (length > 0) {
        const ssize_t count = write(file, bytes, std::size_t(length));
        if (count < 0) {
            if (errno != EINTR) {
                return false;
            }
            continue;
        }
        bytes += count;
        length -= count;
    }
    return true;
}

std::string folderOf(const std::string& path) {
    return path.substr(0, path.rfind('/') + 1);
}

/// The path that a chain of symbolic links ends at; the file itself need not exist.
std::optional<std::string> followLinks(std::string path) {
    for (int links = 0; links < 40; ++links) {  // as many as the kernel follows
        char target[PATH_MAX];
        const ssize_t length = readlink(path.c_str(), target, sizeof target);
        if (length < 0) {
            return errno == EINVAL || errno == ENOENT ? std::optional(path) : std::nullopt;
        }
        const std::string text(target, std::size_t(length));
        path = text.starts_with('/') ? text : folderOf(path).append(text);
    }
    errno = ELOOP;
    return std::nullopt;
}

/// The rights of the new file: the user's alone, and no more than an existing file gives. Nothing when there is
/// something that is no plain file; a device must not be replaced by one.
std::optional<mode_t> rightsFor(const std::string& path) {
    constexpr mode_t kPrivate = S_IRUSR | S_IWUSR;
    struct stat status;
    if (stat(path.c_str(), &status) != 0) {
        return errno == ENOENT ? std::optional(kPrivate) : std::nullopt;
    }
    if (!S_ISREG(status.st_mode)) {
        errno = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
        return std::nullopt;
    }
    return status.st_mode & kPrivate;
}

bool replaceFile(const std::string& path, const UInt8* bytes, CFIndex length) {
    const std::optional<mode_t> rights = rightsFor(path);
    if (!rights) {
        return false;
    }
    const std::string folder = folderOf(path);
    std::string temporary = folder + ".tavro-XXXXXX";
    Descriptor file(mkostemp(temporary.data(), O_CLOEXEC));  // made with 0600
    if (!file) {
        return false;
    }
    if (!writeAll(file.get(), bytes, length) || fchmod(file.get(), *rights) != 0 || fsync(file.get()) != 0 ||
        !file.close() || rename(temporary.c_str(), path.c_str()) != 0) {
        const int reason = errno;
        unlink(temporary.c_str());
        return fail(reason);
    }
    // The file is replaced. If this fails, a crash may still bring the old one back, as a whole.
    if (const Descriptor directory(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)); directory) {
        fsync(directory.get());
    }
    return true;
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
    const std::optional<std::string> named = pathOf(url);
    const std::optional<std::string> path = named ? followLinks(*named) : std::nullopt;
    return report(path && replaceFile(*path, CFDataGetBytePtr(data), CFDataGetLength(data)), error);
}

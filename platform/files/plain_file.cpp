#include "platform/files/plain_file.h"

#include "platform/foundation/message.h"

#include <array>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

/// Whether it can be read to its end; else errno says why not.
bool isReadable(int file, std::int64_t maximum) {
    struct stat status {};
    if (fstat(file, &status) != 0) {
        return false;
    }
    errno = S_ISDIR(status.st_mode) ? EISDIR : !S_ISREG(status.st_mode) ? EINVAL : status.st_size > maximum ? EFBIG : 0;
    return errno == 0;
}

}  // namespace

Descriptor openPlainFile(const std::string& path, std::int64_t maximum) {
    // Without O_NONBLOCK a named pipe would wait for its writer.
    Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file && errno == ENXIO) {
        errno = EINVAL;  // a socket
    }
    return file && !isReadable(file.get(), maximum) ? Descriptor() : std::move(file);
}

CFRef<CFMutableDataRef> readPlainFile(const std::string& path, std::int64_t maximum) {
    const Descriptor file = openPlainFile(path, maximum);
    if (!file) {
        return nullptr;
    }
    struct stat status {};
    fstat(file.get(), &status);
    // A file may grow, and some have a content but no size, so the size is a first guess.
    auto data = CFRef<CFMutableDataRef>::adopt(CFDataCreateMutable(nullptr, CFIndex(status.st_size)));
    std::array<UInt8, std::size_t{64} * 1024> buffer;
    for (;;) {
        const ssize_t count = read(file.get(), buffer.data(), buffer.size());
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
        if (CFDataGetLength(data.get()) > maximum) {
            errno = EFBIG;
            return nullptr;
        }
    }
}

std::string readFault(int error, std::int64_t maximum) {
    constexpr std::int64_t kMegabyte = std::int64_t{1024} * 1024;
    return error == EINVAL  ? messageText("is not a plain file")
           : error == EFBIG ? messageText("is larger than %1 MB", {maximum / kMegabyte})
                            : systemMessage(error);
}

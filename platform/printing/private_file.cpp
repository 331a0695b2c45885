#include "platform/printing/private_file.h"

#include "platform/printing/last_error.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <unistd.h>

#include <fcntl.h>

PrivateFile::PrivateFile() {
    const char* const folder = std::getenv("TMPDIR");
    std::string name = std::string(folder == nullptr || *folder == '\0' ? "/tmp" : folder) + "/tavro.XXXXXX";
    file_ = mkostemp(name.data(), O_CLOEXEC);  // 0600
    if (file_ < 0 || unlink(name.c_str()) != 0) {
        reason_ = systemReason(errno);
    }
}

PrivateFile::~PrivateFile() {
    if (file_ >= 0) {
        close(file_);
    }
}

std::string PrivateFile::path() const {
    return "/proc/" + std::to_string(getpid()) + "/fd/" + std::to_string(file_);
}

bool PrivateFile::hasSameContent(const PrivateFile& other) const {
    std::array<char, 16384> mine;
    std::array<char, 16384> others;
    for (off_t at = 0;;) {
        const ssize_t count = pread(file_, mine.data(), mine.size(), at);
        const ssize_t otherCount = pread(other.file_, others.data(), others.size(), at);
        if (count < 0 || count != otherCount ||
            std::memcmp(mine.data(), others.data(), static_cast<std::size_t>(count)) != 0) {
            return false;
        }
        if (count == 0) {
            return true;
        }
        at += count;
    }
}

bool PrivateFile::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(file_, bytes.data(), bytes.size());
        if (count >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            reason_ = systemReason(errno);
            return false;
        }
    }
    return true;
}

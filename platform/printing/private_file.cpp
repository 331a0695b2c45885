#include "platform/printing/private_file.h"

#include "platform/files/temporary_files.h"
#include "platform/foundation/message.h"
#include "platform/printing/PMPrinter.h"
#include "platform/printing/last_error.h"

#include <array>
#include <cerrno>
#include <cstring>

#include <sys/mman.h>
#include <unistd.h>

PrivateFile::PrivateFile(Place place)
    : file_(place == Place::disk ? makeTemporaryFile()
                                 : Descriptor(memfd_create("tavro", MFD_CLOEXEC | MFD_ALLOW_SEALING))) {
    error_ = file_ ? 0 : errno;
}

std::string PrivateFile::path() const {
    return "/proc/self/fd/" + std::to_string(file_.get());
}

bool PrivateFile::hasSameContent(const PrivateFile& other) const {
    std::array<char, 16384> mine;
    std::array<char, 16384> others;
    for (off_t at = 0;;) {
        const ssize_t count = pread(descriptor(), mine.data(), mine.size(), at);
        const ssize_t otherCount = pread(other.descriptor(), others.data(), others.size(), at);
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
    if (error_ == 0 && !writeAll(descriptor(), bytes)) {
        error_ = errno;
    }
    return error_ == 0;
}

bool isKept(const PrivateFile& file) {
    if (file.error() != 0) {
        failWith(kPMCannotWriteOutput, temporaryFolder(), systemMessage(file.error()));
    }
    return file.error() == 0;
}

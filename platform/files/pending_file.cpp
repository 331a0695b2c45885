#include "platform/files/pending_file.h"

#include "platform/files/litter.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>

// Written over POSIX calls, because QSaveFile (Qt 6.4) reports success when syncing the file has failed; does not sync
// the folder; gives an existing file's wider rights to the new one; and on file systems without unnamed files opens
// the new one under a name that others can read until its rights are set.

namespace {

constexpr mode_t kPrivate = S_IRUSR | S_IWUSR;

/// With a slash at its end; "./" for none.
std::string folderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "./" : path.substr(0, slash + 1);
}

/// The path that a chain of symbolic links ends at; the file itself need not exist.
std::optional<std::string> followLinks(std::string path) {
    for (int links = 0; links < 40; ++links) {  // as many as the kernel follows
        std::array<char, PATH_MAX> target;
        const ssize_t length = readlink(path.c_str(), target.data(), target.size());
        if (length < 0) {
            return errno == EINVAL || errno == ENOENT ? std::optional(path) : std::nullopt;
        }
        const std::string text(target.data(), static_cast<std::size_t>(length));
        path = text.starts_with('/') ? text : folderOf(path).append(text);
    }
    errno = ELOOP;
    return std::nullopt;
}

/// The rights of the new file: the user's alone, and no more than an existing file gives. Nothing when there is
/// something that is no plain file; a device must not be replaced by one.
std::optional<mode_t> rightsFor(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        return errno == ENOENT ? std::optional(kPrivate) : std::nullopt;
    }
    if (!S_ISREG(status.st_mode)) {
        errno = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
        return std::nullopt;
    }
    return status.st_mode & kPrivate;
}

}  // namespace

PendingFile::PendingFile(const std::string& destination) {
    const auto path = followLinks(destination);
    const auto rights = path ? rightsFor(*path) : std::nullopt;
    if (rights) {
        destination_ = *path;
        rights_ = *rights;
    }
    if (!rights || !open()) {
        error_ = errno;
    }
}

PendingFile::~PendingFile() {
    if (!name_.empty()) {
        unlink(name_.c_str());
    }
}

bool PendingFile::open() {
    const std::string folder = folderOf(destination_);
    file_ = Descriptor(::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, kPrivate));
    if (file_ || (errno != EOPNOTSUPP && errno != EISDIR)) {
        return static_cast<bool>(file_);
    }
    sweepLitter(folder);
    std::string name = folder + kLitterPrefix + "XXXXXX";
    file_ = Descriptor(mkostemp(name.data(), O_CLOEXEC));  // made with 0600
    if (file_) {
        name_ = name;
        claimLitter(file_.get());
    }
    return static_cast<bool>(file_);
}

bool PendingFile::write(std::string_view bytes) {
    if (error_ == 0 && !writeAll(file_.get(), bytes)) {
        error_ = errno;
    }
    return error_ == 0;
}

/// Gives a nameless file a name beside its destination, or its destination's own where nothing is there.
bool PendingFile::linkAside() {
    const std::string self = "/proc/self/fd/" + std::to_string(file_.get());
    const auto link = [&](const std::string& name) {
        return linkat(AT_FDCWD, self.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
    };
    if (link(destination_)) {
        return true;
    }
    if (errno != EEXIST) {
        return false;
    }
    sweepLitter(folderOf(destination_));
    errno = EEXIST;
    const std::string first = folderOf(destination_) + kLitterPrefix + std::to_string(getpid()) + "-";
    for (int number = 0; errno == EEXIST; ++number) {
        if (const std::string name = first + std::to_string(number); link(name)) {
            name_ = name;
            return true;
        }
    }
    return false;
}

bool PendingFile::commit() {
    if (error_ != 0) {
        return false;
    }
    if (fchmod(file_.get(), rights_) != 0 || fsync(file_.get()) != 0 || (name_.empty() && !linkAside()) ||
        (!name_.empty() && std::rename(name_.c_str(), destination_.c_str()) != 0)) {
        error_ = errno;
        return false;
    }
    name_.clear();
    // The file is replaced. If this fails, a crash may still bring the old one back, as a whole.
    if (const Descriptor folder(::open(folderOf(destination_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)); folder) {
        fsync(folder.get());
    }
    return true;
}

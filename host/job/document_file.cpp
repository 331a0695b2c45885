#include "host/job/document_file.h"

#include "platform/files/plain_file.h"
#include "platform/files/temporary_files.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// None when there is no room for it: the document is then read where it is.
Descriptor copyOf(int file, std::int64_t size) {
    Descriptor copy = makeTemporaryFile();
    off_t at = 0;
    while (copy && at < size) {
        // The kernel does it, and by a shared copy where the file system has that.
        off_t next = at;
        ssize_t count = copy_file_range(file, &next, copy.get(), nullptr, static_cast<std::size_t>(size - at), 0);
        if (count < 0) {
            count = sendfile(copy.get(), file, &next, static_cast<std::size_t>(size - at));
        }
        if (count <= 0 && !(count < 0 && errno == EINTR)) {
            return {};
        }
        at = count > 0 ? next : at;
    }
    return copy;
}

std::string pathOfDescriptor(int file) {
    return "/proc/self/fd/" + std::to_string(file);
}

}  // namespace

std::shared_ptr<DocumentFile> DocumentFile::open(const std::string& path) {
    Descriptor original = openPlainFile(path, INT64_MAX);  // only what is needed of it is read
    if (!original) {
        return nullptr;
    }
    auto opened = std::make_shared<DocumentFile>();
    opened->name_ = path;
    opened->original_ = std::move(original);
    opened->stamp_ = opened->stampNow();
    return opened;
}

void DocumentFile::beginCopy(std::int64_t mostCopied) {
    if (stamp_ && stamp_->size <= mostCopied) {
        copying_ = std::async(std::launch::async, copyOf, original(), stamp_->size);
    }
}

bool DocumentFile::settle() {
    if (copying_.valid()) {
        copy_ = copying_.get();
    }
    return stampNow() == stamp_;
}

std::string DocumentFile::path() const {
    return pathOfDescriptor(copy_ ? copy_.get() : original());
}

bool DocumentFile::isIntact() const {
    return copy_ || stampNow() == stamp_;
}

bool DocumentFile::isOutdated() const {
    return !name_.empty() && stampOf(name_) != stamp_;
}

std::optional<FileStamp> DocumentFile::stampNow() const {
    return original_ ? stampOf(pathOfDescriptor(original())) : std::nullopt;
}

#include "platform/printing/pending_file.h"

#include "platform/printing/last_error.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

PendingFile::PendingFile(const std::string& destination) : destination_(destination) {
    std::error_code error;
    if (std::filesystem::exists(destination_, error)) {
        destination_ = std::filesystem::canonical(destination_, error);
        if (!error && !std::filesystem::is_regular_file(destination_, error)) {
            // Renaming would put a file in the place of /dev/null.
            reason_ = "is there and is not a file";
        }
    }
    if (error) {
        reason_ = error.message();
    }
    if (!reason_.empty()) {
        return;
    }
    path_ = destination_ + ".XXXXXX";
    file_ = mkostemp(path_.data(), O_CLOEXEC);
    if (file_ < 0) {
        reason_ = systemReason(errno);
        path_.clear();
    }
}

PendingFile::~PendingFile() {
    if (file_ >= 0) {
        close(file_);
    }
    if (!path_.empty()) {
        unlink(path_.c_str());
    }
}

bool PendingFile::commit() {
    if (fsync(file_) != 0 || std::rename(path_.c_str(), destination_.c_str()) != 0) {
        reason_ = systemReason(errno);
        return false;
    }
    path_.clear();
    const std::string folder = std::filesystem::absolute(destination_).parent_path();
    if (const int entry = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); entry >= 0) {
        fsync(entry);
        close(entry);
    }
    return true;
}

#include "platform/files/litter.h"

#include "platform/files/descriptor.h"

#include <ctime>
#include <filesystem>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;

constexpr std::time_t kSecondsToClaim = 60;

bool isLeft(const fs::path& path) {
    const Descriptor file(open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    return file && fstat(file.get(), &status) == 0 && status.st_uid == getuid() &&
           status.st_mtime + kSecondsToClaim < std::time(nullptr) && flock(file.get(), LOCK_EX | LOCK_NB) == 0;
}

}  // namespace

void claimLitter(int file) {
    flock(file, LOCK_EX | LOCK_NB);
}

void sweepLitter(const std::string& folder) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (entry->path().filename().string().starts_with(kLitterPrefix) && isLeft(entry->path())) {
            std::error_code ignored;
            fs::remove_all(entry->path(), ignored);
        }
    }
}

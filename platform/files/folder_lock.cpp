#include "platform/files/folder_lock.h"

#include <cerrno>
#include <chrono>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

bool waitForLock(int descriptor) {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::seconds(10);
    while (flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        const bool isTaken = errno == EWOULDBLOCK || errno == EINTR;
        if (!isTaken) {
            return true;  // nothing to lock with, as on some network file systems
        }
        if (Clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

}  // namespace

FolderLock::FolderLock(const std::string& folder)
    : descriptor_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)),
      isOurs_(descriptor_ >= 0 && waitForLock(descriptor_)) {}

FolderLock::~FolderLock() {
    if (descriptor_ >= 0) {
        close(descriptor_);
    }
}

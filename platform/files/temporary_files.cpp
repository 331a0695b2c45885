#include "platform/files/temporary_files.h"

#include "platform/files/litter.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>

#include <fcntl.h>

std::string temporaryFolder() {
    const char* const folder = std::getenv("TMPDIR");
    return folder == nullptr || *folder == '\0' ? "/tmp" : folder;
}

void sweepTemporaryFolder() {
    sweepLitter(temporaryFolder());
}

Descriptor makeTemporaryFile() {
    Descriptor file(open(temporaryFolder().c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!file && (errno == EOPNOTSUPP || errno == EISDIR)) {
        std::string name = temporaryFolder() + "/" + kLitterPrefix + "XXXXXX";
        file = Descriptor(mkostemp(name.data(), O_CLOEXEC));  // 0600
        if (file) {
            unlink(name.c_str());
        }
    }
    return file;
}

std::string runtimeFolder() {
    const char* const folder = std::getenv("XDG_RUNTIME_DIR");
    return folder == nullptr || *folder != '/' ? temporaryFolder() : folder;
}

void sweepRuntimeFolder() {
    sweepLitter(runtimeFolder());
}

WorkFolder::WorkFolder(const std::string& parent) {
    std::string name = parent + "/" + kLitterPrefix + "XXXXXX";
    if (mkdtemp(name.data()) == nullptr) {  // 0700
        error_ = errno;
        return;
    }
    path_ = name;
    folder_ = Descriptor(open(path_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    claimLitter(folder_.get());
}

WorkFolder::~WorkFolder() {
    if (!path_.empty()) {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
}

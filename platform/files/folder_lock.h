// One process at a time between reading a file and replacing it.
#pragma once

#include <string>

/// Holds a folder's lock (flock) while it lives. The kernel gives it up when the process ends, however it ends, and
/// there is no file that could stay behind.
class FolderLock {
public:
    /// Waits ten seconds for another process at most.
    explicit FolderLock(const std::string& folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

    /// Whether the folder is ours: locked, or on a file system that has no locks. Else errno said why when it was made.
    explicit operator bool() const { return isOurs_; }

private:
    int descriptor_;
    bool isOurs_;
};

// A large file on its way: written beside its destination, then put in its place whole.
#pragma once

#include <string>

/// A new file, private to the user, in the destination's folder. It takes the destination's place with commit();
/// without it, it goes with the object and the destination stays as it was.
class PendingFile {
public:
    /// A symbolic link keeps pointing at the file that is replaced. Check isOpen(); reason() says why not.
    explicit PendingFile(const std::string& destination);
    ~PendingFile();
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;

    [[nodiscard]] bool isOpen() const { return file_ >= 0; }
    [[nodiscard]] int descriptor() const { return file_; }
    /// Where the file is while it is pending.
    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] const std::string& reason() const { return reason_; }

    /// Syncs the file to disk and renames it. False, with reason(), when that fails.
    bool commit();

private:
    std::string destination_;
    std::string path_;
    std::string reason_;
    int file_ = -1;
};

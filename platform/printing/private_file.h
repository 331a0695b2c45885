// A file without a name: what must be in a file, but in none that others could find.
#pragma once

#include <string>
#include <string_view>

/// A new file of the user's own in the folder for temporary files, which loses its name at once: nothing is left of it
/// when the program ends, in whatever way.
class PrivateFile {
public:
    /// Check isOpen(); reason() says why not.
    PrivateFile();
    ~PrivateFile();
    PrivateFile(const PrivateFile&) = delete;
    PrivateFile& operator=(const PrivateFile&) = delete;

    [[nodiscard]] bool isOpen() const { return file_ >= 0; }
    [[nodiscard]] int descriptor() const { return file_; }
    /// Where this program and those that it starts can open the file, as long as the object lives; nobody else can.
    [[nodiscard]] std::string path() const;
    [[nodiscard]] const std::string& reason() const { return reason_; }

    [[nodiscard]] bool hasSameContent(const PrivateFile& other) const;

    /// Appends the bytes. False, with reason(), when that fails.
    bool write(std::string_view bytes);

private:
    std::string reason_;
    int file_ = -1;
};

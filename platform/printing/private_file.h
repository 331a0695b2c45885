// A file without a name: what must be in a file, but in none that others could find.
#pragma once

#include "platform/files/byte_sink.h"
#include "platform/files/descriptor.h"

#include <string>
#include <string_view>

/// A new file of the user's own without a name: nothing is left of it when the program ends, in whatever way.
class PrivateFile : public ByteSink {
public:
    enum class Place {
        disk,    // in the folder for temporary files
        memory,  // for what is small, or must not come onto a disk
    };
    explicit PrivateFile(Place place = Place::disk);

    /// Why it cannot be made or written (errno.h); 0 as long as all went well.
    [[nodiscard]] int error() const { return error_; }
    [[nodiscard]] int descriptor() const { return file_.get(); }
    /// Where this program can open the file, as long as the object lives; nobody else can.
    [[nodiscard]] std::string path() const;

    [[nodiscard]] bool hasSameContent(const PrivateFile& other) const;

    bool write(std::string_view bytes) override;

private:
    Descriptor file_;
    int error_ = 0;
};

/// Whether the file was made and written. Else the last error names the folder and the reason.
bool isKept(const PrivateFile& file);

// A file on its way: written without a name, then put in its place whole.
#pragma once

#include "platform/files/byte_sink.h"
#include "platform/files/descriptor.h"

#include <string>

#include <sys/types.h>

/// A new file, private to the user, in its destination's folder. Without commit() it goes with the object or with the
/// program, however that ends, and the destination stays as it was. Only where a file system has no nameless files it
/// has a name (".tavro-…") meanwhile: what killed programs leave there, the next one takes away.
class PendingFile : public ByteSink {
public:
    /// A symbolic link keeps pointing at the file that is replaced, also where there is none yet; the rights of an
    /// existing file are kept as far as they are the user's. See error().
    explicit PendingFile(const std::string& destination);
    ~PendingFile() override;

    /// Why it cannot be made, written or put in its place (errno.h): EISDIR for a folder, EINVAL for what is no plain
    /// file; 0 as long as all went well.
    [[nodiscard]] int error() const { return error_; }

    bool write(std::string_view bytes) override;

    /// Syncs the file to disk and puts it in its place. False, with error(), when that or something before has failed.
    bool commit();

private:
    bool open();
    bool linkAside();

    std::string destination_;
    std::string name_;  // while it has one
    mode_t rights_ = 0;
    Descriptor file_;
    int error_ = 0;
};

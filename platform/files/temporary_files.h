// Files for a while only, in the folder that the user's settings name ($TMPDIR, else /tmp).
#pragma once

#include "platform/files/descriptor.h"

#include <string>

std::string temporaryFolder();

/// Takes away what programs that were killed have left there.
void sweepTemporaryFolder();

/// An open file there without a name, private to the user: nothing is left of it when the program ends, in whatever
/// way. None, with errno, when it cannot be made.
Descriptor makeTemporaryFile();

/// Where programs of a session meet ($XDG_RUNTIME_DIR): private to the user and gone when they log out. Without one,
/// the folder for temporary files.
std::string runtimeFolder();

/// Takes away what programs that were killed have left there.
void sweepRuntimeFolder();

/// A folder there, or in another one, private to the user, for programs that are started and take one. It goes with the
/// object, with all that is in it; when the program is killed, the next one takes it away (sweepTemporaryFolder).
class WorkFolder {
public:
    explicit WorkFolder(const std::string& parent = temporaryFolder());
    ~WorkFolder();
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    /// Empty, with errno of the moment in error(), when there is none.
    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] int error() const { return error_; }

private:
    std::string path_;
    Descriptor folder_;
    int error_ = 0;
};

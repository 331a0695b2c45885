#include "driver/proof/interpreter.h"

#include "platform/foundation/message.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// Tells of each wish for the page device and of each page. Only what changes how a page is drawn reaches the device,
// which is none that could staple.
constexpr std::string_view kTelling = R"(%!PS
userdict begin
/TavroOut TavroPlace(w)file def
/TavroSay{TavroOut exch writestring}bind def
/TavroTell{
dup type/arraytype eq{{TavroTell( )TavroSay}forall}{
dup type/dicttype eq{{exch TavroTell(=)TavroSay TavroTell(\t)TavroSay}forall}{
dup type/stringtype eq{TavroSay}{256 string cvs TavroSay}ifelse}ifelse}ifelse}bind def
/TavroKnown[/PageSize/BeginPage/EndPage/Install/ImagingBBox]def
/TavroSetPageDevice systemdict/setpagedevice get def
/setpagedevice{
dup{exch(\n%TavroSet )TavroSay TavroTell( )TavroSay
dup xcheck{pop(procedure)TavroSay}{TavroTell}ifelse(\n)TavroSay}forall
TavroOut flushfile
10 dict begin TavroKnown{2 copy known{1 index 1 index get def}{pop}ifelse}forall pop currentdict end
dup length 0 eq{pop}{TavroSetPageDevice}ifelse}bind def
/TavroTones{[currentcolortransfer]{userdict/TavroCurve 3 -1 roll put
[.25 .5 .75]{( )TavroSay userdict/TavroCurve get exec 100 mul round cvi TavroTell}forall}forall}bind def
/showpage{(\n%TavroPage)TavroSay TavroTones(\n)TavroSay TavroOut flushfile systemdict/showpage get exec}bind def
end
)";

/// A file in memory with a content, for another process to read.
class MemoryFile {
public:
    explicit MemoryFile(std::string_view content) : descriptor_(memfd_create("tavro-proof", MFD_CLOEXEC)) {
        while (!content.empty()) {
            const ssize_t count = write(descriptor_, content.data(), content.size());
            if (count <= 0 && errno != EINTR) {
                break;
            }
            content.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        }
        isWhole_ = content.empty();
    }
    ~MemoryFile() {
        if (descriptor_ >= 0) {
            close(descriptor_);
        }
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    [[nodiscard]] bool isWhole() const { return isWhole_; }
    [[nodiscard]] std::string content() const {
        std::string all;
        char block[65536];
        for (ssize_t count = 1; count > 0; all.append(block, static_cast<std::size_t>(std::max<ssize_t>(count, 0)))) {
            count = pread(descriptor_, block, sizeof block, static_cast<off_t>(all.size()));
        }
        return all;
    }
    [[nodiscard]] std::int64_t size() const {
        struct stat status {};
        return fstat(descriptor_, &status) == 0 ? status.st_size : 0;
    }
    [[nodiscard]] int descriptor() const { return descriptor_; }

private:
    int descriptor_;
    bool isWhole_ = false;
};

/// Waits for a process that writes to the file. False when it had to be ended, because it goes on for ever.
bool waitFor(pid_t child, const MemoryFile& output, int patience) {
    constexpr std::int64_t kMost = std::int64_t(1) << 29;
    // Debian 12 declares pidfd_open() for C only.
    const int process = static_cast<int>(syscall(SYS_pidfd_open, child, 0));
    std::int64_t size = 0;
    int silence = 0;
    while (silence < patience && size < kMost) {
        pollfd end{process, POLLIN, 0};
        if (poll(&end, 1, 1000) > 0) {
            break;
        }
        silence = output.size() == size ? silence + 1 : 0;
        size = output.size();
    }
    close(process);
    const bool isEndless = silence >= patience || size >= kMost;
    if (isEndless) {
        kill(child, SIGKILL);
    }
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
    return !isEndless;
}

/// What Ghostscript says on both its outputs; nothing, with the reason, when it does not run or come to an end.
/// It tells where the device does, so that all stands in its order.
std::optional<std::string> runGhostscript(const char* device, const char* place, const MemoryFile& telling,
                                          const MemoryFile& job, int patience, std::string* reason) {
    const MemoryFile output("");
    const std::string deviceOption = std::string("-sDEVICE=") + device;
    const std::string placeOption = std::string("-sTavroPlace=%") + place;
    const std::array words{"gs",
                           "-q",
                           "-dNOPAUSE",
                           "-dBATCH",
                           "-dSAFER",
                           "-r72",
                           deviceOption.c_str(),
                           placeOption.c_str(),
                           "-o",
                           "-",
                           "/dev/fd/3",
                           "/dev/fd/4",
                           static_cast<const char*>(nullptr)};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output.descriptor(), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output.descriptor(), STDERR_FILENO);
    posix_spawn_file_actions_adddup2(&actions, telling.descriptor(), 3);
    posix_spawn_file_actions_adddup2(&actions, job.descriptor(), 4);
    pid_t child = 0;
    const int error = posix_spawnp(&child, words[0], &actions, nullptr, const_cast<char**>(words.data()), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        *reason = messageText("Ghostscript (gs) cannot be started: %1", {systemMessage(error)});
        return std::nullopt;
    }
    if (!waitFor(child, output, patience)) {
        *reason = messageText("its PostScript does not come to an end");
        return std::nullopt;
    }
    return output.content();
}

}  // namespace

std::optional<std::vector<DeviceEvent>> interpret(const std::string& postScript, int patience, std::string* reason) {
    const MemoryFile telling(kTelling);
    const MemoryFile job(postScript);
    if (!telling.isWhole() || !job.isWhole()) {
        *reason = systemMessage(errno);
        return std::nullopt;
    }
    const auto drawn = runGhostscript("bbox", "stderr", telling, job, patience, reason);
    const auto read = drawn ? runGhostscript("txtwrite", "stdout", telling, job, patience, reason) : std::nullopt;
    if (!read) {
        return std::nullopt;
    }
    return readDeviceEvents(*drawn, *read);
}

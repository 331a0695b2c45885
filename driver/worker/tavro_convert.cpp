// tavro-convert: makes a PDF of the document on its standard input, on its standard output.
//
// usage: tavro-convert SECONDS MEGABYTES WIDTH HEIGHT NAME <DOCUMENT >PDF: what it may take of time, how large document
// and PDF may be, the paper in points, and what the document is called
//
// Why there is no PDF stands in a line on its standard error, "refused REASON". The document may come through a pipe.
// The programs that do the work read what strangers made: when this one is asked to end, or has lost the one that
// started it, they end with it.

#include "driver/worker/conversion_plan.h"
#include "driver/worker/worker_limits.h"
#include "platform/files/byte_sink.h"
#include "platform/files/temporary_files.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/message.h"
#include "platform/foundation/text.h"
#include "platform/printing/PMPrinter.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>

namespace {

using namespace std::chrono_literals;

struct Refusal {
    std::string reason;
};

std::string cannotKeep(int error) {
    return messageText("cannot be kept in %1: %2", {temporaryFolder(), systemMessage(error)});
}

/// The PDF on its way out: nothing but a PDF, and no more than there is room for.
class PDFOutput : public ByteSink {
public:
    explicit PDFOutput(std::uint64_t room) : room_(room) {}

    bool write(std::string_view bytes) override {
        beginning_ += bytes.substr(0, kMark.size() - beginning_.size());
        if (!kMark.starts_with(beginning_) && !beginning_.starts_with(kMark)) {
            return false;
        }
        if (bytes.size() > room_) {
            isTooLarge_ = true;
            return false;
        }
        room_ -= bytes.size();
        const bool isWritten = writeAll(STDOUT_FILENO, bytes);
        error_ = isWritten ? 0 : errno;
        return isWritten;
    }
    [[nodiscard]] bool isPDF() const { return beginning_ == kMark; }
    [[nodiscard]] bool isTooLarge() const { return isTooLarge_; }
    [[nodiscard]] int error() const { return error_; }

private:
    static constexpr std::string_view kMark = "%PDF-";
    std::uint64_t room_;
    std::string beginning_;
    bool isTooLarge_ = false;
    int error_ = 0;
};

class Conversion {
public:
    Conversion(int seconds, int megabytes, double width, double height, std::string name)
        : seconds_(seconds), megabytes_(megabytes), width_(width), height_(height), name_(std::move(name)) {}

    void run() {
        Descriptor kept;
        const int document = readable(&kept);
        const FileKind kind = kindOfFile(document, name_);
        const ConversionPlan plan = planConversion(kind);
        if (plan.way == ConversionPlan::Way::none) {
            throw Refusal{plan.reason};
        }
        if (kind.is("text/plain") && plan.way == ConversionPlan::Way::filters) {
            expectReadableText(document);
        }
        limitTime();
        PDFOutput output(roomInBytes());
        if (plan.way == ConversionPlan::Way::copy) {
            copy(document);
        } else if (OSStatus status = convert(plan, document, &output); status != noErr || !output.isPDF()) {
            throw Refusal{reasonOf(output, status)};
        }
    }

private:
    [[nodiscard]] std::uint64_t roomInBytes() const { return static_cast<std::uint64_t>(megabytes_) << 20; }
    [[nodiscard]] std::string tooLarge() const { return messageText("is larger than %1 MB", {megabytes_}); }

    /// The document's descriptor; what comes through a pipe is kept in a file without a name.
    int readable(Descriptor* kept) const {
        struct stat status {};
        if (fstat(STDIN_FILENO, &status) == 0 && S_ISREG(status.st_mode)) {
            return STDIN_FILENO;
        }
        *kept = makeTemporaryFile();
        std::uint64_t room = roomInBytes();
        std::array<char, 65536> bytes;
        for (;;) {
            const ssize_t count = read(STDIN_FILENO, bytes.data(), bytes.size());
            if (count < 0 && errno == EINTR) {
                continue;
            }
            if (count < 0) {
                throw Refusal{messageText("cannot be read: %1", {systemMessage(errno)})};
            }
            if (static_cast<std::uint64_t>(count) > room) {
                throw Refusal{tooLarge()};
            }
            if (count == 0) {
                return kept->get();
            }
            room -= static_cast<std::uint64_t>(count);
            if (!*kept || !writeAll(kept->get(), {bytes.data(), static_cast<std::size_t>(count)})) {
                throw Refusal{cannotKeep(errno)};
            }
        }
    }

    /// The filter would print other signs in the place of what it cannot read, and leave out some.
    static void expectReadableText(int document) {
        struct stat status {};
        fstat(document, &status);
        const auto size = static_cast<std::size_t>(status.st_size);
        void* const text = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, document, 0);
        const auto string = text == MAP_FAILED ? nullptr
                                               : CFRef<CFStringRef>::adopt(CFStringCreateWithBytes(
                                                     nullptr, static_cast<const UInt8*>(text),
                                                     static_cast<CFIndex>(size), kCFStringEncodingUTF8, false));
        if (!string) {
            throw Refusal{messageText("is text in an encoding other than UTF-8; save it as UTF-8 to print it")};
        }
    }

    /// Ends what takes too long, again and again, since each program begins without knowing.
    void limitTime() {
        std::thread([this] {
            std::this_thread::sleep_for(std::chrono::seconds(seconds_));
            for (isLate_ = true;; std::this_thread::sleep_for(1s)) {
                PMCancelJob();
            }
        }).detach();
    }

    static void copy(int document) {
        std::array<char, 65536> bytes;
        off_t at = 0;
        for (;;) {
            const ssize_t count = pread(document, bytes.data(), bytes.size(), at);
            if (count == 0) {
                return;
            }
            if (count < 0 || !writeAll(STDOUT_FILENO, {bytes.data(), static_cast<std::size_t>(count)})) {
                throw Refusal{cannotKeep(errno)};
            }
            at += count;
        }
    }

    OSStatus convert(const ConversionPlan& plan, int document, PDFOutput* output) const {
        const auto name = makeFileURL(name_);
        const auto type = makeString(plan.type);
        if (plan.way == ConversionPlan::Way::filters) {
            return PMWritePDF(document, name.get(), type.get(), width_, height_, output);
        }
        std::error_code ignored;
        const auto filter = std::filesystem::read_symlink("/proc/self/exe", ignored).replace_filename("tavro-office");
        return PMWritePDFByProgram(document, name.get(), type.get(), makeString(filter.string()).get(),
                                   makeString(officeProgram()).get(), output);
    }

    [[nodiscard]] std::string reasonOf(const PDFOutput& output, OSStatus status) const {
        if (isLate_) {
            return messageText("takes longer than %1 seconds to prepare for printing", {seconds_});
        }
        if (output.isTooLarge()) {
            return messageText("becomes larger than %1 MB when it is prepared for printing", {megabytes_});
        }
        if (output.error() != 0) {
            return cannotKeep(output.error());
        }
        std::string reason = status == kPMFilterFailed ? utf8Text(PMGetLastErrorText()) : std::string();
        const std::string subject = errorLine(filePath(makeFileURL(name_).get()), "");
        reason.erase(0, reason.starts_with(subject) ? subject.size() : 0);
        reason.erase(0, reason.find_first_not_of(' '));
        return reason.empty() ? messageText("could not be prepared for printing; it may be damaged")
                              : messageText("could not be prepared for printing; it may be damaged (%1)", {reason});
    }

    int seconds_;
    int megabytes_;
    double width_;
    double height_;
    std::string name_;
    std::atomic<bool> isLate_ = false;
};

}  // namespace

int main(int argc, char** argv) {
    const auto number = [&](int index) { return argc == 6 ? std::strtol(argv[index], nullptr, 10) : 0; };
    if (number(1) < 1 || number(2) < 1 || number(3) < 1 || number(4) < 1) {
        std::fputs("usage: tavro-convert SECONDS MEGABYTES WIDTH HEIGHT NAME <DOCUMENT >PDF\n", stderr);
        return 2;
    }
    if (!endWithStarter(SIGTERM, STDERR_FILENO)) {
        return EXIT_FAILURE;
    }
    setMessageWriter(packMessage);
    std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow is a fault like others
    int status = EXIT_SUCCESS;
    try {
        Conversion conversion(static_cast<int>(number(1)), static_cast<int>(number(2)), static_cast<double>(number(3)),
                              static_cast<double>(number(4)), argv[5]);
        conversion.run();
    } catch (const Refusal& refusal) {
        std::fputs(("refused " + refusal.reason + "\n").c_str(), stderr);
        status = EXIT_FAILURE;
    } catch (const std::exception& error) {
        std::fputs(("refused " + messageText("cannot be prepared for printing: %1", {error.what()}) + "\n").c_str(),
                   stderr);
        status = EXIT_FAILURE;
    }
    _exit(status);
}

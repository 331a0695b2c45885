// tavro-pictures: draws pages of the documents that it is given over the socket that is its standard output.
//
// usage: tavro-pictures SECONDS MEGABYTES: what it may take of the processor for a page, and of memory
//
// It may read files, since it needs fonts, but write none.

#include "driver/worker/drawing_messages.h"
#include "driver/worker/worker_limits.h"

#include <poll.h>
#include <unistd.h>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <new>
#include <string>

namespace {

using Kind = DrawingQuestion::Kind;
using Result = DrawingAnswer::Result;

/// More than a set of fonts needs at a time.
constexpr int kOpenFiles = 256;

bool answer(Result result, const Pixels& picture = {}) {
    const DrawingAnswer said{result, static_cast<std::uint32_t>(picture.byteCount())};
    return sendAll(STDOUT_FILENO, &said, sizeof said) &&
           sendAll(STDOUT_FILENO, picture.values.data(), picture.byteCount());
}

/// A library that is told of its lack of memory might go on with less of the page.
void endWithoutMemory() {
    answer(Result::noMemory);
    _exit(EXIT_SUCCESS);
}

bool isAskedAgain() {
    pollfd question{STDOUT_FILENO, POLLIN, 0};
    return poll(&question, 1, 0) > 0;
}

class Drawings {
public:
    explicit Drawings(int seconds) : seconds_(seconds) {}

    /// False when nobody listens any more.
    bool serve(const DrawingQuestion& question, Descriptor file) {
        limitProcessor(seconds_);
        switch (question.kind) {
            case Kind::open:
                return open(question, std::move(file));
            case Kind::close:
                documents_.erase(question.document);
                return answer(Result::opened);
            case Kind::draw:
                return draw(question);
            case Kind::stop:
                return true;  // what it was to stop is done
        }
        return false;
    }

private:
    struct Document {
        Descriptor file;
        std::unique_ptr<DocumentPictures> pictures;
    };

    bool open(const DrawingQuestion& question, Descriptor file) {
        std::string password(std::min(question.passwordSize, kLongestPassword), '\0');
        if (!receiveAll(STDOUT_FILENO, password.data(), password.size())) {
            return false;
        }
        DocumentFault fault = DocumentFault::none;
        auto pictures = DocumentPictures::open(file.get(), password, &fault);
        if (!pictures) {
            return answer(fault == DocumentFault::needsPassword ? Result::needsPassword : Result::damaged);
        }
        documents_[question.document] = {std::move(file), std::move(pictures)};
        return answer(Result::opened);
    }

    bool draw(const DrawingQuestion& question) {
        const auto found = documents_.find(question.document);
        if (found == documents_.end()) {
            return answer(Result::notDrawn);
        }
        bool isStopped = false;
        const auto picture = found->second.pictures->draw(
            question.view, [&isStopped] { return isStopped = isStopped || isAskedAgain(); });
        return picture ? answer(Result::drawn, *picture) : answer(isStopped ? Result::stopped : Result::notDrawn);
    }

    int seconds_;
    std::map<std::uint32_t, Document> documents_;
};

}  // namespace

int main(int argc, char** argv) {
    const long seconds = argc == 3 ? std::strtol(argv[1], nullptr, 10) : 0;
    const long megabytes = argc == 3 ? std::strtol(argv[2], nullptr, 10) : 0;
    if (seconds < 1 || megabytes < 1) {
        std::fputs("usage: tavro-pictures SECONDS MEGABYTES\n", stderr);
        return 2;
    }
    if (!endWithStarter()) {
        return EXIT_FAILURE;
    }
    limitWorker({static_cast<int>(megabytes), kOpenFiles});
    std::signal(SIGXFSZ, SIG_IGN);  // a library that would keep what it found about fonts goes on without
    std::set_new_handler(endWithoutMemory);
    Drawings drawings(static_cast<int>(seconds));
    DrawingQuestion question;
    Descriptor file;
    try {
        while (receiveQuestion(STDOUT_FILENO, &question, &file) && drawings.serve(question, std::move(file))) {
            file = Descriptor();
        }
    } catch (const std::bad_alloc&) {
        endWithoutMemory();
    }
    _exit(EXIT_SUCCESS);
}

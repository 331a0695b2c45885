// tavro-look: looks at the document on its standard input and reports its pages on its standard output.
//
// usage: tavro-look SECONDS MEGABYTES <DOCUMENT: what it may take of processor and memory
//
// A standard output that is a socket has the document's password for it, up to its end.
//
// It has only what it needs for that: a document that makes it do something else finds nothing to do it with.

#include "driver/worker/page_report.h"
#include "driver/worker/worker_limits.h"
#include "platform/foundation/message.h"

#include <sys/socket.h>
#include <unistd.h>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>

namespace {

std::string outOfMemory;

/// A library that is told of its lack of memory might go on with less of the document.
void endWithoutMemory() {
    [[maybe_unused]] const ssize_t ignored = write(STDOUT_FILENO, outOfMemory.data(), outOfMemory.size());
    _exit(EXIT_SUCCESS);
}

std::string passwordFromStarter() {
    std::string password;
    std::array<char, 4096> bytes;
    for (ssize_t count = 1; count > 0;) {
        count = recv(STDOUT_FILENO, bytes.data(), bytes.size(), 0);  // of a pipe there is nothing
        password.append(bytes.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return password;
}

}  // namespace

int main(int argc, char** argv) {
    const long seconds = argc == 3 ? std::strtol(argv[1], nullptr, 10) : 0;
    const long megabytes = argc == 3 ? std::strtol(argv[2], nullptr, 10) : 0;
    if (seconds < 1 || megabytes < 1) {
        std::fputs("usage: tavro-look SECONDS MEGABYTES <DOCUMENT\n", stderr);
        return 2;
    }
    if (!endWithStarter()) {
        return EXIT_FAILURE;
    }
    limitProcessor(static_cast<int>(seconds));
    limitWorker({static_cast<int>(megabytes), 0});
    setMessageWriter(packMessage);
    outOfMemory = "refused " + messageText("takes more than %1 MB of memory to look at", {megabytes}) + "\n";
    std::set_new_handler(endWithoutMemory);
    std::string reason;
    const auto pages = readDocument(STDIN_FILENO, &reason, passwordFromStarter());
    // What the library has read of a large document takes long to give back.
    _exit(writePageReport(pages, reason, stdout) ? EXIT_SUCCESS : EXIT_FAILURE);
}

#include "host/job/open_document.h"

#include "host/settings/document_paper.h"
#include "platform/files/plain_file.h"
#include "platform/foundation/message.h"
#include "platform/foundation/terminal_text.h"

#include <fcntl.h>
#include <unistd.h>
#include <cerrno>
#include <cstring>

namespace {

/// Nothing when there is no terminal.
std::optional<std::string> askOnTerminal(const std::string& prompt) {
    const Descriptor terminal(open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC));
    char* const typed = terminal ? getpass(terminalText(prompt).c_str()) : nullptr;  // else it would read the document
    if (typed == nullptr) {
        return std::nullopt;
    }
    std::string password = typed;
    explicit_bzero(typed, std::strlen(typed));
    return password;
}

}  // namespace

std::optional<Failure> findMissing(const std::vector<std::string>& paths) {
    for (const std::string& path : paths) {
        if (paths.size() > 1 && path != OpeningDocument::kStandardInput && !openPlainFile(path, INT64_MAX)) {
            return unusable(path, readFault(errno, INT64_MAX));
        }
    }
    return std::nullopt;
}

void prepareFor(const JobSetup& setup, OpeningDocument* document) {
    if (document->isToBePrepared()) {
        const PrintSession session(setup.printer, setup.settings, setup.installedOptions.get(), {});
        document->prepare(paperOf(session));
    }
}

Result<Document> openForJob(const JobSetup& setup, OpeningDocument* document) {
    prepareFor(setup, document);
    auto opened = document->finish();
    for (int tries = 0; document->isLocked() && tries < kMostPasswords; ++tries) {
        const auto password = askOnTerminal(messageText("Password of %1:", {document->document().name}) + " ");
        if (!password) {
            return Failure{ExitStatus::unusableInput,
                           messageText("%1, and there is no terminal to ask for it", {opened.failure().line})};
        }
        document->unlock(*password);
        opened = document->finish();
    }
    return opened;
}

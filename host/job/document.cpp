#include "host/job/document.h"

#include "host/settings/document_paper.h"
#include "platform/files/plain_file.h"
#include "platform/foundation/message.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <string_view>

#include <poll.h>
#include <unistd.h>

namespace {

/// Readers of PDFs take such a mark for the beginning, whatever is in front of it. What is called one and looks like
/// text is a broken one, such as a server's excuse for a document: nobody wants that printed.
bool isPDF(int file, const std::string& path) {
    std::array<char, 1024> bytes;
    const ssize_t count = pread(file, bytes.data(), bytes.size(), 0);
    const std::string_view beginning(bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    const bool isText = std::ranges::none_of(beginning, [](unsigned char c) { return c < '\b'; });
    return beginning.find("%PDF-") != std::string_view::npos || (path.ends_with(".pdf") && isText);
}

}  // namespace

void followDocument(PrintSession* session, const Document& document) {
    if (!document.pages.sizes.empty()) {
        followDocument(session, document.pages.sizes.front());
    }
}

OpeningDocument::OpeningDocument(const std::string& path, DocumentPrograms programs, const std::string& name)
    : programs_(std::move(programs)), isNamed_(name.empty()) {
    document_.name = name;
    if (path.empty()) {
        return;
    }
    document_.path = name;
    if (path == kStandardInput) {
        if (isNamed_) {
            document_.name = document_.path = messageText("Standard input");
        }
        file_ = std::make_shared<DocumentFile>();
        isToBePrepared_ = true;
        return;
    }
    if (isNamed_) {
        document_.name = readable(std::filesystem::path(path).filename().string());
        document_.path = path;
    }
    file_ = DocumentFile::open(path);
    if (!file_) {
        fail(readFault(errno, INT64_MAX));
    } else if (isPDF(file_->original(), path)) {
        file_->beginCopy();
        look();
    } else {
        isToBePrepared_ = true;
    }
}

void OpeningDocument::prepare(const Size& paper) {
    if (isToBePrepared_) {
        isToBePrepared_ = false;
        isPrepared_ = true;
        const bool isInFile = file_->original() >= 0;
        conversion_ = std::make_unique<DocumentConversion>(
            programs_.converter, isInFile ? file_->original() : STDIN_FILENO,
            isInFile && isNamed_ ? document_.name : std::string(), paper.width, paper.height);
    }
}

bool OpeningDocument::advance(std::chrono::milliseconds patience) {
    using Clock = std::chrono::steady_clock;
    const bool isPatient = patience.count() < 0;
    const Clock::time_point end = Clock::now() + patience;
    while (conversion_ || look_) {
        const auto rest = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
        pollfd waiting{conversion_ ? conversion_->descriptor() : look_->descriptor(), POLLIN, 0};
        const bool isFailed = waiting.fd < 0;
        const int count =
            isFailed ? 1 : poll(&waiting, 1, isPatient ? -1 : static_cast<int>(std::max<std::int64_t>(rest, 0)));
        if (count == 0) {
            return false;
        }
        if (count > 0) {
            conversion_ ? endConversion() : endLook();
        }
    }
    return !isToBePrepared_;
}

Result<Document> OpeningDocument::finish() {
    advance(std::chrono::milliseconds(-1));
    if (failure_) {
        return *failure_;
    }
    return document_;
}

void OpeningDocument::unlock(const std::string& password) {
    document_.password = password;
    isLocked_ = false;
    failure_.reset();
    look();
}

/// At what is printed, or, as long as that is copied, at what the copy is made of.
void OpeningDocument::look() {
    const Descriptor made = file_->isMade() ? openPlainFile(file_->path(), INT64_MAX) : Descriptor();
    look_ =
        std::make_unique<DocumentLook>(programs_.pageReader, made ? made.get() : file_->original(), document_.password);
}

void OpeningDocument::fail(const std::string& reason) {
    failure_ = Failure{ExitStatus::unusableInput, errorLine(document_.path, reason)};
}

void OpeningDocument::endConversion() {
    std::string reason;
    Descriptor made = conversion_->finish(&reason);
    conversion_.reset();
    if (!made) {
        fail(reason);
        return;
    }
    file_->use(std::move(made));
    look();
}

void OpeningDocument::endLook() {
    std::string reason;
    auto pages = look_->finish(&reason);
    look_.reset();
    if (!file_->settle()) {
        fail(messageText("is just being written to; print it when that is done"));
        return;
    }
    document_.file = file_;
    if (!pages) {
        isLocked_ = reason == reasonOfLock();
        fail(isLocked_ && !document_.password.empty() ? messageText("is protected by another password") : reason);
        return;
    }
    document_.pages = std::move(*pages);
    document_.pageCount = static_cast<std::int64_t>(document_.pages.sizes.size());
}

#include "host/job/document.h"

#include "host/script/text.h"
#include "host/settings/document_paper.h"
#include "platform/printing/text.h"

#include <filesystem>

void followDocument(PrintSession* session, const Document& document) {
    if (!document.pages.sizes.empty()) {
        followDocument(session, document.pages.sizes.front());
    }
}

OpeningDocument::OpeningDocument(const std::string& path, const std::string& pageReader) : path_(path) {
    if (!path.empty()) {
        look_.emplace(pageReader, path);
    }
}

Result<Document> OpeningDocument::finish() {
    if (!look_) {
        return Document{};
    }
    std::string reason;
    auto pages = look_->finish(&reason);
    if (!pages) {
        return Failure{ExitStatus::unusableInput, errorLine(path_, reason)};
    }
    const auto count = static_cast<std::int64_t>(pages->sizes.size());
    return Document{readable(std::filesystem::path(path_).filename().string()), path_, std::move(*pages), count};
}

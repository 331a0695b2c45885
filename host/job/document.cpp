#include "host/job/document.h"

#include "host/script/text.h"
#include "platform/printing/text.h"

#include <filesystem>

Result<Document> openDocument(const std::string& path) {
    if (path.empty()) {
        return Document{};
    }
    std::string reason;
    auto pages = readDocument(path, &reason);
    if (!pages) {
        return Failure{ExitStatus::unusableInput, errorLine(path, reason)};
    }
    const auto count = static_cast<std::int64_t>(pages->sizes.size());
    return Document{readable(std::filesystem::path(path).filename().string()), path, std::move(*pages), count};
}

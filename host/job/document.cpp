#include "host/job/document.h"

#include "host/script/text.h"
#include "platform/files/plain_file.h"
#include "platform/printing/text.h"

#include <cerrno>
#include <cstdint>
#include <filesystem>

Result<Document> openDocument(const std::string& path) {
    if (path.empty()) {
        return Document{};
    }
    const Descriptor file = openPlainFile(path, INT64_MAX);  // only what is needed of it is read
    std::string reason = file ? std::string() : readFault(errno, INT64_MAX);
    auto pages = file ? readDocument(file.get(), &reason) : std::nullopt;
    if (!pages) {
        return Failure{ExitStatus::unusableInput, errorLine(path, reason)};
    }
    const auto count = static_cast<std::int64_t>(pages->sizes.size());
    return Document{readable(std::filesystem::path(path).filename().string()), path, std::move(*pages), count};
}

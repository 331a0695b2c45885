#include "host/job/document.h"

#include "host/script/text.h"
#include "platform/printing/CGPDFDocument.h"

#include <filesystem>

Result<Document> openDocument(const std::string& path) {
    if (path.empty()) {
        return Document{};
    }
    Document document{readable(std::filesystem::path(path).filename().string()), fileURL(path), 0};
    CFStringRef error = nullptr;
    document.pageCount = CGPDFDocumentCountPages(document.url.get(), &error);
    const auto owner = CFRef<CFStringRef>::adopt(error);
    if (document.pageCount < 0) {
        return Failure{ExitStatus::unusableInput, utf8(error)};
    }
    return document;
}

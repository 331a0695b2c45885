#include "driver/pages/document.h"

#include "driver/pages/page_tree.h"
#include "driver/pages/pdf_page.h"
#include "platform/foundation/message.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <cerrno>
#include <stdexcept>
#include <system_error>
#include <unordered_map>

namespace {

/// A file's bytes. libqpdf goes to and fro in a document, which in a file costs a call of the system each time.
class MappedFile {
public:
    explicit MappedFile(int file) {
        struct stat status {};
        if (fstat(file, &status) != 0) {
            error_ = errno;
        } else if (status.st_size > 0) {
            void* const place =
                mmap(nullptr, static_cast<std::size_t>(status.st_size), PROT_READ, MAP_PRIVATE, file, 0);
            error_ = place == MAP_FAILED ? errno : 0;
            content_ = error_ == 0
                           ? std::string_view(static_cast<const char*>(place), static_cast<std::size_t>(status.st_size))
                           : std::string_view();
        }
    }
    ~MappedFile() {
        if (!content_.empty()) {
            munmap(const_cast<char*>(content_.data()), content_.size());
        }
    }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    [[nodiscard]] int error() const { return error_; }
    [[nodiscard]] std::string_view content() const { return content_; }

private:
    int error_ = 0;
    std::string_view content_;
};

/// Reads page after page and forgets it: what libqpdf has read of a page it would keep, a few kilobytes of each.
std::vector<Size> sizesOf(QPDF& pdf) {
    std::vector<Size> sizes;
    std::unordered_map<int, std::size_t> known;  // by their objects' numbers: a page may stand in the tree again
    walkPages(pdf, [&](QPDFObjectHandle page, InheritedValues& inherited) {
        const auto seen = page.isIndirect() ? known.find(page.getObjectID()) : known.end();
        const bool isKnown = seen != known.end();
        if (!isKnown && !page.isDictionary()) {
            return;
        }
        if (sizes.size() == static_cast<std::size_t>(kMostPlannedPages)) {
            throw std::runtime_error(messageText("has more than %1 pages", {kMostPlannedPages}));
        }
        if (isKnown) {
            sizes.push_back(sizes[seen->second]);
            return;
        }
        for (std::size_t i = 0; i < inherited.size(); ++i) {
            if (page.getKey(kInheritedKeys[i]).isNull()) {
                page.replaceKey(kInheritedKeys[i], inherited[i]);
            }
        }
        page.removeKey("/Parent");
        sizes.push_back(boxOf(page).size());
        if (page.isIndirect()) {
            known.emplace(page.getObjectID(), sizes.size() - 1);
            pdf.replaceObject(page.getObjGen(), QPDFObjectHandle::newNull());
        }
    });
    return sizes;
}

}  // namespace

std::optional<DocumentPages> readDocument(int file, std::string* reason, const std::string& password) {
    const MappedFile mapped(file);
    if (mapped.error() != 0) {
        *reason = messageText("cannot be read: %1", {systemMessage(mapped.error())});
        return std::nullopt;
    }
    const std::shared_ptr<QPDF> pdf = openPDF(
        [&](QPDF& opened) {
            opened.processMemoryFile("document", mapped.content().data(), mapped.content().size(), password.c_str());
        },
        reason);
    if (!pdf) {
        return std::nullopt;
    }
    try {
        DocumentPages pages{sizesOf(*pdf), pdf->anyWarnings()};
        if (pages.sizes.empty()) {
            *reason = messageText("has no pages");
            return std::nullopt;
        }
        return pages;
    } catch (const std::exception& error) {
        *reason = reasonOf(error);
        return std::nullopt;
    }
}

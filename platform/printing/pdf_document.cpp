#include "platform/printing/CGPDFDocument.h"

#include "platform/files/plain_file.h"
#include "platform/printing/last_error.h"
#include "platform/printing/text.h"

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFExc.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFPageObjectHelper.hh>

#include <cerrno>
#include <cstdint>
#include <vector>

namespace {

/// The number of pages; -1 with a reason.
CFIndex countPages(const std::string& path, std::string* reason) {
    if (!openPlainFile(path, INT64_MAX)) {  // only what is needed of it is read
        *reason = readFault(errno, INT64_MAX);
        return -1;
    }
    try {
        QPDF pdf;
        pdf.setSuppressWarnings(true);
        pdf.setAttemptRecovery(false);  // a repaired document may lack pages without a word
        pdf.processFile(path.c_str());
        if (!pdf.allowPrintLowRes()) {
            *reason = "is encrypted and does not allow printing";
            return -1;
        }
        const auto pages = static_cast<CFIndex>(pdf.getAllPages().size());
        if (pages == 0) {
            *reason = "has no pages";
            return -1;
        }
        return pages;
    } catch (const QPDFExc& error) {
        *reason = error.getErrorCode() == qpdf_e_password ? "is encrypted; it needs a password"
                  : error.getErrorCode() == qpdf_e_system ? "cannot be read: " + error.getMessageDetail()
                                                          : "is no PDF or is damaged: " + error.getMessageDetail();
    } catch (const std::exception& error) {
        *reason = std::string("cannot be read: ") + error.what();
    }
    return -1;
}

bool isLandscape(QPDFPageObjectHelper page) {
    QPDFObjectHandle box = page.getCropBox();
    if (!box.isRectangle()) {
        return false;
    }
    const QPDFObjectHandle::Rectangle sides = box.getArrayAsRectangle();
    QPDFObjectHandle rotate = page.getAttribute("/Rotate", false);
    const bool isTurned = rotate.isInteger() && rotate.getIntValue() % 180 != 0;
    return (sides.urx - sides.llx > sides.ury - sides.lly) != isTurned;
}

}  // namespace

CFIndex CGPDFDocumentCountPages(CFURLRef url, CFStringRef* error) {
    const std::string path = filePath(url);
    std::string reason;
    if (path.empty()) {
        reason = "not the address of a file";
    }
    const CFIndex pages = path.empty() ? -1 : countPages(path, &reason);
    if (pages < 0 && error != nullptr) {
        *error = makeString(errorLine(path, reason)).leak();
    }
    return pages;
}

CFDataRef CGPDFDocumentCopyLandscapePages(CFURLRef url) {
    try {
        QPDF pdf;
        pdf.setSuppressWarnings(true);
        pdf.processFile(filePath(url).c_str());
        std::vector<UInt8> landscape;
        for (const QPDFPageObjectHelper& page : QPDFPageDocumentHelper(pdf).getAllPages()) {
            landscape.push_back(isLandscape(page) ? 1 : 0);
        }
        return CFDataCreate(nullptr, landscape.data(), static_cast<CFIndex>(landscape.size()));
    } catch (const std::exception&) {
        return nullptr;
    }
}

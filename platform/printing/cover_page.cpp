#include "platform/printing/cover_page.h"

#include "platform/foundation/CFCollections.h"

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFExc.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFPageObjectHelper.hh>
#include <qpdf/QPDFWriter.hh>

bool writeWithCover(CFDataRef cover, int rotation, const std::string& document, const std::string& destination,
                    std::string* reason) {
    try {
        QPDF front;
        front.processMemoryFile("cover", reinterpret_cast<const char*>(CFDataGetBytePtr(cover)),
                                static_cast<std::size_t>(CFDataGetLength(cover)));
        QPDF pdf;
        pdf.setSuppressWarnings(true);
        pdf.processFile(document.c_str());
        // The page goes into the document, and not both into a third one, so that the document's forms stay whole.
        QPDFPageObjectHelper page = QPDFPageDocumentHelper(front).getAllPages().at(0);
        page.rotatePage(rotation, true);
        QPDFPageDocumentHelper(pdf).addPage(page, true);
        QPDFWriter writer(pdf, destination.c_str());
        writer.setPreserveEncryption(false);  // the filters have no password
        writer.write();
        return true;
    } catch (const QPDFExc& error) {
        *reason = error.getMessageDetail();
    } catch (const std::exception& error) {
        *reason = error.what();
    }
    return false;
}

std::string rangeWithCover(const std::string& range) {
    std::string behind = "1,";
    for (std::size_t at = 0; at < range.size();) {
        if (range[at] == '-' || range[at] == ',') {
            behind += range[at++];
            continue;
        }
        std::size_t digits = 0;
        behind += std::to_string(std::stoll(range.substr(at), &digits) + 1);
        at += digits;
    }
    return behind;
}

#include "driver/pages/document.h"

#include "driver/pages/pdf_page.h"

#include <qpdf/QPDFPageDocumentHelper.hh>

std::optional<DocumentPages> readDocument(const std::string& path, std::string* reason) {
    const std::shared_ptr<QPDF> pdf = openPDF(path, reason);
    if (!pdf) {
        return std::nullopt;
    }
    try {
        DocumentPages pages;
        for (const QPDFPageObjectHelper& page : QPDFPageDocumentHelper(*pdf).getAllPages()) {
            pages.sizes.push_back(boxOf(page).size());
        }
        pages.isRepaired = pdf->anyWarnings();
        if (pages.sizes.empty()) {
            *reason = "has no pages";
            return std::nullopt;
        }
        return pages;
    } catch (const std::exception& error) {
        *reason = reasonOf(error);
        return std::nullopt;
    }
}

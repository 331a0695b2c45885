// The sides of sheets as pages of a PDF.
#pragma once

#include "driver/pages/make_pages.h"
#include "driver/pages/pdf_page.h"

#include <vector>

/// Makes the pages of one document's sheets inside of that document, so that what they show is not copied.
class SheetSides {
public:
    SheetSides(QPDF& pdf, const PagesOrder& order);

    /// A side as a page, which belongs to no tree of pages yet.
    QPDFObjectHandle make(const Sheet& sheet, bool isSide2);

private:
    struct DocumentPage {
        QPDFPageObjectHelper page;
        PageBox box;
        QPDFObjectHandle form;  // null until it is drawn by one
        bool isUsed = false;    // as a page by itself
    };

    QPDFObjectHandle makePage(const Size& paper, const std::string& content, QPDFObjectHandle forms);
    QPDFObjectHandle formOf(DocumentPage* page);
    QPDFObjectHandle importForm(const std::string& pdf, Size* size);
    /// The document's page itself, when the side shows just that.
    std::optional<QPDFObjectHandle> asItIs(const std::vector<PlacedPage>& placed, const Size& paper);
    [[nodiscard]] bool isMarked(const PlacedPage& placed) const;

    QPDF& pdf_;
    const PagesOrder& order_;
    std::vector<DocumentPage> pages_;
    std::vector<Size> sizes_;
    QPDFObjectHandle mark_;
    QPDFObjectHandle faxCover_;
    Size faxCoverSize_;
    std::int32_t firstPage_ = kBlankCell;  // of the document that is printed
};

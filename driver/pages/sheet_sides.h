// The sides of sheets as pages of a PDF.
#pragma once

#include "driver/pages/make_pages.h"
#include "driver/pages/mark_drawing.h"
#include "driver/pages/page_background.h"

#include <map>
#include <utility>
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
    void makeForm(DocumentPage* page, QPDFObjectHandle form) const;
    QPDFObjectHandle importForm(const std::string& pdf, Size* size);
    /// A page and its mark, drawn in their order. The forms are those that the drawing names.
    std::string draw(const PlacedPage& placed, const std::string& name, QPDFObjectHandle* forms);
    QPDFObjectHandle markOf(MarkInk ink, double scale);
    /// A page that paints itself white, with the mark behind what follows.
    QPDFObjectHandle formWithMark(DocumentPage* page, const PageBackground& background, const Matrix& mark,
                                  QPDFObjectHandle markForm);
    /// The document's page itself, when the side shows just that.
    std::optional<QPDFObjectHandle> asItIs(const std::vector<PlacedPage>& placed, const Size& paper);
    [[nodiscard]] bool isMarked(const PlacedPage& placed) const;

    QPDF& pdf_;
    const PagesOrder& order_;
    std::vector<DocumentPage> pages_;
    std::vector<Size> sizes_;
    std::map<std::pair<MarkInk, long>, QPDFObjectHandle> marks_;  // by their ink and scale, in thousandths
    QPDFObjectHandle faxCover_;
    Size faxCoverSize_;
};

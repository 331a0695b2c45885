#include "driver/pages/sheet_sides.h"

#include <qpdf/QPDFAcroFormDocumentHelper.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace {

/// Boxes that say what of a page is shown, and how; the sides of sheets have the first only.
constexpr std::array kOtherBoxes{"/CropBox", "/BleedBox", "/TrimBox", "/ArtBox", "/Rotate", "/UserUnit"};

void append(std::string* content, double number) {
    std::array<char, 32> digits;
    const auto end = std::to_chars(digits.begin(), digits.end(), number, std::chars_format::fixed, 5);
    std::string_view text(digits.begin(), end.ptr);
    if (text.find('.') != std::string_view::npos) {
        text = text.substr(0, text.find_last_not_of('0') + 1);
        text = text.substr(0, text.find_last_not_of('.') + 1);
    }
    *content += text == "-0" ? "0" : text;
    *content += ' ';
}

void append(std::string* content, const Matrix& matrix) {
    for (const double number : {matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f}) {
        append(content, number);
    }
    *content += "cm\n";
}

/// A line inside of a page's edge, as thin on the paper whatever the page's scale is.
void appendOutline(std::string* content, const Matrix& matrix, const Size& page) {
    constexpr double kInset = 2;
    constexpr double kWidth = 0.5;
    const double unit = 1 / std::max(std::hypot(matrix.a, matrix.b), 0.001);
    *content += "q\n";
    append(content, matrix);
    *content += "0 G ";
    append(content, kWidth * unit);
    *content += "w ";
    for (const double number :
         {kInset * unit, kInset * unit, page.width - 2 * kInset * unit, page.height - 2 * kInset * unit}) {
        append(content, number);
    }
    *content += "re S\nQ\n";
}

bool isIdentity(const Matrix& matrix) {
    constexpr double kThousandth = 0.001;
    const Matrix none;
    return std::abs(matrix.a - none.a) < kThousandth && std::abs(matrix.b) < kThousandth &&
           std::abs(matrix.c) < kThousandth && std::abs(matrix.d - none.d) < kThousandth && std::abs(matrix.e) < 0.5 &&
           std::abs(matrix.f) < 0.5;
}

QPDFObjectHandle rectangle(double llx, double lly, double urx, double ury) {
    return QPDFObjectHandle::newFromRectangle(QPDFObjectHandle::Rectangle(llx, lly, urx, ury));
}

/// Fields and notes become part of their pages: a page that is drawn by another has none of its own. Links and the like
/// show nothing.
void flattenAnnotations(QPDF& pdf) {
    QPDFPageDocumentHelper document(pdf);
    QPDFAcroFormDocumentHelper forms(pdf);
    if (forms.hasAcroForm()) {
        forms.generateAppearancesIfNeeded();
    }
    document.flattenAnnotations(an_print, an_hidden);
}

bool hasAnnotations(QPDFPageObjectHelper page) {
    QPDFObjectHandle annotations = page.getObjectHandle().getKey("/Annots");
    return annotations.isArray() && annotations.getArrayNItems() > 0;
}

}  // namespace

SheetSides::SheetSides(QPDF& pdf, const PagesOrder& order) : pdf_(pdf), order_(order) {
    QPDFPageDocumentHelper document(pdf);
    document.pushInheritedAttributesToPage();
    std::vector<QPDFPageObjectHelper> pages = document.getAllPages();
    if (std::ranges::any_of(pages, hasAnnotations)) {
        flattenAnnotations(pdf);
        pages = document.getAllPages();
    }
    for (const QPDFPageObjectHelper& page : pages) {
        pages_.push_back({page, boxOf(page), QPDFObjectHandle::newNull(), false});
        sizes_.push_back(pages_.back().box.size());
    }
    for (const std::int32_t cell : order.plan->cells) {
        if (cell != kBlankCell && (firstPage_ == kBlankCell || cell < firstPage_)) {
            firstPage_ = cell;
        }
    }
    if (order.mark) {
        Size size;
        mark_ = importForm(order.mark->pdf, &size);
    }
    if (!order.faxCover.empty()) {
        faxCover_ = importForm(order.faxCover, &faxCoverSize_);
    }
}

QPDFObjectHandle SheetSides::make(const Sheet& sheet, bool isSide2) {
    const PaperShape& paper = order_.papers[sheet.paper];
    QPDFObjectHandle forms = QPDFObjectHandle::newDictionary();
    std::string content;
    if (sheet.kind == SheetKind::faxCover && !faxCover_.isNull()) {
        append(&content, placeWholePage(faxCoverSize_, order_.layout, paper));
        forms.replaceKey("/Page", faxCover_);
        return makePage(paper.size, content + "/Page Do\n", forms);
    }
    const std::vector<PlacedPage> placed = placePages(*order_.plan, sheet, isSide2, order_.layout, sizes_, paper);
    if (auto page = asItIs(placed, paper.size)) {
        return *page;
    }
    for (std::size_t i = 0; i < placed.size(); ++i) {
        const PlacedPage& one = placed[i];
        DocumentPage& page = pages_[static_cast<std::size_t>(one.page)];
        const std::string name = "/Page" + std::to_string(i);
        forms.replaceKey(name, formOf(&page));
        std::string drawing = "q\n";
        append(&drawing, page.box.toShown() * one.matrix);
        drawing += name + " Do\nQ\n";
        std::string mark;
        if (isMarked(one)) {
            forms.replaceKey("/Mark", mark_);
            mark = "q\n";
            append(&mark, one.mark);
            mark += "/Mark Do\nQ\n";
        }
        content += order_.mark && order_.mark->isBehind ? mark + drawing : drawing + mark;
        if (one.hasOutline) {
            appendOutline(&content, one.matrix, page.box.size());
        }
    }
    return makePage(paper.size, content, forms);
}

bool SheetSides::isMarked(const PlacedPage& placed) const {
    return order_.mark && (!order_.mark->isOnFirstPageOnly || placed.page == firstPage_);
}

std::optional<QPDFObjectHandle> SheetSides::asItIs(const std::vector<PlacedPage>& placed, const Size& paper) {
    if (placed.size() != 1 || placed[0].hasOutline || isMarked(placed[0])) {
        return std::nullopt;
    }
    DocumentPage& page = pages_[static_cast<std::size_t>(placed[0].page)];
    const Size size = page.box.size();
    if (!isIdentity(page.box.toShown() * placed[0].matrix) || std::abs(size.width - paper.width) > 0.5 ||
        std::abs(size.height - paper.height) > 0.5) {
        return std::nullopt;
    }
    QPDFObjectHandle object = page.page.getObjectHandle();
    // A page stands in the tree once.
    if (std::exchange(page.isUsed, true)) {
        object = pdf_.makeIndirectObject(object.shallowCopy());
    }
    object.replaceKey("/MediaBox", rectangle(0, 0, paper.width, paper.height));
    for (const char* const key : kOtherBoxes) {
        object.removeKey(key);
    }
    return object;
}

QPDFObjectHandle SheetSides::makePage(const Size& paper, const std::string& content, QPDFObjectHandle forms) {
    QPDFObjectHandle resources = QPDFObjectHandle::newDictionary();
    resources.replaceKey("/XObject", forms);
    QPDFObjectHandle page = QPDFObjectHandle::newDictionary();
    page.replaceKey("/Type", QPDFObjectHandle::newName("/Page"));
    page.replaceKey("/MediaBox", rectangle(0, 0, paper.width, paper.height));
    page.replaceKey("/Resources", resources);
    if (!content.empty()) {
        page.replaceKey("/Contents", QPDFObjectHandle::newStream(&pdf_, content));
    }
    return pdf_.makeIndirectObject(page);
}

QPDFObjectHandle SheetSides::formOf(DocumentPage* page) {
    if (page->form.isNull()) {
        QPDFObjectHandle object = page->page.getObjectHandle();
        QPDFObjectHandle contents = object.getKey("/Contents");
        // A single stream is shared as it stands in the file; several are put together.
        page->form = contents.isStream() ? contents.copyStream() : page->page.getFormXObjectForPage(false);
        QPDFObjectHandle form = page->form.getDict();
        const auto& box = page->box.box;
        form.replaceKey("/Type", QPDFObjectHandle::newName("/XObject"));
        form.replaceKey("/Subtype", QPDFObjectHandle::newName("/Form"));
        form.replaceKey("/BBox", rectangle(box.llx, box.lly, box.urx, box.ury));
        form.removeKey("/Matrix");
        form.replaceKey("/Resources", page->page.getAttribute("/Resources", false));
        if (object.hasKey("/Group")) {
            form.replaceKey("/Group", object.getKey("/Group"));
        }
    }
    return page->form;
}

QPDFObjectHandle SheetSides::importForm(const std::string& source, Size* size) {
    QPDF other;
    other.processMemoryFile("drawing", source.data(), source.size());
    // What is copied reads its streams from the other one until it is written.
    other.setImmediateCopyFrom(true);
    QPDFPageObjectHelper page = QPDFPageDocumentHelper(other).getAllPages().at(0);
    const PageBox box = boxOf(page);
    *size = box.size();
    return pdf_.copyForeignObject(page.getFormXObjectForPage(false));
}

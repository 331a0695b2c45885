#include "driver/pages/sheet_sides.h"

#include "driver/pages/page_tree.h"
#include "driver/pages/pdf_text.h"
#include "driver/pages/printed_view.h"
#include "platform/foundation/message.h"

#include <qpdf/Pl_Buffer.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace {

/// Boxes that say what of a page is shown, and how; the sides of sheets have the first only.
constexpr std::array kOtherBoxes{"/CropBox", "/BleedBox", "/TrimBox", "/ArtBox", "/Rotate", "/UserUnit"};

void appendOutline(std::string* content, const Matrix& matrix, const Size& page) {
    const PageOutline outline = outlineOf(matrix);
    *content += "q\n";
    append(content, matrix);
    *content += "0 G ";
    append(content, outline.thickness);
    *content += "w ";
    for (const double number :
         {outline.inset, outline.inset, page.width - 2 * outline.inset, page.height - 2 * outline.inset}) {
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

}  // namespace

SheetSides::SheetSides(QPDF& pdf, const PagesOrder& order) : pdf_(pdf), order_(order) {
    flattenPages(pdf);
    showAsPrinted(pdf);
    for (const QPDFPageObjectHelper& page : QPDFPageDocumentHelper(pdf).getAllPages()) {
        pages_.push_back({page, boxOf(page), QPDFObjectHandle::newNull(), false});
        sizes_.push_back(pages_.back().box.size());
    }
    for (const std::int32_t cell : order.plan->cells) {
        if (cell >= std::ssize(pages_)) {
            throw std::runtime_error(messageText("has other pages than when it was opened"));
        }
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
        content += draw(placed[i], "/Page" + std::to_string(i), &forms);
        if (placed[i].hasOutline) {
            appendOutline(&content, placed[i].matrix, sizes_[static_cast<std::size_t>(placed[i].page)]);
        }
    }
    return makePage(paper.size, content, forms);
}

std::string SheetSides::draw(const PlacedPage& placed, const std::string& name, QPDFObjectHandle* forms) {
    DocumentPage& page = pages_[static_cast<std::size_t>(placed.page)];
    const Matrix toSheet = page.box.toShown() * placed.matrix;
    const auto drawForm = [](const Matrix& matrix, const std::string& form) {
        std::string drawing = "q\n";
        append(&drawing, matrix);
        return drawing + form + " Do\nQ\n";
    };
    const std::string drawing = drawForm(toSheet, name);
    if (!isMarked(placed)) {
        forms->replaceKey(name, formOf(&page));
        return drawing;
    }
    const double scale = std::hypot(placed.mark.a, placed.mark.b);
    const PageBackground background =
        order_.mark->isBehind ? backgroundOf(page.page, page.box) : PageBackground{PageBackground::Place::inFront};
    if (background.place == PageBackground::Place::behindWhite) {
        const Matrix toContent = placed.mark * inverse(background.space * toSheet);
        forms->replaceKey(name, formWithMark(&page, background, toContent, markOf(MarkInk::opaque, scale)));
        return drawing;
    }
    const bool isBehind = background.place == PageBackground::Place::beforeContent;
    const std::string mark = name + "Mark";
    forms->replaceKey(name, formOf(&page));
    forms->replaceKey(mark, markOf(isBehind ? MarkInk::opaque : MarkInk::screened, scale));
    return isBehind ? drawForm(placed.mark, mark) + drawing : drawing + drawForm(placed.mark, mark);
}

QPDFObjectHandle SheetSides::markOf(MarkInk ink, double scale) {
    const long thousandths = std::max(std::lround(scale * 1000), 1L);
    const auto [known, isNew] = marks_.try_emplace({ink, thousandths});
    if (isNew) {
        std::string reason;
        const auto drawing = drawMark(order_.mark->mark, ink, static_cast<double>(thousandths) / 1000, &reason);
        if (!drawing) {
            throw std::runtime_error(messageText("the watermark cannot be drawn: %1", {reason}));
        }
        Size size;
        known->second = importForm(*drawing, &size);
    }
    return known->second;
}

bool SheetSides::isMarked(const PlacedPage& placed) const {
    return order_.mark && (!order_.mark->isOnFirstPageOnly || placed.page == order_.plan->firstPage);
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

void SheetSides::makeForm(DocumentPage* page, QPDFObjectHandle form) const {
    QPDFObjectHandle object = page->page.getObjectHandle();
    QPDFObjectHandle keys = form.getDict();
    const auto& box = page->box.box;
    keys.replaceKey("/Type", QPDFObjectHandle::newName("/XObject"));
    keys.replaceKey("/Subtype", QPDFObjectHandle::newName("/Form"));
    keys.replaceKey("/BBox", rectangle(box.llx, box.lly, box.urx, box.ury));
    keys.removeKey("/Matrix");
    keys.replaceKey("/Resources", page->page.getAttribute("/Resources", false));
    if (object.hasKey("/Group")) {
        keys.replaceKey("/Group", object.getKey("/Group"));
    }
}

QPDFObjectHandle SheetSides::formOf(DocumentPage* page) {
    if (page->form.isNull()) {
        QPDFObjectHandle contents = page->page.getObjectHandle().getKey("/Contents");
        // A single stream is shared as it stands in the file; several are put together.
        page->form = contents.isStream() ? contents.copyStream() : page->page.getFormXObjectForPage(false);
        makeForm(page, page->form);
    }
    return page->form;
}

QPDFObjectHandle SheetSides::formWithMark(DocumentPage* page, const PageBackground& background, const Matrix& mark,
                                          QPDFObjectHandle markForm) {
    Pl_Buffer buffer("content");
    page->page.pipeContents(&buffer);
    const std::shared_ptr<Buffer> bytes = buffer.getBufferSharedPointer();
    std::string content(reinterpret_cast<const char*>(bytes->getBuffer()), bytes->getSize());
    constexpr const char* kName = "/TavroMark";
    std::string drawing = "\nq\n";
    append(&drawing, mark);
    drawing += std::string(kName) + " Do\nQ\n";
    content.insert(std::min(background.end, content.size()), drawing);

    QPDFObjectHandle form = QPDFObjectHandle::newStream(&pdf_, content);
    makeForm(page, form);
    // The page's own resources are shared with other pages.
    QPDFObjectHandle resources = form.getDict().getKey("/Resources").shallowCopy();
    QPDFObjectHandle objects = resources.getKey("/XObject");
    objects = objects.isDictionary() ? objects.shallowCopy() : QPDFObjectHandle::newDictionary();
    objects.replaceKey(kName, markForm);
    resources.replaceKey("/XObject", objects);
    form.getDict().replaceKey("/Resources", resources);
    return form;
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

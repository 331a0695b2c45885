#include "driver/pages/pdf_page.h"

#include "platform/foundation/message.h"

#include <qpdf/QPDFExc.hh>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

using Rectangle = QPDFObjectHandle::Rectangle;

std::optional<Rectangle> rectangleOf(QPDFObjectHandle box) {
    if (!box.isRectangle()) {
        return std::nullopt;
    }
    const Rectangle sides = box.getArrayAsRectangle();
    const bool isSane = std::ranges::all_of(std::array{sides.llx, sides.lly, sides.urx, sides.ury},
                                            [](double side) { return std::isfinite(side); });
    const double width = sides.urx - sides.llx;
    const double height = sides.ury - sides.lly;
    return isSane && width >= 1 && height >= 1 && width <= kLongestSide && height <= kLongestSide ? std::optional(sides)
                                                                                                  : std::nullopt;
}

Rectangle shownPart(QPDFPageObjectHelper& page) {
    const Rectangle media = rectangleOf(page.getAttribute("/MediaBox", false))
                                .value_or(Rectangle(0, 0, kUsualPage.width, kUsualPage.height));
    const auto crop = rectangleOf(page.getAttribute("/CropBox", false));
    if (!crop) {
        return media;
    }
    const Rectangle both(std::max(media.llx, crop->llx), std::max(media.lly, crop->lly), std::min(media.urx, crop->urx),
                         std::min(media.ury, crop->ury));
    return both.urx - both.llx >= 1 && both.ury - both.lly >= 1 ? both : media;
}

}  // namespace

Size PageBox::size() const {
    const Size upright{(box.urx - box.llx) * unit, (box.ury - box.lly) * unit};
    return turns % 2 == 0 ? upright : Size{upright.height, upright.width};
}

Matrix PageBox::toShown() const {
    const double width = (box.urx - box.llx) * unit;
    const double height = (box.ury - box.lly) * unit;
    const Matrix upright{unit, 0, 0, unit, -box.llx * unit, -box.lly * unit};
    switch (turns) {
        case 1:
            return upright * Matrix{0, -1, 1, 0, 0, width};
        case 2:
            return upright * Matrix{-1, 0, 0, -1, width, height};
        case 3:
            return upright * Matrix{0, 1, -1, 0, height, 0};
        default:
            return upright;
    }
}

PageBox boxOf(QPDFPageObjectHelper page) {
    PageBox shown;
    shown.box = shownPart(page);
    QPDFObjectHandle unit = page.getObjectHandle().getKey("/UserUnit");
    if (unit.isNumber()) {
        const double points = unit.getNumericValue();
        const double longer = std::max(shown.box.urx - shown.box.llx, shown.box.ury - shown.box.lly);
        shown.unit = std::isfinite(points) && points > 0.001 && points * longer <= kLongestSide ? points : 1;
    }
    QPDFObjectHandle rotate = page.getAttribute("/Rotate", false);
    if (rotate.isInteger() && rotate.getIntValue() % 90 == 0) {
        shown.turns = static_cast<int>((rotate.getIntValue() / 90 % 4 + 4) % 4);
    }
    return shown;
}

std::string reasonOf(const std::exception& error) {
    const auto* const known = dynamic_cast<const QPDFExc*>(&error);
    if (known == nullptr) {
        return error.what();
    }
    switch (known->getErrorCode()) {
        case qpdf_e_password:
            return reasonOfLock();
        case qpdf_e_system:
            return messageText("cannot be read: %1", {known->getMessageDetail()});
        default:
            return messageText("is no PDF or is damaged: %1", {known->getMessageDetail()});
    }
}

std::shared_ptr<QPDF> openPDF(const std::function<void(QPDF&)>& read, std::string* reason) {
    try {
        auto pdf = std::make_shared<QPDF>();
        pdf->setSuppressWarnings(true);
        read(*pdf);
        if (!pdf->allowPrintLowRes() && !pdf->ownerPasswordMatched()) {
            *reason = messageText("is protected: whoever made it does not allow printing");
            return nullptr;
        }
        return pdf;
    } catch (const std::exception& error) {
        *reason = reasonOf(error);
        return nullptr;
    }
}

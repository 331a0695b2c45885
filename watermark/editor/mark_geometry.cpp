#include "watermark/editor/mark_geometry.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr PageSize kLetter{612, 792};

/// The vector, turned.
PagePoint Turned(PagePoint vector, double angle) {
    const double radians = angle * std::numbers::pi / 180;
    const double sine = std::sin(radians);
    const double cosine = std::cos(radians);
    return {vector.x * cosine - vector.y * sine, vector.x * sine + vector.y * cosine};
}

double OffsetOnAxis(double middle, double extent, double reach) {
    const double offset = std::clamp(middle, 0.0, extent) - extent / 2;
    return std::abs(offset) <= reach ? 0 : offset;
}

}  // namespace

PageSize PageOfRecord(const WatermarkRecord& record) {
    const bool known = record.paperExtentA > 0 && record.paperExtentB > 0 && std::isfinite(record.paperExtentA) &&
                       std::isfinite(record.paperExtentB);
    return known ? PageSize{record.paperExtentB, record.paperExtentA} : kLetter;
}

PagePoint MiddleOfMark(const WatermarkRecord& record, PageSize page) {
    return {page.width / 2 + record.xOffset, page.height / 2 + record.yOffset};
}

PagePoint CornerOfMark(PagePoint middle, PageSize box, double angle) {
    const PagePoint toMiddle = Turned({box.width / 2, box.height / 2}, angle);
    return {middle.x - toMiddle.x, middle.y - toMiddle.y};
}

void PlaceMark(WatermarkRecord* record, PageSize box) {
    const double scale = record->scale / 100.0;
    const PagePoint corner = CornerOfMark(MiddleOfMark(*record, PageOfRecord(*record)),
                                          {box.width * scale, box.height * scale}, record->angle);
    record->xPosition = corner.x;
    record->yPosition = corner.y;
}

PageView::PageView(PageSize page, double viewWidth, double viewHeight, double margin)
    : height_(page.height),
      scale_(std::max(0.001, std::min((viewWidth - 2 * margin) / page.width, (viewHeight - 2 * margin) / page.height))),
      left_((viewWidth - page.width * scale_) / 2),
      top_((viewHeight - page.height * scale_) / 2) {}

PagePoint PageView::toView(PagePoint point) const {
    return {left_ + point.x * scale_, top_ + (height_ - point.y) * scale_};
}

PagePoint PageView::toPage(PagePoint point) const {
    return {(point.x - left_) / scale_, height_ - (point.y - top_) / scale_};
}

bool IsOnMark(PagePoint point, PagePoint middle, PageSize box, double angle) {
    const PagePoint inside = Turned({point.x - middle.x, point.y - middle.y}, -angle);
    return std::abs(inside.x) <= box.width / 2 && std::abs(inside.y) <= box.height / 2;
}

PagePoint OffsetsAfterDrag(PagePoint middle, PageSize page, double reach) {
    return {OffsetOnAxis(middle.x, page.width, reach), OffsetOnAxis(middle.y, page.height, reach)};
}

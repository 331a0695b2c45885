#include "host/preview/page_sources.h"

#include "driver/pages/mark_drawing.h"
#include "driver/pages/page_mark.h"

std::shared_ptr<const DrawnDocument> drawnWatermark(const WatermarkInstruction& watermark, std::string* reason) {
    const auto mark = readPageMark(watermark, reason);
    if (!mark) {
        return nullptr;
    }
    const auto pdf = drawMark(mark->mark, MarkInk::opaque, 1, reason);
    return pdf ? DrawnDocument::keep(*pdf, reason) : nullptr;
}

PageWish wishFor(const PictureNeed& need, const PageSources& sources) {
    switch (need.what) {
        case PictureNeed::What::mark:
            return {sources.mark, need.view};
        case PictureNeed::What::faxCover:
            return {sources.faxCover, need.view};
        case PictureNeed::What::page:
            break;
    }
    return {sources.document, need.view};
}

PictureFinder picturesIn(const PageDrawer& drawer, const PageSources& sources) {
    return [&](const PictureNeed& need) { return drawer.find(wishFor(need, sources)); };
}

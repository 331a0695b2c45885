#include "driver/pages/page_mark.h"

#include "driver/pages/mark_drawing.h"

std::optional<PageMark> readPageMark(const WatermarkInstruction& watermark, std::string* reason) {
    auto mark = readStoredMark(MarkStore::watermarks, watermark.name, reason);
    if (mark && !mark->text.empty() && mark->font.empty()) {
        *reason = "its font " + mark->fontName + " is not stored";
        return std::nullopt;
    }
    if (!mark || !drawMark(*mark, MarkInk::screened, 1, reason)) {
        return std::nullopt;
    }
    return PageMark{std::move(*mark), watermark.isOnFirstPageOnly, watermark.isBehind};
}

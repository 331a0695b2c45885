#include "driver/pages/page_mark.h"

#include "driver/pages/mark_drawing.h"
#include "platform/foundation/message.h"

namespace {

std::optional<PageMark> placed(std::optional<StoredMark> mark, const WatermarkInstruction& watermark,
                               std::string* reason) {
    if (mark && !mark->text.empty() && mark->font.empty()) {
        *reason = messageText("its font %1 is not stored", {mark->fontName});
        return std::nullopt;
    }
    if (!mark || !drawMark(*mark, MarkInk::screened, 1, reason)) {
        return std::nullopt;
    }
    return PageMark{std::move(*mark), watermark.isOnFirstPageOnly, watermark.isBehind};
}

}  // namespace

std::optional<PageMark> readPageMark(const WatermarkInstruction& watermark, std::string* reason) {
    return placed(readStoredMark(MarkStore::watermarks, watermark.name, reason), watermark, reason);
}

std::optional<PageMark> readPageMark(const WatermarkInstruction& watermark, CFDictionaryRef travelled,
                                     std::string* reason) {
    return placed(readTravelledMark(travelled, watermark.name, reason), watermark, reason);
}

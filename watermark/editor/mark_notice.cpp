#include "watermark/editor/mark_notice.h"

#include "watermark/editor/editor_texts.h"

namespace {

MarkNotice NoticeOfPicture(const WatermarkRecord& record, bool hasPicture) {
    if (record.filePath[0] == '\0') {
        return {"Picture Missing", true};
    }
    return hasPicture ? MarkNotice() : MarkNotice{"Picture Unreadable", true};
}

MarkNotice NoticeOfText(const WatermarkRecord& record, const NamedFont& font) {
    if (QString::fromUtf8(record.text).trimmed().isEmpty()) {
        return {"Text Missing", true};
    }
    if (!font.face) {
        return {"Font Missing", true};
    }
    if (font.refusal != FontRefusal::none) {
        return {RefusalKey(font.refusal), true};
    }
    return font.face->postScriptName != record.fontName ? MarkNotice{"Font Stands In", false} : MarkNotice();
}

}  // namespace

MarkNotice NoticeOf(const WatermarkRecord& record, const NamedFont& font, bool hasPicture) {
    return record.kind == kImageWatermark ? NoticeOfPicture(record, hasPicture) : NoticeOfText(record, font);
}

// What the editor says about a watermark as it is.
#pragma once

#include "watermark/editor/mark_fonts.h"
#include "watermark/records/watermark_record.h"

struct MarkNotice {
    const char* key = nullptr;  // of the sentence; null when there is nothing to say
    bool isFault = false;       // the watermark cannot be used like that
};

/// The font is the one of the record's name; `hasPicture` says whether the record's picture could be read.
MarkNotice NoticeOf(const WatermarkRecord& record, const NamedFont& font, bool hasPicture);

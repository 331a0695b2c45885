#include "watermark/editor/mark_values.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

float Usable(float value, float least, float most) {
    return std::isfinite(value) ? std::clamp(value, least, most) : 0;
}

WatermarkColor Usable(const WatermarkColor& color) {
    return {Usable(color.red, 0, 1), Usable(color.green, 0, 1), Usable(color.blue, 0, 1), Usable(color.alpha, 0, 1)};
}

bool IsNew(const WatermarkRecord& record) {
    return record.kind == kImageWatermark && record.fileName[0] == '\0' && record.text[0] == '\0';
}

void SetValuesOfNew(WatermarkRecord* record) {
    record->kind = kTextWatermark;
    SetText(record->fontName, "ArialMT");
    record->fontSize = 72;
    record->angle = 45;
    record->density = 25;
    record->scale = 100;
    record->wellColor = {0, 0, 1, 1};
}

}  // namespace

WatermarkRecord StartOfEditing(const WatermarkRecord& record) {
    WatermarkRecord start = record;
    if (IsNew(record)) {
        SetValuesOfNew(&start);
    }
    start.angle %= 360;
    if (start.angle > 180 || start.angle <= -180) {
        start.angle += start.angle > 0 ? -360 : 360;
    }
    start.density = std::clamp(start.density, 0, 100);
    start.scale = std::clamp(start.scale, kSmallestScale, kLargestScale);
    start.fontSize = std::clamp(start.fontSize, kSmallestFont, kLargestFont);
    if (start.units < 0 || start.units >= static_cast<SInt32>(std::size(kOffsetUnits))) {
        start.units = 0;
    }
    start.xOffset = Usable(start.xOffset, -kFarthestOffset, kFarthestOffset);
    start.yOffset = Usable(start.yOffset, -kFarthestOffset, kFarthestOffset);
    start.wellColor = Usable(start.wellColor);
    start.fontColor = InkColor(start.wellColor, start.density);
    return start;
}

WatermarkColor InkColor(const WatermarkColor& chosen, SInt32 density) {
    const float ink = static_cast<float>(density) / 100;
    const auto thinned = [ink](float part) { return 1 - ink + part * ink; };
    return {thinned(chosen.red), thinned(chosen.green), thinned(chosen.blue), chosen.alpha};
}

WatermarkRecord EndOfEditing(WatermarkRecord record) {
    if (record.kind == kImageWatermark) {
        record.text[0] = '\0';
    } else {
        record.fileName[0] = '\0';
        record.filePath[0] = '\0';
    }
    return record;
}

#include "watermark/records/default_watermarks.h"

#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFString.h"
#include "watermark/records/watermark_storage.h"

#include <algorithm>
#include <iterator>

namespace {

struct DefaultWatermark {
    const char* textKey;
    double xPosition;
    double yPosition;
};

constexpr DefaultWatermark kDefaults[] = {
    // text key, x, y (points)
    {"DraftWatermark", 280.627441, 311.049927},
    {"ConfidentialWatermark", 201.350601, 231.773102},
    {"CopyWatermark", 276.36319, 306.785675},
};
static_assert(std::size(kDefaults) == 3);

/// What the three have in common.
WatermarkRecord CommonRecord() {
    WatermarkRecord record = {};
    record.kind = kTextWatermark;
    record.angle = 45;
    record.density = 25;
    record.scale = 100;
    std::ranges::copy("ArialMT", record.fontName);
    record.fontSize = 72;
    record.fontColor = {0.75F, 0.75F, 1.0F, 1.0F};
    record.wellColor = {0.0F, 0.0F, 1.0F, 1.0F};
    return record;
}

}  // namespace

void CreateDefaultWatermarks(CFBundleRef bundle) {
    const auto names = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
    WatermarkRecord record = CommonRecord();
    for (const DefaultWatermark& row : kDefaults) {
        const auto text = CFRef<CFStringRef>::adopt(
            CFBundleCopyLocalizedString(bundle, CFStringMakeConstant(row.textKey), CFSTR("STRING NOT FOUND"), nullptr));
        CFStringGetCString(text.get(), record.text, sizeof record.text, kCFStringEncodingUTF8);
        record.xPosition = row.xPosition;
        record.yPosition = row.yPosition;
        saveWatermarkData(kWatermarkStore, &record);
        CFArrayAppendValue(names.get(), text.get());
    }
    saveWatermarkList(kWatermarkStore, names.get());
}

#include "driver/pages/stored_mark.h"

#include "model/settings/preference_files.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"
#include "platform/foundation/message.h"
#include "platform/foundation/text.h"
#include "watermark/records/watermark_font.h"
#include "watermark/records/watermark_storage.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

/// What a record is without the keys that its dictionary lacks.
WatermarkRecord usualRecord() {
    WatermarkRecord record = {};
    record.fontColor = {0.75F, 0.75F, 0.75F, 1};
    record.fontSize = 72;
    record.density = 100;
    record.scale = 100;
    return record;
}

double within(double number, double least, double most) {
    return std::isfinite(number) ? std::clamp(number, least, most) : least;
}

/// The font's colour, laid on white by its alpha. The editor has taken the density into account: it lightens the colour
/// that the user chose, which the record keeps too, and stores the result as the font's.
MarkColor onWhite(const WatermarkColor& color) {
    const double alpha = within(color.alpha, 0, 1);
    const auto mixed = [alpha](float ink) { return 1 - alpha * (1 - within(ink, 0, 1)); };
    return {mixed(color.red), mixed(color.green), mixed(color.blue)};
}

std::string readFont(CFStringRef store, const char* name) {
    const auto data = CFRef<CFMutableDataRef>::adopt(CFDataCreateMutable(nullptr, 0));
    loadFontData(store, makeString(name).get(), data.get());
    return {reinterpret_cast<const char*>(CFDataGetBytePtr(data.get())),
            static_cast<std::size_t>(CFDataGetLength(data.get()))};
}

CFStringRef fileOf(MarkStore kept) {
    return kept == MarkStore::watermarks ? kWatermarkStore : kFaxImageStore;
}

/// Without its font.
StoredMark markOf(const WatermarkRecord& record) {
    constexpr double kFarthest = 5000;
    return StoredMark{record.kind == kImageWatermark ? "" : record.text,
                      record.filePath,
                      record.fontName,
                      {},
                      onWhite(record.fontColor),
                      within(record.fontSize, 1, 1000),
                      within(record.angle, -360, 360),
                      within(record.density, 0, 100),
                      within(record.scale, 1, 1000),
                      within(record.xOffset, -kFarthest, kFarthest),
                      within(record.yOffset, -kFarthest, kFarthest)};
}

bool readStoredRecord(CFStringRef store, const std::string& name, WatermarkRecord* record, std::string* reason) {
    *record = usualRecord();
    if (!loadWatermarkData(store, makeString(name).get(), record)) {
        *reason = messageText("is not stored");
        return false;
    }
    return true;
}

}  // namespace

CFRef<CFDictionaryRef> copyMarkToTravel(const std::string& name, std::string* reason) {
    WatermarkRecord record;
    if (!readStoredRecord(kWatermarkStore, name, &record, reason)) {
        return {};
    }
    if (record.kind == kImageWatermark) {
        *reason = messageText("is a picture, and only texts travel with settings");
        return {};
    }
    return CFRef<CFDictionaryRef>::retain(CreateWatermarkDictionary(record).get());
}

std::optional<StoredMark> readTravelledMark(CFDictionaryRef watermark, const std::string& name, std::string* reason) {
    WatermarkRecord record = usualRecord();
    ReadWatermarkDictionary(watermark, makeString(name).get(), &record);
    StoredMark mark = markOf(record);
    if (mark.text.empty()) {
        *reason = messageText("did not come with the job");
        return std::nullopt;
    }
    const auto font = CopyInstalledFont(makeString(record.fontName).get());
    if (!font) {
        *reason = messageText("its font %1 is not installed on the print server", {mark.fontName});
        return std::nullopt;
    }
    mark.font.assign(reinterpret_cast<const char*>(CFDataGetBytePtr(font.get())),
                     static_cast<std::size_t>(CFDataGetLength(font.get())));
    return mark;
}

std::optional<StoredMark> readStoredMark(MarkStore kept, const std::string& name, std::string* reason) {
    const CFStringRef store = fileOf(kept);
    WatermarkRecord record;
    if (!readStoredRecord(store, name, &record, reason)) {
        return std::nullopt;
    }
    StoredMark mark = markOf(record);
    if (!mark.text.empty()) {
        mark.font = readFont(store, record.fontName);
    }
    return mark;
}

std::optional<FileStamp> stampOfStore(MarkStore store) {
    const auto url = CFRef<CFURLRef>::adopt(CopyPreferenceFileURL(fileOf(store)));
    std::array<UInt8, 4096> path{};
    if (!CFURLGetFileSystemRepresentation(url.get(), true, path.data(), static_cast<CFIndex>(path.size()))) {
        return std::nullopt;
    }
    return stampOf(reinterpret_cast<const char*>(path.data()));
}

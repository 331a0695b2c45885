// Any property list as a store of watermarks, and any bytes as a record of the editor's.
//
// Contract: the names are texts; a record's texts end within their fields; a record that is written reads as the same
// again, whoever made it.

#include "watermark/records/watermark_record.h"

#include "fuzz/fuzz_target.h"
#include "fuzz/ticket_maker.h"
#include "platform/foundation/CFString.h"
#include "watermark/records/watermark_list.h"
#include "watermark/records/watermark_storage.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <vector>

namespace {

constexpr const char* kKeys[] = {"WatermarkListEntries",
                                 "Draft",
                                 "textString",
                                 "filename",
                                 "filePath",
                                 "fontName",
                                 "xOffset",
                                 "yOffset",
                                 "fontColorRed",
                                 "fontColorBlue",
                                 "fontColorAlpha",
                                 "wellColorGreen",
                                 "angle",
                                 "density",
                                 "scale",
                                 "units",
                                 "fontSize",
                                 "xPos",
                                 "yPos",
                                 "wellColorAlpha"};

void checkTexts(const WatermarkRecord& record) {
    FUZZ_EXPECT(std::memchr(record.text, 0, sizeof record.text) != nullptr);
    FUZZ_EXPECT(std::memchr(record.fileName, 0, sizeof record.fileName) != nullptr);
    FUZZ_EXPECT(std::memchr(record.filePath, 0, sizeof record.filePath) != nullptr);
    FUZZ_EXPECT(std::memchr(record.fontName, 0, sizeof record.fontName) != nullptr);
}

WatermarkRecord readRecord(CFDictionaryRef dictionary) {
    WatermarkRecord record = {};
    ReadWatermarkDictionary(dictionary, CFSTR("Draft"), &record);
    checkTexts(record);
    return record;
}

/// Numbers that no property list can hold are left out, and read as 0 then.
void checkRecord(const WatermarkRecord& record) {
    const auto written = CreateWatermarkDictionary(record);
    const auto again = CreateWatermarkDictionary(readRecord(written.get()));
    std::vector<const void*> keys(static_cast<std::size_t>(CFDictionaryGetCount(written.get())));
    CFDictionaryGetKeysAndValues(written.get(), keys.data(), nullptr);
    for (const void* const key : keys) {
        FUZZ_EXPECT(CFEqual(CFDictionaryGetValue(again.get(), key), CFDictionaryGetValue(written.get(), key)));
    }
    FUZZ_EXPECT(CFEqual(CreateWatermarkDictionary(readRecord(again.get())).get(), again.get()));
    const auto name = CreateWatermarkName(record);
    FUZZ_EXPECT(!name || CFStringGetLength(name.get()) < 512);
}

void checkStore(CFDictionaryRef root) {
    const auto names = CopyStoredNames(root);
    for (CFIndex i = 0; names && i < CFArrayGetCount(names.get()); ++i) {
        const auto* const name = static_cast<CFStringRef>(CFArrayGetValueAtIndex(names.get(), i));
        FUZZ_EXPECT(CFGetTypeID(name) == CFStringGetTypeID());
        FUZZ_EXPECT(CFEqual(FindWatermark(names.get(), name, nullptr), name));
    }
    const void* const stored = CFDictionaryGetValue(root, CFSTR("Draft"));
    const bool isRecord = CFGetTypeID(stored) == CFDictionaryGetTypeID();
    checkRecord(readRecord(isRecord ? static_cast<CFDictionaryRef>(stored) : root));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    if (data[0] % 2 == 0) {
        const auto root = makeTicket(data + 1, size - 1, {kKeys, true});
        if (CFGetTypeID(root.get()) == CFDictionaryGetTypeID()) {
            checkStore(static_cast<CFDictionaryRef>(root.get()));
        }
        return 0;
    }
    // Too long for short inputs to fill, so they are laid on its fields' beginnings.
    WatermarkRecord record = {};
    auto* const bytes = reinterpret_cast<char*>(&record);
    constexpr std::size_t kPlaces[] = {0, 512, 1024, 9216, 9728, 9768, 9808};
    constexpr std::size_t kMost = 16;
    for (std::size_t at = 1, i = 0; at < size; at += kMost, ++i) {
        const std::size_t place = kPlaces[i % std::size(kPlaces)];
        std::memcpy(bytes + place, data + at, std::min({kMost, size - at, sizeof record - place}));
    }
    checkRecord(record);
    return 0;
}

#include "watermark/records/watermark_record.h"

#include "model/settings/record_ticket.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>

namespace {

struct TextField {
    const char* key;
    std::size_t offset;
    std::size_t size;
};

struct NumberField {
    const char* key;
    std::size_t offset;
    CFNumberType type;
};

// clang-format off
constexpr TextField kTexts[] = {
    // key         offset                               size
    {"textString", offsetof(WatermarkRecord, text),     sizeof(WatermarkRecord::text)},
    {"filename",   offsetof(WatermarkRecord, fileName), sizeof(WatermarkRecord::fileName)},
    {"filePath",   offsetof(WatermarkRecord, filePath), sizeof(WatermarkRecord::filePath)},
    {"fontName",   offsetof(WatermarkRecord, fontName), sizeof(WatermarkRecord::fontName)},
};
static_assert(std::size(kTexts) == 4);

constexpr NumberField kNumbers[] = {
    // key             offset                                      type
    {"xOffset",        offsetof(WatermarkRecord, xOffset),         kCFNumberFloat32Type},
    {"yOffset",        offsetof(WatermarkRecord, yOffset),         kCFNumberFloat32Type},
    {"fontColorRed",   offsetof(WatermarkRecord, fontColor.red),   kCFNumberFloat32Type},
    {"fontColorGreen", offsetof(WatermarkRecord, fontColor.green), kCFNumberFloat32Type},
    {"fontColorBlue",  offsetof(WatermarkRecord, fontColor.blue),  kCFNumberFloat32Type},
    {"fontColorAlpha", offsetof(WatermarkRecord, fontColor.alpha), kCFNumberFloat32Type},
    {"wellColorRed",   offsetof(WatermarkRecord, wellColor.red),   kCFNumberFloat32Type},
    {"wellColorGreen", offsetof(WatermarkRecord, wellColor.green), kCFNumberFloat32Type},
    {"wellColorBlue",  offsetof(WatermarkRecord, wellColor.blue),  kCFNumberFloat32Type},
    {"wellColorAlpha", offsetof(WatermarkRecord, wellColor.alpha), kCFNumberFloat32Type},
    {"angle",          offsetof(WatermarkRecord, angle),           kCFNumberSInt32Type},
    {"density",        offsetof(WatermarkRecord, density),         kCFNumberSInt32Type},
    {"scale",          offsetof(WatermarkRecord, scale),           kCFNumberSInt32Type},
    {"units",          offsetof(WatermarkRecord, units),           kCFNumberSInt32Type},
    {"fontSize",       offsetof(WatermarkRecord, fontSize),        kCFNumberSInt32Type},
    {"xPos",           offsetof(WatermarkRecord, xPosition),       kCFNumberFloat64Type},
    {"yPos",           offsetof(WatermarkRecord, yPosition),       kCFNumberFloat64Type},
};
static_assert(std::size(kNumbers) == 17);
// clang-format on

const char* FieldOf(const WatermarkRecord& record, std::size_t offset) {
    return reinterpret_cast<const char*>(&record) + offset;
}

char* FieldOf(WatermarkRecord* record, std::size_t offset) {
    return reinterpret_cast<char*>(record) + offset;
}

/// The text up to the zero, or to the buffer's end: the editor is not trusted with the zero.
CFRef<CFStringRef> CreateText(const char* buffer, std::size_t size) {
    const std::string_view text(buffer, static_cast<std::size_t>(std::find(buffer, buffer + size, '\0') - buffer));
    return CFRef<CFStringRef>::adopt(
        CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(text.data()),
                                static_cast<CFIndex>(text.size()), kCFStringEncodingUTF8, false));
}

/// The longest beginning of a UTF-8 text that has no more bytes than the limit and ends between two characters.
std::string_view BeginningOf(std::string_view text, std::size_t limit) {
    if (text.size() <= limit) {
        return text;
    }
    const auto continuesCharacter = [](char byte) { return (static_cast<UInt8>(byte) & 0xC0) == 0x80; };
    while (limit > 0 && continuesCharacter(text[limit])) {
        --limit;
    }
    return text.substr(0, limit);
}

}  // namespace

CFRef<CFStringRef> CreateWatermarkName(const WatermarkRecord& record) {
    return record.kind != kImageWatermark ? CreateText(record.text, sizeof record.text)
                                          : CreateText(record.fileName, sizeof record.fileName);
}

CFRef<CFMutableDictionaryRef> CreateWatermarkDictionary(const WatermarkRecord& record) {
    auto dictionary = CreateRecordDictionary();
    for (const auto& [key, offset, size] : kTexts) {
        CFDictionarySetValue(dictionary.get(), CFStringMakeConstant(key),
                             CreateText(FieldOf(record, offset), size).get());
    }
    for (const auto& [key, offset, type] : kNumbers) {
        const auto number =
            CFRef<CFNumberRef>::adopt(CFNumberCreate(kCFAllocatorDefault, type, FieldOf(record, offset)));
        // One number that no property list can hold would keep the whole store from being written.
        double value = 0;
        if (CFNumberGetValue(number.get(), kCFNumberDoubleType, &value) && std::isfinite(value)) {
            CFDictionarySetValue(dictionary.get(), CFStringMakeConstant(key), number.get());
        }
    }
    return dictionary;
}

void ReadWatermarkDictionary(CFDictionaryRef dictionary, CFStringRef name, WatermarkRecord* record) {
    for (const auto& [key, offset, size] : kTexts) {
        if (const CFStringRef string = GetRecordString(dictionary, CFStringMakeConstant(key))) {
            const std::string text = utf8Text(string);
            char* const field = FieldOf(record, offset);
            const std::string_view kept = BeginningOf(text, size - 1);
            std::fill(std::copy(kept.begin(), kept.end(), field), field + size, '\0');
        }
    }
    for (const auto& [key, offset, type] : kNumbers) {
        CFDictionaryGetNumber(dictionary, CFStringMakeConstant(key), FieldOf(record, offset), type);
    }
    const bool isNamedByText = CFEqual(name, CreateText(record->text, sizeof record->text).get());
    const bool isNamedByPicture = CFEqual(name, CreateText(record->fileName, sizeof record->fileName).get());
    record->kind = record->text[0] == '\0' || (isNamedByPicture && !isNamedByText) ? kImageWatermark : kTextWatermark;
}

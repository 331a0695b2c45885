#include "core/features/installable_options.h"
#include "core/features/printer_model.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFString.h"

#include <cstddef>
#include <vector>

namespace {

#define kPictureKey CFSTR("Picture")

struct MimicRow {
    const char* finisher;  // the option of Option2; null for any other
    const char* twoTrays;
    const char* fourTrays;
};

// clang-format off
constexpr MimicRow kMimics[] = {
    // finisher  two trays              four trays
    {"HCSS_BK",  "Str_2T_HCSS+BK.gif",  "Str_4T_HCSS+BK.gif"},
    {"HCSS",     "Str_2T_HCSS.gif",     "Str_4T_HCSS.gif"},
    {"LCSS",     "Str_2T_LCSS.gif",     "Str_4T_LCSS.gif"},
    {"BLCSS",    "Str_2T_LCSS.gif",     "Str_4T_LCSS.gif"},
    {nullptr,    "Str_2T.gif",          "Str_4T.gif"},
};
// clang-format on

/// Whether an entry of a model's pictures is of what is installed.
bool Fits(CFDictionaryRef picture) {
    const auto count = static_cast<std::size_t>(CFDictionaryGetCount(picture));
    std::vector<const void*> keys(count);
    std::vector<const void*> values(count);
    CFDictionaryGetKeysAndValues(picture, keys.data(), values.data());
    for (std::size_t i = 0; i < count; ++i) {
        CFStringRef installed = nullptr;
        const auto* const keyword = static_cast<CFStringRef>(keys[i]);
        if (!CFEqual(keyword, kPictureKey) &&
            (!getInstallableOptionValue(keyword, &installed) || !CFEqual(installed, values[i]))) {
            return false;
        }
    }
    return true;
}

/// Null when the database has none for the model.
CFStringRef PictureOfModel() {
    const CFArrayRef pictures = ListOfModel(CFSTR("Pictures"));
    for (CFIndex i = 0; i < CFArrayGetCount(pictures); ++i) {
        const void* const entry = CFArrayGetValueAtIndex(pictures, i);
        if (CFGetTypeID(entry) != CFDictionaryGetTypeID() || !Fits(static_cast<CFDictionaryRef>(entry))) {
            continue;
        }
        const void* const name = CFDictionaryGetValue(static_cast<CFDictionaryRef>(entry), kPictureKey);
        if (CFGetTypeID(name) == CFStringGetTypeID()) {
            return static_cast<CFStringRef>(name);
        }
    }
    return nullptr;
}

}  // namespace

CFStringRef GetDeviceMimic() {
    CFStringRef trays = nullptr;
    CFStringRef finisher = nullptr;
    if (!getInstallableOptionValue(CFSTR("Option1"), &trays)) {
        return nullptr;
    }
    if (const CFStringRef picture = PictureOfModel()) {
        return picture;
    }
    getInstallableOptionValue(CFSTR("Option2"), &finisher);
    const MimicRow* row = kMimics;
    while (row->finisher != nullptr && !CFEqual(finisher, CFStringMakeConstant(row->finisher))) {
        ++row;
    }
    return CFStringMakeConstant(CFEqual(trays, CFSTR("True")) ? row->fourTrays : row->twoTrays);
}

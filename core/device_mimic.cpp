#include "core/installable_options.h"
#include "platform/foundation/CFString.h"

namespace {

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

}  // namespace

CFStringRef GetDeviceMimic() {
    CFStringRef trays = nullptr;
    CFStringRef finisher = nullptr;
    if (!getInstallableOptionValue(CFSTR("Option1"), &trays)) {
        return nullptr;
    }
    getInstallableOptionValue(CFSTR("Option2"), &finisher);
    const MimicRow* row = kMimics;
    while (row->finisher != nullptr && !CFEqual(finisher, CFStringMakeConstant(row->finisher))) {
        ++row;
    }
    return CFStringMakeConstant(CFEqual(trays, CFSTR("True")) ? row->fourTrays : row->twoTrays);
}

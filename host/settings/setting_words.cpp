#include "host/settings/setting_words.h"

#include "host/script/text.h"
#include "host/settings/texts.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

struct PanelRow {
    std::string_view mainKeyword;
    const char* panel;  // key of the panel's title
};
// clang-format off
constexpr PanelRow kPanels[] = {
    // main keyword             panel
    {"MediaType",               "Panel Paper and Output"},
    {"MediaColor",              "Panel Paper and Output"},
    {"Duplex",                  "Panel Paper and Output"},
    {"StapleLocation",          "Panel Paper and Output"},
    {"TRFoldOptions",           "Panel Paper and Output"},
    {"OutputBin",               "Panel Paper and Output"},
    {"JCLColorCorrection",      "Panel Paper and Output"},
    {"JCLPasscode",             "Panel Paper and Output"},
    {"JCLCovers",               "Panel Special Pages"},
    {"JCLMediaType",            "Panel Special Pages"},
    {"JCLMediaColor",           "Panel Special Pages"},
    {"JCLFrontBackMediaType",   "Panel Special Pages"},
    {"JCLFrontBackMediaColor",  "Panel Special Pages"},
    {"Resolution",              "Panel Image Options"},
    {"TRImageQuality",          "Panel Image Options"},
    {"TREconomode",             "Panel Image Options"},
    {"JCLBanner",               "Panel Advanced"},
    {"Jog",                     "Panel Advanced"},
};
static_assert(std::size(kPanels) == 18);
// clang-format on

}  // namespace

std::optional<SettingWords> settingWords(const Printer& printer, CFBundleRef bundle, const std::string& mainKeyword,
                                         const std::string& option) {
    CFStringRef title = nullptr;
    CFStringRef choice = nullptr;
    if (PMPrinterCopySettingTitles(printer.get(), cfString(mainKeyword).get(), cfString(option).get(), &title,
                                   &choice) != noErr) {
        return std::nullopt;
    }
    return SettingWords{utf8(CFRef<CFStringRef>::adopt(title).get()), utf8(CFRef<CFStringRef>::adopt(choice).get()),
                        printer.isOfMaker() ? panelOfSetting(bundle, mainKeyword) : std::string()};
}

std::string panelOfSetting(CFBundleRef bundle, const std::string& mainKeyword) {
    const auto* const row = std::ranges::find(kPanels, std::string_view(mainKeyword), &PanelRow::mainKeyword);
    return row == std::end(kPanels) ? std::string() : utf8(localized(bundle, CFStringMakeConstant(row->panel)).get());
}

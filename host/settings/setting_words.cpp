#include "host/settings/setting_words.h"

#include "host/settings/setting_place.h"
#include "host/settings/texts.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

struct TrayRow {
    std::string_view option;  // of "OutputBin"
    std::string_view finisher;
    const char* name;  // key of the tray's name
};
constexpr TrayRow kTrays[] = {
    // the trays that the maker's panel calls otherwise than the PPD
    {"Side", "OCT", "Tray Offset Catch"},     {"Side", "OCT2", "Tray Offset Catch 1"},
    {"Lower", "OCT2", "Tray Offset Catch 2"}, {"Side", "SCT2", "Tray Catch 1"},
    {"Lower", "SCT2", "Tray Catch 2"},        {"Stacker", "HCSS", "Tray Stacker 1"},
};

/// Null for any other setting.
const TrayRow* findTray(const PrintSession& session, const std::string& mainKeyword, const std::string& option) {
    if (mainKeyword != "OutputBin") {
        return nullptr;
    }
    const auto* const row = std::ranges::find_if(kTrays, [&](const TrayRow& tray) {
        return tray.option == option && session.choices().installed("Option2") == tray.finisher;
    });
    return row != std::end(kTrays) ? row : nullptr;
}

}  // namespace

std::optional<SettingWords> settingWords(const PrintSession& session, CFBundleRef bundle,
                                         const std::string& mainKeyword, const std::string& option) {
    const Printer& printer = session.printer();
    CFStringRef title = nullptr;
    CFStringRef choice = nullptr;
    if (PMPrinterCopySettingTitles(printer.get(), makeString(mainKeyword).get(), makeString(option).get(), &title,
                                   &choice) != noErr) {
        return std::nullopt;
    }
    SettingWords words{
        utf8Text(CFRef<CFStringRef>::adopt(title).get()), utf8Text(CFRef<CFStringRef>::adopt(choice).get()), {}};
    if (printer.isOfMaker()) {
        words.panel = panelOfSetting(bundle, mainKeyword);
        if (const TrayRow* tray = findTray(session, mainKeyword, option)) {
            words.choice = utf8Text(localized(bundle, CFStringMakeConstant(tray->name)).get());
        }
    }
    return words;
}

std::string panelOfSetting(CFBundleRef bundle, const std::string& mainKeyword) {
    const SettingPlace* const place = placeOfSetting(mainKeyword);
    return place == nullptr || place->panel == nullptr
               ? std::string()
               : utf8Text(localized(bundle, CFStringMakeConstant(place->panel)).get());
}

#include "panels/paper_output/output_destination.h"

#include "core/features/installable_options.h"
#include "model/settings/ppd_option_maps.h"
#include "model/settings/ppd_ui_dictionary.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Menus.h"
#include "ui/ppd_menus.h"

#include <algorithm>
#include <iterator>

namespace {

struct OutputTray {
    const char* feature;  // null: every printer has it
    const char* without;  // a feature whose trays take its place; null for none
    SInt32 destination;
    bool hasOwnName;  // the feature is this tray, and no other
};
// clang-format off
constexpr OutputTray kTrays[] = {
    // feature                  without       destination       its own name
    {nullptr,                   nullptr,      kOutputAutomatic, false},
    {"TopTrayKey",              nullptr,      2,                true},   // Top
    {"SimpleCatchTrayKey",      nullptr,      3,                true},   // Side
    {"OffsettingCatchTrayKey",  nullptr,      3,                true},   // Side
    {nullptr,                   "TopTrayKey", 3,                false},  // Side: where a finisher would stand
    {"StackerTray1Key",         nullptr,      4,                true},   // Stacker
    {"StackerTray2Key",         nullptr,      5,                false},  // Upper
    {"SimpleCatchTray2Key",     nullptr,      6,                true},   // Lower: a second one where that would be
    {"OffsettingCatchTray2Key", nullptr,      6,                true},   // Lower
    {"StackerTray2Key",         nullptr,      6,                false},  // Lower
    {"BookletBinKey",           nullptr,      7,                true},   // Booklet
};
static_assert(std::size(kTrays) == 11);
// clang-format on

/// Whether the tray is there, under the ticket value that its feature has in the table of installed features; where
/// that is 0, under the PPD's own.
bool IsTray(const OutputTray& tray, SInt32 destination) {
    SInt32 value = 0;
    if (tray.feature != nullptr && !getInstallableOptionTicketValue(CFStringMakeConstant(tray.feature), &value)) {
        return false;
    }
    return (value != 0 ? value : tray.destination) == destination &&
           (tray.without == nullptr || !getInstalledFeature(CFStringMakeConstant(tray.without)));
}

/// Null for a tray that is not there.
const OutputTray* FindTray(SInt32 destination) {
    const auto* const tray =
        std::ranges::find_if(kTrays, [=](const OutputTray& each) { return IsTray(each, destination); });
    return tray != std::end(kTrays) ? tray : nullptr;
}

}  // namespace

void PopulateOutputDestinationPopup(ControlRef popup, CFBundleRef bundle) {
    const MenuRef menu = GetControlPopupMenuHandle(popup);
    DeleteMenuItems(menu, 1, CountMenuItems(menu));
    PopulatePopupButtonFromPPDOptions(popup, PPDGetGlobalOptions(CFSTR("OutputBin")), 0);
    for (auto item = static_cast<MenuItemIndex>(CountMenuItems(menu)); item > 0; --item) {
        MenuRefCon destination = 0;
        GetMenuItemRefCon(menu, item, &destination);
        if (destination == kNoTicketValue) {
            continue;
        }
        const OutputTray* tray = FindTray(static_cast<SInt32>(destination));
        if (tray == nullptr) {
            DeleteMenuItems(menu, item, 1);
        } else if (tray->hasOwnName) {
            const CFStringRef name =
                CopyLocalizedStringForInstalledFeatureFromPlugin(CFStringMakeConstant(tray->feature), bundle);
            if (name != CFSTR("STRING NOT FOUND")) {
                SetMenuItemTextWithCFString(menu, item, CFRef<CFStringRef>::adopt(name).get());
            }
        }
    }
}

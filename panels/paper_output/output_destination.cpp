#include "panels/paper_output/output_destination.h"

#include "core/installable_options.h"
#include "model/ppd_option_maps.h"
#include "model/ppd_ui_dictionary.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Menus.h"
#include "ui/ppd_menus.h"

#include <iterator>

namespace {

struct OutputTray {
    SInt32 destination;
    const char* feature;  // null: every printer has it
    const char* without;  // a feature whose trays take its place; null for none
};
// clang-format off
constexpr OutputTray kTrays[] = {
    // destination      feature             without
    {kOutputAutomatic,  nullptr,            nullptr},
    {2,                 "TopTrayKey",       nullptr},            // Top
    {3,                 nullptr,            "TopTrayKey"},       // Side: where a finisher would stand
    {4,                 "StackerTray1Key",  nullptr},            // Stacker
    {5,                 "StackerTray2Key",  nullptr},            // Upper
    {6,                 "StackerTray2Key",  nullptr},            // Lower
    {7,                 "BookletBinKey",    nullptr},            // Booklet
};
static_assert(std::size(kTrays) == 7);
// clang-format on

bool IsInstalled(const char* feature) {
    return getInstalledFeature(CFStringMakeConstant(feature));
}

}  // namespace

bool IsOutputDestinationInstalled(SInt32 destination) {
    for (const OutputTray& tray : kTrays) {
        if (tray.destination == destination) {
            return (tray.feature == nullptr || IsInstalled(tray.feature)) &&
                   (tray.without == nullptr || !IsInstalled(tray.without));
        }
    }
    return false;
}

void PopulateOutputDestinationPopup(ControlRef popup) {
    const MenuRef menu = GetControlPopupMenuHandle(popup);
    DeleteMenuItems(menu, 1, CountMenuItems(menu));
    PopulatePopupButtonFromPPDOptions(popup, PPDGetGlobalOptions(CFSTR("OutputBin")), 0);
    for (auto item = static_cast<MenuItemIndex>(CountMenuItems(menu)); item > 0; --item) {
        MenuRefCon destination = 0;
        GetMenuItemRefCon(menu, item, &destination);
        if (destination != kNoTicketValue && !IsOutputDestinationInstalled(static_cast<SInt32>(destination))) {
            DeleteMenuItems(menu, item, 1);
        }
    }
}

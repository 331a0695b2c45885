#include "ui/ppd_menus.h"

#include "model/settings/plugin_state.h"
#include "model/settings/ppd_option_maps.h"
#include "model/settings/ppd_ui_dictionary.h"
#include "model/stock/stock.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Menus.h"
#include "ui/localization.h"

namespace {

SInt32 TicketValue(CFStringRef mainKeyword, const PPDOptionMap* map, CFStringRef optionKeyword) {
    const SInt32 value = GetTicketValueForPPDOptionKeyword(map, optionKeyword);
    const bool isCustomSize =
        value == kNoTicketValue && CFEqual(mainKeyword, CFSTR("PageSize")) && CFEqual(optionKeyword, CFSTR("Custom"));
    return isCustomSize ? kStockSizeCustom : value;
}

}  // namespace

ItemCount PopulateMenuFromPPDOptions(MenuRef menu, CFArrayRef options, OSType command) {
    if (menu == nullptr || options == nullptr) {
        return 0;
    }
    DeleteMenuItems(menu, 1, CountMenuItems(menu));
    const CFStringRef mainKeyword = GetKeywordInfo(options, 0, KeywordInfo::mainKeyword);
    const PPDOptionMap* map = GetPPDOptionMapForMainKeyword(mainKeyword);
    for (CFIndex row = 0; row < CFArrayGetCount(options); ++row) {
        MenuItemIndex item = 0;
        AppendMenuItemTextWithCFString(menu, GetKeywordInfo(options, row, KeywordInfo::alias), 0, command, &item);
        if (map != nullptr) {
            const SInt32 value =
                TicketValue(mainKeyword, map, GetKeywordInfo(options, row, KeywordInfo::optionKeyword));
            SetMenuItemRefCon(menu, item, value);
            if (value == kNoTicketValue) {
                DisableMenuItem(menu, item);
                HMSetMenuItemHelpContent(menu, item,
                                         CopyLocalizedText(GetPDEBundle(), CFSTR("Unknown Option Help")).get());
            }
        }
    }
    return CountMenuItems(menu);
}

ItemCount PopulatePopupButtonFromPPDOptions(ControlRef popup, CFArrayRef options, OSType command) {
    const MenuRef menu = GetControlPopupMenuHandle(popup);
    if (menu == nullptr || options == nullptr) {
        return 0;
    }
    const ItemCount count = PopulateMenuFromPPDOptions(menu, options, command);
    SetControl32BitMaximum(popup, static_cast<SInt32>(count));
    return count;
}

#include "ui/setting_menus.h"

#include "model/settings/ticket_access.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Menus.h"
#include "ui/localization.h"

namespace {

CFRef<CFStringRef> CopyRowText(CFBundleRef bundle, const SettingMap& row, JobContext context) {
    if (row.ticketValue == kTicketValueUnset) {
        return CopyLocalizedText(bundle, context == JobContext::job ? CFSTR("PrinterDefault") : CFSTR("UseJobSetting"));
    }
    const auto key =
        CFRef<CFStringRef>::adopt(CFStringCreateWithCString(kCFAllocatorDefault, row.key, kCFStringEncodingUTF8));
    return CopyLocalizedText(bundle, key.get());
}

}  // namespace

ItemCount PopulateMenuFromMap(CFBundleRef bundle, MenuRef menu, const SettingMap* map, JobContext context,
                              OSType command) {
    ItemCount count = 0;
    for (const SettingMap* row = map; row->key != nullptr; ++row) {
        const CFRef<CFStringRef> text = CopyRowText(bundle, *row, context);
        MenuItemIndex item = 0;
        if (AppendMenuItemTextWithCFString(menu, text.get(), 0, command != 0 ? command : row->command, &item) ==
            noErr) {
            SetMenuItemRefCon(menu, item, row->ticketValue);
            ++count;
        }
    }
    SetMenuItemRefCon(menu, 0, reinterpret_cast<MenuRefCon>(map));
    return count;
}

ItemCount PopulatePopupButtonFromMap(CFBundleRef bundle, ControlRef popup, const SettingMap* map, JobContext context,
                                     OSType command) {
    const MenuRef menu = GetControlPopupMenuHandle(popup);
    DeleteMenuItems(menu, 1, CountMenuItems(menu));
    const ItemCount count = PopulateMenuFromMap(bundle, menu, map, context, command);
    SetControl32BitMaximum(popup, static_cast<SInt32>(count));
    return count;
}

void SetPopupButtonToTicketValue(ControlRef popup, SInt32 value) {
    const MenuRef menu = GetControlPopupMenuHandle(popup);
    for (MenuItemIndex item = 1; item <= CountMenuItems(menu); ++item) {
        MenuRefCon refCon = 0;
        if (GetMenuItemRefCon(menu, item, &refCon) == noErr && refCon == value) {
            SetControl32BitValue(popup, item);
            return;
        }
    }
}

SInt32 GetPopupButtonTicketValue(ControlRef popup) {
    const SInt32 item = GetControl32BitValue(popup);
    MenuRefCon refCon = kTicketValueUnset;
    if (item > 0) {
        GetMenuItemRefCon(GetControlPopupMenuHandle(popup), static_cast<MenuItemIndex>(item), &refCon);
    }
    return static_cast<SInt32>(refCon);
}

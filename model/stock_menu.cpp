#include "model/stock_menu.h"

#include "model/advanced_stock_selection.h"
#include "model/custom_stock_size.h"
#include "model/ppd_ui_dictionary.h"
#include "model/stock_view.h"
#include "platform/foundation/CFString.h"
#include "ui/localization.h"
#include "ui/ppd_menus.h"

namespace {

constexpr EventTypeSpec kCommandEvent = {kEventClassCommand, kEventCommandProcess};
constexpr EventTypeSpec kEnableItemsEvent = {kEventClassMenu, kEventMenuEnableItems};
constexpr EventTypeSpec kDrawEvent = {kEventClassControl, kEventControlDraw};

void DeleteAllItems(MenuRef menu) {
    DeleteMenuItems(menu, 1, CountMenuItems(menu));
}

bool MayFollowJob(JobContext context) {
    return context == JobContext::insert || context == JobContext::exception;
}

MenuItemIndex AppendItem(MenuRef menu, CFBundleRef bundle, CFStringRef key, OSType command) {
    MenuItemIndex item = 0;
    AppendMenuItemTextWithCFString(menu, CopyLocalizedText(bundle, key).get(), 0, command, &item);
    return item;
}

void AppendSeparator(MenuRef menu) {
    AppendMenuItemTextWithCFString(menu, CFSTR("-"), kMenuItemAttrSeparator, 0, nullptr);
}

void PopulateFromPPD(MenuRef menu, CFStringRef mainKeyword, OSType command) {
    DeleteAllItems(menu);
    PopulateMenuFromPPDOptions(menu, PPDGetGlobalOptions(mainKeyword), command);
}

void InsertUseJobSetting(MenuRef menu, CFBundleRef bundle, OSType command) {
    InsertMenuItemTextWithCFString(menu, CopyLocalizedText(bundle, CFSTR("UseJobSetting")).get(), 0, 0, command);
    SetMenuItemRefCon(menu, 1, kTicketValueUnset);
}

using PopulateProc = void (*)(MenuRef menu, CFBundleRef bundle, JobContext context);

/// A submenu without items is of no use: its item is disabled.
OSStatus AppendSubmenu(MenuRef menu, CFBundleRef bundle, CFStringRef key, OSType command, JobContext context,
                       PopulateProc populate) {
    MenuRef submenu = nullptr;
    OSStatus status = CreateNewMenu(0, kMenuAttrExcludesMarkColumn | kMenuAttrCondenseSeparators, &submenu);
    if (status != noErr) {
        return status;
    }
    const MenuItemIndex item = AppendItem(menu, bundle, key, command);
    populate(submenu, bundle, context);
    status = SetMenuItemHierarchicalMenu(menu, item, submenu);
    if (status == noErr) {
        // The submenu, and this handler of its own, may go before the stock does; it needs nothing of it.
        status = InstallEventHandler(GetMenuEventTarget(submenu), NewEventHandlerUPP(StockMenuCommandEventHandler), 1,
                                     &kEnableItemsEvent, nullptr, nullptr);
    }
    if (CountMenuItems(submenu) == 0) {
        DisableMenuItem(menu, item);
    }
    ReleaseMenu(submenu);
    return status;
}

void ClearName(Stock* stock) {
    stock->setCustomName(CFSTR(""));
    stock->setCustomNameOnly(false);
}

void Refresh(const _StockMenuCommandEventHandlerData& data) {
    ShowStockSummary(data.bundle, data.summaryView, data.stock, data.context);
}

void RefreshUnnamed(const _StockMenuCommandEventHandlerData& data) {
    ClearName(data.stock);
    Refresh(data);
}

/// False when the user gave up a custom size.
bool ChooseSize(const _StockMenuCommandEventHandlerData& data, SInt32 size) {
    if (size != kStockSizeCustom) {
        data.stock->setSize(size);
        return true;
    }
    SInt16 result = kCustomStockSizeCancel;
    SInt32 width = data.stock->width();
    SInt32 length = data.stock->length();
    RunModalCustomStockSizeDialog(data.bundle, &result, &width, &length);
    if (result != kCustomStockSizeOK) {
        return false;
    }
    data.stock->setSize(kStockSizeCustom);
    data.stock->setWidth(width);
    data.stock->setLength(length);
    return true;
}

OSStatus CarryOut(const _StockMenuCommandEventHandlerData& data, const HICommand& command) {
    if (data.stock == nullptr) {
        return eventNotHandledErr;
    }
    MenuRefCon reference = 0;
    const bool isItem = GetMenuItemRefCon(command.menu, command.menuItemIndex, &reference) == noErr;
    const auto value = static_cast<SInt32>(reference);
    OSStatus answer = eventNotHandledErr;
    switch (command.commandID) {
        case kStockCommandDefault:
            DefaultStock(data.stock, data.context);
            Refresh(data);
            break;
        case kStockCommandAdvanced: {
            SInt16 result = kAdvancedStockSelectionCancel;
            RunModalAdvancedStockSelection(data.bundle, data.mode, data.context, NamedPaperContext::office, data.stock,
                                           &result);
            if (result == kAdvancedStockSelectionOK) {
                RefreshUnnamed(data);
            }
            break;
        }
        case kStockCommandSize:
            if (isItem) {
                answer = ChooseSize(data, value) ? eventNotHandledErr : noErr;
                RefreshUnnamed(data);
            }
            break;
        case kStockCommandColor:
            if (isItem) {
                data.stock->setColor(value);
                RefreshUnnamed(data);
            }
            break;
        case kStockCommandType:
            if (isItem) {
                data.stock->setType(value);
                RefreshUnnamed(data);
            }
            break;
        default:
            return eventNotHandledErr;
    }
    Draw1Control(data.icon);
    return answer;
}

}  // namespace

StockMenuHandlers::~StockMenuHandlers() {
    for (const EventHandlerRef handler : handlers_) {
        RemoveEventHandler(handler);
    }
}

OSStatus StockMenuHandlers::install(EventTargetRef target, EventHandlerProcPtr handler, EventTypeSpec event,
                                    void* userData) {
    EventHandlerRef installed = nullptr;
    const OSStatus status = InstallEventHandler(target, NewEventHandlerUPP(handler), 1, &event, userData, &installed);
    if (status == noErr) {
        handlers_.push_back(installed);
    }
    return status;
}

OSStatus InitializeStockMenuButton(ControlRef control, _StockMenuCommandEventHandlerData* data) {
    if (data == nullptr) {
        return paramErr;
    }
    data->handlers = std::make_unique<StockMenuHandlers>();
    OSStatus status = noErr;
    if (control != nullptr) {
        data->menu = GetControlPopupMenuHandle(control);
        status = PopulateStockMenu(data->menu, data->bundle, data->context, data);
        if (status == noErr) {
            status = data->handlers->install(GetControlEventTarget(control), StockMenuCommandEventHandler,
                                             kCommandEvent, data);
        }
    }
    if (status == noErr && data->icon != nullptr) {
        status = data->handlers->install(GetControlEventTarget(data->icon), StockIconEventHandler, kDrawEvent, data);
    }
    return status;
}

OSStatus FinalizeStockMenuButton(ControlRef, _StockMenuCommandEventHandlerData* data) {
    if (data == nullptr) {
        return paramErr;
    }
    data->handlers.reset();
    return noErr;
}

OSStatus PopulateStockMenu(MenuRef menu, CFBundleRef bundle, JobContext context, _StockMenuCommandEventHandlerData*) {
    OSStatus status = ChangeMenuAttributes(menu, kMenuAttrExcludesMarkColumn | kMenuAttrCondenseSeparators, 0);
    if (status != noErr) {
        return status;
    }
    DeleteAllItems(menu);
    const bool hasOwnDefault = !MayFollowJob(context);
    AppendItem(menu, bundle, hasOwnDefault ? CFSTR("Default Stock") : CFSTR("UseJobSetting"), kStockCommandDefault);
    AppendSeparator(menu);
    if (context != JobContext::job) {
        status = AppendSubmenu(menu, bundle, CFSTR("StockSize"), kStockCommandSize, context, PopulateStockSizeMenu);
    }
    if (status == noErr) {
        status = AppendSubmenu(menu, bundle, CFSTR("StockColor"), 0, context, PopulateStockColorMenu);
    }
    if (status == noErr) {
        status = AppendSubmenu(menu, bundle, CFSTR("StockType"), 0, context, PopulateStockTypeMenu);
    }
    AppendSeparator(menu);
    AppendItem(menu, bundle, CFSTR("StockAdvanced..."), kStockCommandAdvanced);
    return status;
}

void PopulateStockSizeMenu(MenuRef menu, CFBundleRef bundle, JobContext context) {
    PopulateFromPPD(menu, CFSTR("PageSize"), kStockCommandSize);
    if (MayFollowJob(context)) {
        InsertUseJobSetting(menu, bundle, kStockCommandSize);
    }
}

void PopulateStockColorMenu(MenuRef menu, CFBundleRef bundle, JobContext context) {
    PopulateFromPPD(menu, CFSTR("MediaColor"), kStockCommandColor);
    if (MayFollowJob(context)) {
        InsertUseJobSetting(menu, bundle, kStockCommandColor);
    }
}

void PopulateStockTypeMenu(MenuRef menu, CFBundleRef bundle, JobContext context) {
    PopulateFromPPD(menu, CFSTR("MediaType"), kStockCommandType);
    if (!MayFollowJob(context)) {
        return;
    }
    for (MenuItemIndex item = 1; item <= CountMenuItems(menu); ++item) {
        MenuRefCon value = 0;
        GetMenuItemRefCon(menu, item, &value);
        if (value == kStockTypeSystemDefault) {
            SetLocalizedMenuTitle(bundle, CFSTR("UseJobSetting"), menu, item);
            SetMenuItemRefCon(menu, item, kTicketValueUnset);
            break;
        }
    }
}

OSStatus StockMenuCommandEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    if (GetEventClass(event) == kEventClassMenu) {
        return noErr;
    }
    HICommand command{};
    GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr, &command);
    return CarryOut(*static_cast<const _StockMenuCommandEventHandlerData*>(userData), command);
}

#include "model/stock_dialogs/stock_menu.h"

#include "model/settings/plugin_state.h"
#include "model/settings/ppd_ui_dictionary.h"
#include "model/stock/stock_library.h"
#include "model/stock_dialogs/advanced_stock_selection.h"
#include "model/stock_dialogs/custom_stock_size.h"
#include "model/stock_dialogs/stock_library_dialog.h"
#include "model/stock_dialogs/stock_view.h"
#include "platform/foundation/CFString.h"
#include "ui/localization.h"
#include "ui/message_text.h"
#include "ui/ppd_menus.h"

#include <algorithm>

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

// ---- Papers of the user's library

constexpr MenuRefCon kLibraryItem = 0;
constexpr MenuRefCon kPaperItem = 1;
constexpr std::size_t kMostNames = 20;  // in a menu; the library's window has all
constexpr CFIndex kLongestName = 60;

/// The paper that an item shows, lent; null when it is gone.
const Stock* PaperOfItem(MenuRef menu, MenuItemIndex item) {
    CFStringRef text = nullptr;
    CopyMenuItemTextAsCFString(menu, item, &text);
    const auto shown = CFRef<CFStringRef>::adopt(text);
    const auto& papers = UsersStockLibrary().papers;
    const auto found = std::ranges::find_if(papers, [&](const Stock& paper) {
        return CFEqual(CopyTextForOneLine(paper.customName(), kLongestName).get(), shown.get());
    });
    return found != papers.end() ? &*found : nullptr;
}

/// Reads the library when somebody looks at the menu: a dialog that nobody asks for papers need not wait for them.
void FillNamedMenu(MenuRef menu) {
    const CFBundleRef bundle = GetPDEBundle();
    DeleteAllItems(menu);
    const auto& papers = UsersStockLibrary().papers;
    for (std::size_t i = 0; i < std::min(papers.size(), kMostNames); ++i) {
        MenuItemIndex item = 0;
        AppendMenuItemTextWithCFString(menu, CopyTextForOneLine(papers[i].customName(), kLongestName).get(), 0,
                                       kStockCommandNamed, &item);
        SetMenuItemRefCon(menu, item, kPaperItem);
    }
    if (!papers.empty()) {
        AppendSeparator(menu);
    }
    AppendItem(menu, bundle, CFSTR("StockLibrary..."), kStockCommandNamed);
}

OSStatus FillNamedMenuEventHandler(EventHandlerCallRef, EventRef, void* menu) {
    FillNamedMenu(static_cast<MenuRef>(menu));
    return noErr;
}

OSStatus AppendNamedMenu(MenuRef menu, CFBundleRef bundle) {
    MenuRef named = nullptr;
    OSStatus status = CreateNewMenu(0, kMenuAttrExcludesMarkColumn | kMenuAttrCondenseSeparators, &named);
    if (status != noErr) {
        return status;
    }
    const MenuItemIndex item = AppendItem(menu, bundle, CFSTR("StockNamed"), 0);
    AppendItem(named, bundle, CFSTR("StockLibrary..."), kStockCommandNamed);
    status = SetMenuItemHierarchicalMenu(menu, item, named);
    if (status == noErr) {
        status = InstallEventHandler(GetMenuEventTarget(named), NewEventHandlerUPP(FillNamedMenuEventHandler), 1,
                                     &kEnableItemsEvent, named, nullptr);
    }
    ReleaseMenu(named);
    return status;
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

/// False when no paper was chosen, or it is gone.
bool ChooseNamed(const _StockMenuCommandEventHandlerData& data, const HICommand& command) {
    MenuRefCon reference = kLibraryItem;
    GetMenuItemRefCon(command.menu, command.menuItemIndex, &reference);
    if (reference == kLibraryItem) {
        SInt16 result = kStockLibraryCancel;
        RunModalStockLibrary(data.bundle, data.context, data.stock, &result);
        return result == kStockLibraryOK;
    }
    const Stock* const paper = PaperOfItem(command.menu, command.menuItemIndex);
    if (paper != nullptr) {
        UseNamedStock(*paper, data.context, data.stock);
    }
    return paper != nullptr;
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
        case kStockCommandNamed:
            if (ChooseNamed(data, command)) {
                Refresh(data);
            } else {
                answer = noErr;
            }
            break;
        case kStockCommandAdvanced: {
            SInt16 result = kAdvancedStockSelectionCancel;
            RunModalAdvancedStockSelection(data.bundle, data.mode, data.context, NamedPaperContext::office, data.stock,
                                           &result);
            if (result == kAdvancedStockSelectionOK) {
                // The window that shows all of a paper sees by itself whether that is still the one of its name.
                ShowsStockDetails() ? Refresh(data) : RefreshUnnamed(data);
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
    if (status == noErr && ShowsStockDetails()) {
        status = AppendNamedMenu(menu, bundle);
    }
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

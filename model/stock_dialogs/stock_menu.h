// The button by which a stock is edited: a menu with a submenu each for size, color and type of the paper.
//
// Each item of a submenu carries a ticket value as its reference value; kTicketValueUnset stands for the job's setting.
#pragma once

#include "model/stock/stock.h"
#include "model/stock_dialogs/dialog_mode.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Events.h"
#include "platform/toolbox/Menus.h"

#include <memory>
#include <vector>

// Commands of the menu's items.
inline constexpr OSType kStockCommandDefault = FourCharCode("Sdef");
inline constexpr OSType kStockCommandSize = FourCharCode("Ssiz");
inline constexpr OSType kStockCommandColor = FourCharCode("Sclr");
inline constexpr OSType kStockCommandType = FourCharCode("Styp");
inline constexpr OSType kStockCommandAdvanced = FourCharCode("Sadv");
/// On a printer that shows all of a paper (model/settings/plugin_state.h): a paper of the user's library, or the
/// library itself.
inline constexpr OSType kStockCommandNamed = FourCharCode("Snam");

/// The handlers that a stock menu has installed. They go with the list.
class StockMenuHandlers {
public:
    StockMenuHandlers() = default;
    ~StockMenuHandlers();
    StockMenuHandlers(const StockMenuHandlers&) = delete;
    StockMenuHandlers& operator=(const StockMenuHandlers&) = delete;

    [[nodiscard]] OSStatus install(EventTargetRef target, EventHandlerProcPtr handler, EventTypeSpec event,
                                   void* userData);

private:
    std::vector<EventHandlerRef> handlers_;
};

/// What a stock menu works on. It belongs to the panel or dialog that shows the button, as do the controls; all of them
/// live until FinalizeStockMenuButton().
struct _StockMenuCommandEventHandlerData {
    CFBundleRef bundle;  // lent
    Stock* stock;        // lent; edited. Null while there is none
    DialogMode mode;     // handed on to the advanced stock selection
    JobContext context;
    ControlRef summaryView;                       // shows the stock in words; may be null
    ControlRef icon;                              // a pane that shows it as a picture; may be null
    MenuRef menu;                                 // the button's; set by InitializeStockMenuButton()
    std::unique_ptr<StockMenuHandlers> handlers;  // the same
};

/// Fills the menu of a bevel button and lets it edit the data's stock; draws the data's icon. The control is null where
/// only the icon is wanted. Returns the first failing platform status.
OSStatus InitializeStockMenuButton(ControlRef control, _StockMenuCommandEventHandlerData* data);
/// Removes what InitializeStockMenuButton() installed.
OSStatus FinalizeStockMenuButton(ControlRef control, _StockMenuCommandEventHandlerData* data);

/// Replaces all items of the menu by the stock menu's. The job's own menu has no sizes: those are the page setup's.
OSStatus PopulateStockMenu(MenuRef menu, CFBundleRef bundle, JobContext context,
                           _StockMenuCommandEventHandlerData* data);

// Replace all items of a menu by the printer's sizes, colors or types of paper, with the commands above. Inserts and
// exceptions may also follow the job. Without such options in the PPD, little or nothing is left.
void PopulateStockSizeMenu(MenuRef menu, CFBundleRef bundle, JobContext context);
void PopulateStockColorMenu(MenuRef menu, CFBundleRef bundle, JobContext context);
void PopulateStockTypeMenu(MenuRef menu, CFBundleRef bundle, JobContext context);

/// Carries out a stock command on the data's stock, shows it, and passes the command on for the owner of the button to
/// see; only a custom size that the user gave up ends here. Menus that are about to open are left as they are.
OSStatus StockMenuCommandEventHandler(EventHandlerCallRef next, EventRef event, void* userData);

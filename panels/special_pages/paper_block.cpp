#include "panels/special_pages/paper_block.h"

#include "model/stock_dialogs/stock_view.h"
#include "ui/control_utilities.h"

OSStatus PaperBlock::install(const SpecialPagesWindow& window, SInt32 number, DialogMode mode, JobContext context) {
    button_ = window.find(number);
    data_.bundle = window.bundle();
    data_.mode = mode;
    data_.context = context;
    data_.summaryView = window.find(number + 1);
    data_.icon = window.find(number + 2);
    return InitializeStockMenuButton(button_, &data_);
}

void PaperBlock::show(Stock* stock) {
    data_.stock = stock;
    ShowStockSummary(data_.bundle, data_.summaryView, stock, data_.context);
    Draw1Control(data_.icon);
}

void PaperBlock::enableSizes(bool enabled) {
    for (MenuItemIndex item = 1; item <= CountMenuItems(data_.menu); ++item) {
        OSType command = 0;
        GetMenuItemCommandID(data_.menu, item, &command);
        if (command != kStockCommandSize) {
            continue;
        }
        MenuRef sizes = nullptr;
        GetMenuItemHierarchicalMenu(data_.menu, item, &sizes);
        if (enabled && CountMenuItems(sizes) > 0) {
            EnableMenuItem(data_.menu, item);
        } else {
            DisableMenuItem(data_.menu, item);
        }
    }
}

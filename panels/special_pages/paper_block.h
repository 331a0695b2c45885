// The paper of a special page in a dialog: the button with the stock menu, the summary and the picture.
#pragma once

#include "model/stock_dialogs/stock_menu.h"
#include "panels/special_pages/dialog_window.h"

class PaperBlock {
public:
    PaperBlock() = default;
    ~PaperBlock() { FinalizeStockMenuButton(button_, &data_); }
    PaperBlock(const PaperBlock&) = delete;
    PaperBlock& operator=(const PaperBlock&) = delete;

    /// The button has the number, the summary the next one, the picture the one after that. The window outlives the
    /// block.
    [[nodiscard]] OSStatus install(const SpecialPagesWindow& window, SInt32 number, DialogMode mode,
                                   JobContext context);

    /// Shows a stock and lets it be edited; none when it is null. It is lent until another one is shown.
    void show(Stock* stock);
    void enableSizes(bool enabled);
    [[nodiscard]] ControlRef button() const { return button_; }

private:
    ControlRef button_ = nullptr;
    _StockMenuCommandEventHandlerData data_{};
};

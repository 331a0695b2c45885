// The controls for what a production printer wants to know of paper, in the dialogs that show all of a stock.
#pragma once

#include "model/stock/stock_attributes.h"
#include "ui/nib_window.h"

class StockDetails {
public:
    /// Finds and fills the controls of the window and shows them. Nothing on a printer that wants to know nothing.
    void install(CFBundleRef bundle, WindowRef window);

    /// Shows what the stock is, and enables what makes sense for it.
    void show(const Stock& stock) const;
    /// The same, but for the fields of which one is typed into.
    void showChoices(const Stock& stock) const;
    /// Puts what the controls say into the stock. True when that changed it.
    bool take(Stock* stock) const;

    /// Marks what the printer cannot take. False when there is any.
    bool check(const Stock& stock) const;

    /// Adds to a pop-up of the printer's colors or types those that have a name of the user's own.
    static void appendNamedColors(CFBundleRef bundle, ControlRef popUp);
    static void appendNamedTypes(CFBundleRef bundle, ControlRef popUp);

private:
    [[nodiscard]] ControlRef find(SInt32 number) const;

    CFBundleRef bundle_ = nullptr;
    WindowRef window_ = nullptr;  // null where nothing is shown
};

/// Says at the field which values a number of the attribute may have, when it has another one. False then.
bool CheckStockNumber(CFBundleRef bundle, ControlRef field, const StockAttributeRow& row, SInt32 number);

/// The text of a field.
CFRef<CFStringRef> CopyFieldText(ControlRef field);
void SetFieldText(ControlRef field, CFStringRef text);
/// The whole number in a field; kTicketValueUnset for an empty one.
SInt32 EnteredNumber(ControlRef field);
void ShowNumber(ControlRef field, SInt32 number);

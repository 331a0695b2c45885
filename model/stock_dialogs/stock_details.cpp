#include "model/stock_dialogs/stock_details.h"

#include "model/settings/number_text.h"
#include "model/settings/plugin_state.h"
#include "model/stock/stock_attributes.h"
#include "model/stock_dialogs/stock_menu.h"
#include "platform/foundation/CFNumberFormatter.h"
#include "platform/foundation/CFString.h"
#include "ui/localization.h"
#include "ui/message_text.h"
#include "ui/setting_menus.h"
#include "ui/text_input.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace {

constexpr SInt32 kPane = 22020;
constexpr SInt32 kHiddenLabels[] = {22007, 22011, 22040, 22041};
constexpr SInt32 kTabs = 22066;
constexpr SInt32 kTabsLabels[] = {22040, 22041};
constexpr SInt32 kColorName = 22067;
constexpr SInt32 kColorNameLabel = 22007;
constexpr SInt32 kTypeName = 22068;
constexpr SInt32 kTypeNameLabel = 22011;

constexpr SInt32 kLongestName = 60;
constexpr SInt32 kTabsDigits = 2;

struct PopUpRow {
    SInt32 number;
    StockAttribute attribute;
};
constexpr PopUpRow kPopUps[] = {
    // number, attribute
    {22061, StockAttribute::coatedSides}, {22062, StockAttribute::coating}, {22063, StockAttribute::finish},
    {22064, StockAttribute::grain},       {22065, StockAttribute::holes},
};
constexpr SInt32 kCoating = 22062;

void Append(CFBundleRef bundle, MenuRef menu, const char* key, SInt32 value, OSType command) {
    MenuItemIndex item = 0;
    AppendMenuItemTextWithCFString(menu, CopyLocalizedText(bundle, CFStringMakeConstant(key)).get(), 0, command, &item);
    SetMenuItemRefCon(menu, item, value);
}

void FillPopUp(CFBundleRef bundle, ControlRef popUp, const StockAttributeRow& row) {
    const MenuRef menu = GetControlPopupMenuHandle(popUp);
    DeleteMenuItems(menu, 1, CountMenuItems(menu));
    Append(bundle, menu, "Stock Any", kTicketValueUnset, 0);
    for (const StockAttributeChoice& choice : row.choices) {
        Append(bundle, menu, choice.nameKey, choice.value, 0);
    }
    SetControl32BitMaximum(popUp, CountMenuItems(menu));
}

void Enable(ControlRef control, bool isEnabled) {
    isEnabled ? EnableControl(control) : DisableControl(control);
}

// ---- Whether a detail makes sense for a stock

bool HasCoating(const Stock& stock) {
    return stock.sidesCoated() != kTicketValueUnset && stock.sidesCoated() != kStockUncoated;
}

bool HasTabs(const Stock& stock) {
    constexpr std::array<SInt32, 5> kTypes{kStockTypePrecutTab, kStockTypeFullCutTab, kStockTypeOrdered,
                                           kStockTypeTabStock, kStockTypeHeavyTabStock};
    return std::ranges::find(kTypes, stock.type()) != kTypes.end();
}

bool HasColorName(const Stock& stock) {
    return stock.color() == kStockColorCustom;
}

bool HasTypeName(const Stock& stock) {
    return stock.type() == kStockTypeOrdered || stock.type() == kStockTypeCustom;
}

}  // namespace

bool CheckStockNumber(CFBundleRef bundle, ControlRef field, const StockAttributeRow& row, SInt32 number) {
    const bool isValid = number == kTicketValueUnset || (number >= row.minimum && number <= row.maximum);
    const auto text = [](SInt32 limit) {
        return CFRef<CFStringRef>::adopt(CreateLocalizedCFStringFromNumberWithDecimals(limit, 0));
    };
    const auto range = CopyFilledInMessage(CopyLocalizedText(bundle, CFSTR("Stock Number Range")).get(),
                                           {text(row.minimum).get(), text(row.maximum).get()});
    HIViewSetFieldMessage(field, isValid ? nullptr : range.get(), !isValid);
    return isValid;
}

CFRef<CFStringRef> CopyFieldText(ControlRef field) {
    CFStringRef text = nullptr;
    GetControlData(field, kControlEntireControl, kControlEditTextCFStringTag, sizeof text, &text, nullptr);
    return text != nullptr ? CFRef<CFStringRef>::adopt(text) : CFRef<CFStringRef>::retain(CFSTR(""));
}

void SetFieldText(ControlRef field, CFStringRef text) {
    SetControlData(field, kControlEntireControl, kControlEditTextCFStringTag, sizeof text, &text);
}

SInt32 EnteredNumber(ControlRef field) {
    const auto locale = CFRef<CFLocaleRef>::adopt(CFLocaleCopyCurrent());
    const auto formatter = CFRef<CFNumberFormatterRef>::adopt(
        CFNumberFormatterCreate(kCFAllocatorDefault, locale.get(), kCFNumberFormatterDecimalStyle));
    SInt32 number = kTicketValueUnset;
    CFNumberFormatterGetValueFromString(formatter.get(), CopyFieldText(field).get(), nullptr, kCFNumberSInt32Type,
                                        &number);
    return number;
}

void ShowNumber(ControlRef field, SInt32 number) {
    const auto text = number == kTicketValueUnset
                          ? CFRef<CFStringRef>::retain(CFSTR(""))
                          : CFRef<CFStringRef>::adopt(CreateLocalizedCFStringFromNumberWithDecimals(number, 0));
    SetFieldText(field, text.get());
}

void StockDetails::install(CFBundleRef bundle, WindowRef window) {
    bundle_ = bundle;
    window_ = ShowsStockDetails() ? window : nullptr;
    if (window_ == nullptr) {
        return;
    }
    for (const SInt32 number : kHiddenLabels) {
        ShowControl(find(number));
    }
    for (const PopUpRow& row : kPopUps) {
        FillPopUp(bundle_, find(row.number), StockAttributeRowOf(row.attribute));
    }
    FilterNumericInput(find(kTabs));
    LimitInputLength(find(kTabs), kTabsDigits);
    for (const SInt32 number : {kColorName, kTypeName}) {
        LimitInputLengthAndCharacters(find(number), kLongestName, nullptr);
    }
    ShowControl(find(kPane));
}

ControlRef StockDetails::find(SInt32 number) const {
    const ControlID id{FourCharCode("TPDE"), number};
    ControlRef control = nullptr;
    GetControlByID(window_, &id, &control);
    return control;
}

void StockDetails::showChoices(const Stock& stock) const {
    if (window_ == nullptr) {
        return;
    }
    for (const PopUpRow& row : kPopUps) {
        SetControl32BitValue(find(row.number), 0);
        SetPopupButtonToTicketValue(find(row.number), StockAttributeOf(stock, StockAttributeRowOf(row.attribute)));
    }
    Enable(find(kCoating), HasCoating(stock));
    Enable(find(kTabs), HasTabs(stock));
    for (const SInt32 number : kTabsLabels) {
        Enable(find(number), HasTabs(stock));
    }
    Enable(find(kColorName), HasColorName(stock));
    Enable(find(kColorNameLabel), HasColorName(stock));
    Enable(find(kTypeName), HasTypeName(stock));
    Enable(find(kTypeNameLabel), HasTypeName(stock));
}

void StockDetails::show(const Stock& stock) const {
    if (window_ == nullptr) {
        return;
    }
    ShowNumber(find(kTabs), stock.modulus());
    SetFieldText(find(kColorName), stock.customColor());
    SetFieldText(find(kTypeName), stock.customType());
    showChoices(stock);
}

bool StockDetails::check(const Stock& stock) const {
    return window_ == nullptr || CheckStockNumber(bundle_, find(kTabs), StockAttributeRowOf(StockAttribute::tabs),
                                                  HasTabs(stock) ? stock.modulus() : kTicketValueUnset);
}

bool StockDetails::take(Stock* stock) const {
    if (window_ == nullptr) {
        return false;
    }
    const Stock before(*stock);
    for (const PopUpRow& row : kPopUps) {
        // A value of another edition has no item, and stays.
        if (GetControl32BitValue(find(row.number)) > 0) {
            (stock->*StockAttributeRowOf(row.attribute).set)(GetPopupButtonTicketValue(find(row.number)));
        }
    }
    if (HasCoating(*stock) && stock->coatingType() == kTicketValueUnset && !HasCoating(before)) {
        stock->setCoatingType(1);  // as the record begins with
    }
    stock->setModulus(HasTabs(*stock) ? EnteredNumber(find(kTabs)) : kTicketValueUnset);
    stock->setCustomColor(HasColorName(*stock) ? CopyFieldText(find(kColorName)).get() : CFSTR(""));
    stock->setCustomType(HasTypeName(*stock) ? CopyFieldText(find(kTypeName)).get() : CFSTR(""));
    return !(*stock == before);
}

void StockDetails::appendNamedColors(CFBundleRef bundle, ControlRef popUp) {
    Append(bundle, GetControlPopupMenuHandle(popUp), "StockColorByName", kStockColorCustom, kStockCommandColor);
}

void StockDetails::appendNamedTypes(CFBundleRef bundle, ControlRef popUp) {
    const MenuRef menu = GetControlPopupMenuHandle(popUp);
    Append(bundle, menu, "StockTypePrecutTab", kStockTypePrecutTab, kStockCommandType);
    Append(bundle, menu, "StockTypeFullCutTab", kStockTypeFullCutTab, kStockCommandType);
    Append(bundle, menu, "StockTypeOrdered", kStockTypeOrdered, kStockCommandType);
    Append(bundle, menu, "StockTypeByName", kStockTypeCustom, kStockCommandType);
}

#include "watermark/panel/watermark_controls.h"

#include "platform/toolbox/DataBrowser.h"
#include "ui/list_control.h"
#include "ui/message_text.h"

#include <initializer_list>
#include <vector>

CFRef<CFMutableArrayRef> listOfWatermarks;
WatermarkContext* gMyContext = nullptr;

namespace {

constexpr DataBrowserPropertyID kNameColumn = FourCharCode("NAME");
constexpr CFIndex kLongestShown = 200;

// A row's id is the address of its name.
DataBrowserItemID RowOf(CFStringRef name) {
    return reinterpret_cast<DataBrowserItemID>(name);
}
CFStringRef NameOf(DataBrowserItemID row) {
    return reinterpret_cast<CFStringRef>(row);  // NOLINT(performance-no-int-to-ptr): a row is its name's address
}

/// The names of a panel that has ended are gone, though its browser may still be drawn.
bool IsOwnBrowser(ControlRef browser) {
    return gMyContext != nullptr && gMyContext->browser == browser;
}

OSStatus MyItemData(ControlRef browser, DataBrowserItemID item, DataBrowserPropertyID property,
                    DataBrowserItemDataRef itemData, Boolean) {
    if (!IsOwnBrowser(browser)) {
        return errDataBrowserPropertyNotFound;
    }
    return property == kNameColumn
               ? SetDataBrowserItemDataText(itemData, CopyTextForOneLine(NameOf(item), kLongestShown).get())
               : errDataBrowserPropertyNotSupported;
}

void MyItemNotification(ControlRef browser, DataBrowserItemID item, DataBrowserItemNotification message) {
    if (!IsOwnBrowser(browser)) {
        return;
    }
    switch (message) {
        case kDataBrowserItemSelected:
            gMyContext->selection = NameOf(item);
            break;
        case kDataBrowserItemDeselected:
            if (gMyContext->selection == NameOf(item)) {
                gMyContext->selection = nullptr;
            }
            break;
        default:
            return;
    }
    toggleControls(*gMyContext);
}

}  // namespace

ControlRef FindWatermarkControl(const WatermarkContext& context, SInt32 number) {
    ControlRef control = nullptr;
    HIViewFindByID(context.pane, {kWatermarkSignature, number}, &control);
    return control;
}

bool IsWatermarkSelected(const WatermarkContext& context) {
    return context.selection != nullptr && context.selection != context.noneName.get();
}

void toggleControls(const WatermarkContext& context) {
    for (const SInt32 number : {kWatermarkFirstPageOnly, kWatermarkOption, kWatermarkEdit, kWatermarkDelete}) {
        const ControlRef control = FindWatermarkControl(context, number);
        IsWatermarkSelected(context) ? EnableControl(control) : DisableControl(control);
    }
}

void SelectWatermark(WatermarkContext* context, CFStringRef name) {
    context->selection = name;
    const DataBrowserItemID row = RowOf(name);
    SetDataBrowserSelectedItems(context->browser, 1, &row, kDataBrowserItemsAssign);
    RevealDataBrowserItem(context->browser, row, kDataBrowserItemNoProperty, kDataBrowserRevealOnly);
    toggleControls(*context);
}

void PrepareWatermarkBrowser(WatermarkContext* context) {
    context->browser = FindWatermarkControl(*context, kWatermarkBrowser);
    SetDataBrowserSelectionFlags(context->browser, kDataBrowserSelectOnlyOne | kDataBrowserNeverEmptySelectionSet);
    SetListCallbacks(context->browser, MyItemData, MyItemNotification);

    std::vector<DataBrowserItemID> rows{RowOf(context->noneName.get())};
    for (CFIndex i = 0; i < CFArrayGetCount(listOfWatermarks.get()); ++i) {
        rows.push_back(RowOf(static_cast<CFStringRef>(CFArrayGetValueAtIndex(listOfWatermarks.get(), i))));
    }
    AddDataBrowserItems(context->browser, kDataBrowserNoItem, static_cast<ItemCount>(rows.size()), rows.data(),
                        kDataBrowserItemNoProperty);
}

void AddWatermarkRow(const WatermarkContext& context, CFStringRef name) {
    const DataBrowserItemID row = RowOf(name);
    AddDataBrowserItems(context.browser, kDataBrowserNoItem, 1, &row, kDataBrowserItemNoProperty);
}

void RemoveWatermarkRow(const WatermarkContext& context, CFStringRef name) {
    const DataBrowserItemID row = RowOf(name);
    RemoveDataBrowserItems(context.browser, kDataBrowserNoItem, 1, &row, kDataBrowserItemNoProperty);
}

void UpdateWatermarkRow(const WatermarkContext& context, CFStringRef name) {
    const DataBrowserItemID row = RowOf(name);
    UpdateDataBrowserItems(context.browser, kDataBrowserNoItem, 1, &row, kDataBrowserItemNoProperty, kNameColumn);
}

#include "model/stock_dialogs/stock_view.h"

#include "model/stock/stock_icon.h"
#include "model/stock/stock_summary.h"
#include "model/stock_dialogs/stock_menu.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/text.h"
#include "ui/control_utilities.h"
#include "ui/draw_image.h"
#include "ui/localization.h"

OSStatus ShowStockSummary(CFBundleRef bundle, ControlRef textView, const Stock* stock, JobContext context) {
    if (bundle == nullptr || textView == nullptr) {
        return paramErr;
    }
    if (stock == nullptr) {
        return UpdateSummaryTextView(textView, CFSTR(""));
    }
    CFRef<CFStringRef> summary = GenerateStockDescription(bundle, context, *stock, CFSTR("\n"));
    if (CFStringGetLength(summary.get()) == 0) {
        summary =
            CopyLocalizedText(bundle, context == JobContext::job ? CFSTR("PrinterDefault") : CFSTR("UseJobSetting"));
    }
    return UpdateSummaryTextView(textView, summary.get());
}

OSStatus StockIconEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    const auto* data = static_cast<const _StockMenuCommandEventHandlerData*>(userData);
    ControlRef icon = nullptr;
    GetEventParameter(event, kEventParamDirectObject, typeControlRef, nullptr, sizeof icon, nullptr, &icon);
    if (data->stock == nullptr) {
        return eventNotHandledErr;
    }
    bool keepBackground = false;
    for (const std::string& file : StockIconFiles(*data->stock, data->context)) {
        DrawImage(makeString(file).get(), icon, keepBackground);
        keepBackground = true;
    }
    return eventNotHandledErr;
}

#include "model/stock_dialogs/stock_description.h"

#include "platform/foundation/CFString.h"
#include "platform/toolbox/Events.h"
#include "ui/help.h"
#include "ui/nib_window.h"

namespace {

constexpr ControlID kDescriptionID = {FourCharCode("TPDE"), 20200};
constexpr EventTypeSpec kCommandEvents[] = {{kEventClassCommand, kEventCommandProcess}};

struct StockDescriptionContext {
    CFBundleRef bundle;
    WindowFromNib window;
    ControlRef description;
    Stock* stock;
    SInt16 result;
};

OSStatus End(StockDescriptionContext* context, SInt16 result) {
    context->result = result;
    return QuitAppModalLoopForWindow(context->window.get());
}

void TakeDescription(const StockDescriptionContext& context) {
    CFStringRef text = nullptr;
    if (GetControlData(context.description, kControlEntireControl, kControlEditTextCFStringTag, sizeof text, &text,
                       nullptr) == noErr) {
        context.stock->setDescription(CFRef<CFStringRef>::adopt(text).get());
    }
}

OSStatus StockDescriptionEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    auto* context = static_cast<StockDescriptionContext*>(userData);
    HICommand command{};
    GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr, &command);
    switch (command.commandID) {
        case FourCharCode("ok  "):
            TakeDescription(*context);
            return End(context, kStockDescriptionOK);
        case FourCharCode("not!"):
            return End(context, kStockDescriptionCancel);
        case FourCharCode("Thlp"):
            return DisplayHelp(context->bundle, nullptr,
                               CFSTR("popup_DB/Production/IDH_TG_Named_Paper_Description.htm"));
        default:
            return eventNotHandledErr;
    }
}

}  // namespace

OSStatus RunModalStockDescriptionSetup(CFBundleRef bundle, DialogMode mode, JobContext, Stock* stock, SInt16* result) {
    *result = kStockDescriptionCancel;
    StockDescriptionContext context{.bundle = bundle, .stock = stock, .result = kStockDescriptionCancel};
    OSStatus status = context.window.load(bundle, CFSTR("StockDescriptionSetup"), CFSTR("StockDescriptionSetup"));
    if (status != noErr) {
        return status;
    }
    GetControlByID(context.window.get(), &kDescriptionID, &context.description);
    if (mode == DialogMode::edit) {
        const CFStringRef text = stock->description();
        SetControlData(context.description, kControlEntireControl, kControlEditTextCFStringTag, sizeof text, &text);
    }
    SetKeyboardFocus(context.window.get(), context.description);
    status = InstallWindowEventHandler(context.window.get(), StockDescriptionEventHandler, std::size(kCommandEvents),
                                       kCommandEvents, &context, nullptr);
    if (status == noErr) {
        RunAppModalLoopForWindow(context.window.get());
        *result = context.result;
    }
    return status;
}

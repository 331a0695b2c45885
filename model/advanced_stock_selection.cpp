#include "model/advanced_stock_selection.h"

#include "model/stock_menu.h"
#include "model/stock_view.h"
#include "platform/foundation/CFNumberFormatter.h"
#include "platform/foundation/CFString.h"
#include "ui/control_utilities.h"
#include "ui/help.h"
#include "ui/nib_window.h"
#include "ui/number_text.h"
#include "ui/setting_menus.h"
#include "ui/text_input.h"

namespace {

constexpr OSType kSignature = FourCharCode("TPDE");
constexpr ControlID kSummaryID = {kSignature, 22000};
constexpr ControlID kSizeID = {kSignature, 22001};
constexpr ControlID kColorID = {kSignature, 22002};
constexpr ControlID kTypeID = {kSignature, 22003};
constexpr ControlID kSizeLabelID = {kSignature, 22008};
constexpr ControlID kColorLabelID = {kSignature, 22009};
constexpr ControlID kWeightID = {kSignature, 22010};
constexpr ControlID kIconID = {kSignature, 22050};

constexpr SInt16 kSummaryFontSize = 10;
constexpr SInt32 kWeightDigits = 5;

constexpr EventTypeSpec kDialogEvents[] = {{kEventClassCommand, kEventCommandProcess},
                                           {kEventClassControl, kEventControlHit}};
constexpr EventTypeSpec kStockEvents[] = {{kEventClassCommand, kEventCommandProcess}};
constexpr EventTypeSpec kTextEvents[] = {{kEventClassTextInput, kEventTextInputUnicodeForKeyEvent}};

struct AdvancedStockSelectionContext {
    CFBundleRef bundle;
    NamedPaperContext namedPaperContext;
    WindowFromNib window;
    SInt16 result;
    Stock stock;  // a copy
    ControlRef size;
    ControlRef color;
    ControlRef type;
    ControlRef weight;  // null in windows without one
    _StockMenuCommandEventHandlerData data;
};

ControlRef Find(const AdvancedStockSelectionContext& context, ControlID id) {
    ControlRef control = nullptr;
    GetControlByID(context.window.get(), &id, &control);
    return control;
}

// ---- What the controls show

void ShowSummary(const AdvancedStockSelectionContext& context) {
    ShowStockSummary(context.bundle, context.data.summaryView, &context.stock, context.data.context);
    Draw1Control(context.data.icon);
}

/// Selects the item of a value; nothing where the printer has no such item.
void SelectValue(ControlRef popUp, SInt32 value) {
    SetControl32BitValue(popUp, 0);
    SetPopupButtonToTicketValue(popUp, value);
}

void ShowChoices(const AdvancedStockSelectionContext& context) {
    if (context.data.context != JobContext::job) {
        SelectValue(context.size, context.stock.size());
    }
    SelectValue(context.color, context.stock.color());
    SelectValue(context.type, context.stock.type());
}

void DisableWithLabel(ControlRef popUp, ControlRef label) {
    SetControl32BitValue(popUp, 0);
    DisableControl(popUp);
    DisableControl(label);
}

using PopulateProc = void (*)(MenuRef menu, CFBundleRef bundle, JobContext context);

/// A pop-up without a choice of the printer's is disabled.
void FillPopUp(const AdvancedStockSelectionContext& context, ControlRef popUp, ControlRef label,
               PopulateProc populate) {
    const MenuRef menu = GetControlPopupMenuHandle(popUp);
    populate(menu, context.bundle, context.data.context);
    SetControl32BitMaximum(popUp, CountMenuItems(menu));
    if (CountMenuItems(menu) == 0) {
        DisableWithLabel(popUp, label);
    }
}

void RevertToDefaults(AdvancedStockSelectionContext* context) {
    if (context->data.context != JobContext::job) {
        context->stock.setSize(1);
    }
    context->stock.setColor(kStockColorWhite);
    context->stock.setType(kStockTypeStandard);
    context->stock.setPunched(kTicketValueUnset);
    context->stock.setDescription(CFSTR(""));
    ShowChoices(*context);
    ShowSummary(*context);
}

// ---- Weight

/// kTicketValueUnset for an empty field.
SInt32 EnteredWeight(ControlRef field) {
    CFStringRef text = nullptr;
    GetControlData(field, kControlEntireControl, kControlEditTextCFStringTag, sizeof text, &text, nullptr);
    const auto owned = CFRef<CFStringRef>::adopt(text);
    const auto locale = CFRef<CFLocaleRef>::adopt(CFLocaleCopyCurrent());
    const auto formatter = CFRef<CFNumberFormatterRef>::adopt(
        CFNumberFormatterCreate(kCFAllocatorDefault, locale.get(), kCFNumberFormatterDecimalStyle));
    SInt32 weight = kTicketValueUnset;
    CFNumberFormatterGetValueFromString(formatter.get(), text, nullptr, kCFNumberSInt32Type, &weight);
    return weight;
}

/// Lets digits into the field, and the number that they make into the stock.
OSStatus StockWeightInputEventHandler(EventHandlerCallRef next, EventRef event, void* userData) {
    const OSStatus status = NumericInputFilterHandler(next, event, nullptr);
    auto* context = static_cast<AdvancedStockSelectionContext*>(userData);
    context->stock.setWeight(EnteredWeight(context->weight));
    ShowSummary(*context);
    return status;
}

void ShowWeight(AdvancedStockSelectionContext* context) {
    if (context->weight == nullptr) {
        return;
    }
    if (context->stock.weight() != kTicketValueUnset) {
        const auto text =
            CFRef<CFStringRef>::adopt(CreateLocalizedCFStringFromNumberWithDecimals(context->stock.weight(), 0));
        const CFStringRef data = text.get();
        SetControlData(context->weight, kControlEntireControl, kControlEditTextCFStringTag, sizeof data, &data);
    }
    InstallControlEventHandler(context->weight, StockWeightInputEventHandler, std::size(kTextEvents), kTextEvents,
                               context, nullptr);
    LimitInputLength(context->weight, kWeightDigits);
}

// ---- Events

OSStatus ShowHelp(const AdvancedStockSelectionContext& context) {
    return DisplayHelp(context.bundle, nullptr,
                       context.namedPaperContext == NamedPaperContext::stockLibrary
                           ? CFSTR("Mac_topics/MPRDNP_new_edit_named_paper.htm")
                           : CFSTR("Mac_topics/MPRDNP_Adv_Paper_Selection.htm"));
}

OSStatus End(AdvancedStockSelectionContext* context, SInt16 result) {
    context->result = result;
    return QuitAppModalLoopForWindow(context->window.get());
}

OSStatus HandleCommand(AdvancedStockSelectionContext* context, OSType command) {
    switch (command) {
        case FourCharCode("ok  "):
            return End(context, kAdvancedStockSelectionOK);
        case FourCharCode("not!"):
            return End(context, kAdvancedStockSelectionCancel);
        case FourCharCode("Thlp"):
            return ShowHelp(*context);
        case FourCharCode("rvrt"):
            RevertToDefaults(context);
            return noErr;
        case kStockCommandType:
            SelectValue(context->color, context->stock.color());
            return noErr;
        default:
            return eventNotHandledErr;
    }
}

OSStatus AdvancedStockSelectionEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    auto* context = static_cast<AdvancedStockSelectionContext*>(userData);
    if (GetEventClass(event) == kEventClassControl) {
        // A pop-up's hit follows its command. By now a custom size may have been given up.
        ControlRef control = nullptr;
        GetEventParameter(event, kEventParamDirectObject, typeControlRef, nullptr, sizeof control, nullptr, &control);
        if (control == context->size) {
            SelectValue(context->size, context->stock.size());
        }
        return eventNotHandledErr;
    }
    HICommand command{};
    GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr, &command);
    return HandleCommand(context, command.commandID);
}

OSStatus InitializeAdvancedStockSelection(AdvancedStockSelectionContext* context) {
    OSStatus status = context->window.load(context->bundle, CFSTR("AdvancedStockSelection"),
                                           context->namedPaperContext == NamedPaperContext::stockLibrary
                                               ? CFSTR("StockLibraryStockSelection")
                                               : CFSTR("Office"));
    if (status != noErr) {
        return status;
    }
    context->data.stock = &context->stock;
    context->data.summaryView = Find(*context, kSummaryID);
    context->data.icon = Find(*context, kIconID);
    context->size = Find(*context, kSizeID);
    context->color = Find(*context, kColorID);
    context->type = Find(*context, kTypeID);
    context->weight = Find(*context, kWeightID);

    SetupTextViewControl(context->data.summaryView, kSummaryFontSize);
    if (context->data.context == JobContext::job) {
        DisableWithLabel(context->size, Find(*context, kSizeLabelID));
    } else {
        FillPopUp(*context, context->size, Find(*context, kSizeLabelID), PopulateStockSizeMenu);
    }
    FillPopUp(*context, context->color, Find(*context, kColorLabelID), PopulateStockColorMenu);
    FillPopUp(*context, context->type, nullptr, PopulateStockTypeMenu);
    ShowChoices(*context);
    ShowSummary(*context);
    ShowWeight(context);

    status = InitializeStockMenuButton(nullptr, &context->data);
    if (status == noErr) {
        status = InstallWindowEventHandler(context->window.get(), AdvancedStockSelectionEventHandler,
                                           std::size(kDialogEvents), kDialogEvents, context, nullptr);
    }
    if (status == noErr) {
        // In front of the dialog's own, which shows what has become of the stock.
        status = InstallWindowEventHandler(context->window.get(), StockMenuCommandEventHandler, std::size(kStockEvents),
                                           kStockEvents, &context->data, nullptr);
    }
    return status;
}

}  // namespace

OSStatus RunModalAdvancedStockSelection(CFBundleRef bundle, DialogMode mode, JobContext context,
                                        NamedPaperContext namedPaperContext, Stock* stock, SInt16* result) {
    *result = kAdvancedStockSelectionCancel;
    AdvancedStockSelectionContext dialog{.bundle = bundle,
                                         .namedPaperContext = namedPaperContext,
                                         .result = kAdvancedStockSelectionCancel,
                                         .stock = *stock,
                                         .data = {.bundle = bundle, .mode = mode, .context = context}};
    if (const OSStatus status = InitializeAdvancedStockSelection(&dialog); status != noErr) {
        return status;
    }
    RunAppModalLoopForWindow(dialog.window.get());
    *result = dialog.result;
    if (dialog.result == kAdvancedStockSelectionOK) {
        *stock = dialog.stock;
    }
    return noErr;
}

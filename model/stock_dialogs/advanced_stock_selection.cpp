#include "model/stock_dialogs/advanced_stock_selection.h"

#include "model/settings/plugin_state.h"
#include "model/stock_dialogs/stock_description.h"
#include "model/stock_dialogs/stock_details.h"
#include "model/stock_dialogs/stock_library_dialog.h"
#include "model/stock_dialogs/stock_menu.h"
#include "model/stock_dialogs/stock_view.h"
#include "platform/foundation/CFString.h"
#include "ui/control_utilities.h"
#include "ui/help.h"
#include "ui/nib_window.h"
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
constexpr ControlID kLibraryID = {kSignature, 22030};  // of the library's own window: that of the description
constexpr ControlID kIconID = {kSignature, 22050};
constexpr ControlID kNameID = {kSignature, 22069};
constexpr ControlID kCommentID = {kSignature, 22070};
constexpr ControlID kDescriptionID = {kSignature, 22071};

constexpr OSType kDescribeCommand = FourCharCode("Sdsc");
constexpr OSType kLibraryCommand = FourCharCode("Slib");

constexpr SInt32 kWeightDigits = 5;
constexpr SInt32 kLongestName = 80;
constexpr SInt32 kLongestComment = 1000;

constexpr EventTypeSpec kDialogEvents[] = {{kEventClassCommand, kEventCommandProcess},
                                           {kEventClassControl, kEventControlHit},
                                           {kEventClassTextInputChange, kEventInputIsEmpty},
                                           {kEventClassTextInputChange, kEventInputHasText}};
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
    ControlRef name;    // these three of the library's own window, null in another
    ControlRef comment;
    ControlRef description;
    StockDetails details;
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

/// A production printer's weight and tabs have limits; what is typed beyond them cannot be accepted.
bool CheckNumbers(const AdvancedStockSelectionContext& context) {
    if (!ShowsStockDetails()) {
        return true;
    }
    const bool isWeight = context.weight == nullptr ||
                          CheckStockNumber(context.bundle, context.weight, StockAttributeRowOf(StockAttribute::weight),
                                           context.stock.weight());
    const bool areDetails = context.details.check(context.stock);
    ControlRef button = nullptr;
    GetWindowDefaultButton(context.window.get(), &button);
    isWeight&& areDetails ? EnableControl(button) : DisableControl(button);
    return isWeight && areDetails;
}

/// A paper that was changed is no longer the one of its name. The library's own window asks for that.
void Changed(AdvancedStockSelectionContext* context) {
    if (context->name == nullptr) {
        context->stock.setCustomName(CFSTR(""));
        context->stock.setCustomNameOnly(false);
    }
    ShowSummary(*context);
    CheckNumbers(*context);
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

void ForgetDetails(Stock* stock) {
    stock->setWeight(kTicketValueUnset);
    stock->setModulus(kTicketValueUnset);
    stock->setSidesCoated(kTicketValueUnset);
    stock->setFinish(kTicketValueUnset);
    stock->setGrain(kTicketValueUnset);
    stock->setCustomColor(CFSTR(""));
    stock->setCustomType(CFSTR(""));
}

void ShowDescription(const AdvancedStockSelectionContext& context) {
    const CFStringRef text = context.stock.description();
    SetControlData(context.description, kControlEntireControl, kControlStaticTextCFStringTag, sizeof text, &text);
}

void RevertToDefaults(AdvancedStockSelectionContext* context) {
    if (context->data.context != JobContext::job) {
        context->stock.setSize(1);
    }
    context->stock.setColor(kStockColorWhite);
    context->stock.setType(kStockTypeStandard);
    context->stock.setPunched(kTicketValueUnset);
    context->stock.setDescription(CFSTR(""));
    if (ShowsStockDetails()) {
        ForgetDetails(&context->stock);
        ShowNumber(context->weight, context->stock.weight());
    }
    ShowDescription(*context);
    context->details.show(context->stock);
    ShowChoices(*context);
    Changed(context);
}

// ---- Weight

/// Lets digits into the field, and the number that they make into the stock.
OSStatus StockWeightInputEventHandler(EventHandlerCallRef next, EventRef event, void* userData) {
    const OSStatus status = NumericInputFilterHandler(next, event, nullptr);
    auto* context = static_cast<AdvancedStockSelectionContext*>(userData);
    context->stock.setWeight(EnteredNumber(context->weight));
    Changed(context);
    return status;
}

void ShowWeight(AdvancedStockSelectionContext* context) {
    if (context->weight == nullptr) {
        return;
    }
    ShowNumber(context->weight, context->stock.weight());
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

void ShowAll(AdvancedStockSelectionContext* context) {
    ShowNumber(context->weight, context->stock.weight());
    context->details.show(context->stock);
    ShowChoices(*context);
    ShowSummary(*context);
    CheckNumbers(*context);
}

void ChooseFromLibrary(AdvancedStockSelectionContext* context) {
    SInt16 result = kStockLibraryCancel;
    RunModalStockLibrary(context->bundle, context->data.context, &context->stock, &result);
    if (result == kStockLibraryOK) {
        ShowAll(context);
    }
}

void Describe(AdvancedStockSelectionContext* context) {
    SInt16 result = kStockDescriptionCancel;
    RunModalStockDescriptionSetup(context->bundle, DialogMode::edit, context->data.context, &context->stock, &result);
    ShowDescription(*context);
}

void TakeTexts(AdvancedStockSelectionContext* context) {
    context->details.take(&context->stock);
    if (context->name != nullptr) {
        context->stock.setCustomName(CopyFieldText(context->name).get());
        context->stock.setComment(CopyFieldText(context->comment).get());
    }
}

OSStatus HandleCommand(AdvancedStockSelectionContext* context, OSType command) {
    switch (command) {
        case FourCharCode("ok  "):
            TakeTexts(context);
            return CheckNumbers(*context) ? End(context, kAdvancedStockSelectionOK) : noErr;
        case FourCharCode("not!"):
            return End(context, kAdvancedStockSelectionCancel);
        case FourCharCode("Thlp"):
            return ShowHelp(*context);
        case FourCharCode("rvrt"):
            RevertToDefaults(context);
            return noErr;
        case kDescribeCommand:
            Describe(context);
            return noErr;
        case kLibraryCommand:
            ChooseFromLibrary(context);
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
    if (GetEventClass(event) == kEventClassTextInputChange) {
        if (context->details.take(&context->stock)) {
            Changed(context);
        }
        return eventNotHandledErr;
    }
    if (GetEventClass(event) == kEventClassControl) {
        // A pop-up's hit follows its command. By now a custom size may have been given up.
        ControlRef control = nullptr;
        GetEventParameter(event, kEventParamDirectObject, typeControlRef, nullptr, sizeof control, nullptr, &control);
        if (control == context->size) {
            SelectValue(context->size, context->stock.size());
        }
        if (context->details.take(&context->stock)) {
            Changed(context);
        }
        context->details.showChoices(context->stock);
        CheckNumbers(*context);
        return eventNotHandledErr;
    }
    HICommand command{};
    GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr, &command);
    return HandleCommand(context, command.commandID);
}

void InstallDetails(AdvancedStockSelectionContext* context) {
    if (context->name != nullptr) {
        SetFieldText(context->name, context->stock.customName());
        LimitInputLength(context->name, kLongestName);
        SetFieldText(context->comment, context->stock.comment());
        LimitInputLength(context->comment, kLongestComment);
        ShowDescription(*context);
        SetKeyboardFocus(context->window.get(), context->name);
    }
    if (ShowsStockDetails()) {
        ShowControl(Find(*context, kLibraryID));
        StockDetails::appendNamedColors(context->bundle, context->color);
        StockDetails::appendNamedTypes(context->bundle, context->type);
    }
    context->details.install(context->bundle, context->window.get());
    context->details.show(context->stock);
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
    context->name = Find(*context, kNameID);
    context->comment = Find(*context, kCommentID);
    context->description = Find(*context, kDescriptionID);

    SetupTextViewControl(context->data.summaryView, kUserFontSize);
    if (context->data.context == JobContext::job) {
        DisableWithLabel(context->size, Find(*context, kSizeLabelID));
    } else {
        FillPopUp(*context, context->size, Find(*context, kSizeLabelID), PopulateStockSizeMenu);
    }
    FillPopUp(*context, context->color, Find(*context, kColorLabelID), PopulateStockColorMenu);
    FillPopUp(*context, context->type, nullptr, PopulateStockTypeMenu);
    InstallDetails(context);
    ShowChoices(*context);
    ShowSummary(*context);
    ShowWeight(context);
    CheckNumbers(*context);

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

#include "model/stock_dialogs/tab_stock_setup.h"

#include "model/records/tab_shift.h"
#include "platform/foundation/CFNumberFormatter.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Events.h"
#include "ui/draw_image.h"
#include "ui/help.h"
#include "ui/localization.h"
#include "ui/message_text.h"
#include "ui/nib_window.h"
#include "ui/spin_control.h"
#include "ui/text_input.h"

#include <string>

namespace {

constexpr OSType kSignature = FourCharCode("TPDE");
constexpr ControlID kPictureID = {kSignature, 1000};
constexpr ControlID kChoiceID = {kSignature, 1001};
constexpr ControlID kFieldID = {kSignature, 1002};
constexpr ControlID kShiftID = {kSignature, 1003};
constexpr ControlID kUnitsID = {kSignature, 1004};
constexpr ControlID kModulusID = {kSignature, 1005};

constexpr EventTypeSpec kCommandEvents[] = {{kEventClassCommand, kEventCommandProcess}};
constexpr EventTypeSpec kTextChanges[] = {{kEventClassTextInputChange, kEventInputHasText},
                                          {kEventClassTextInputChange, kEventInputIsEmpty}};
constexpr EventTypeSpec kDrawEvents[] = {{kEventClassControl, kEventControlDraw}};

struct TabStockSetupContext {
    CFBundleRef bundle;
    WindowFromNib window;
    SInt16 result;
    ControlRef picture;
    ControlRef choice;
    ControlRef field;
    ControlRef shift;
    ControlRef unitsPopUp;
    StockUnits units;  // of the shift that is shown
    _IS_Options* options;
    SInt32 modulus;  // tabs in a bank; kTicketValueUnset when that is not known
};

ControlRef Find(const TabStockSetupContext& context, ControlID id) {
    ControlRef control = nullptr;
    GetControlByID(context.window.get(), &id, &control);
    return control;
}

void SetNumberProperty(ControlRef control, OSType tag, SInt32 number) {
    SetControlProperty(control, kSpinControlCreator, tag, sizeof number, &number);
}

TabShiftChoice Choice(const TabStockSetupContext& context) {
    return static_cast<TabShiftChoice>(GetControl32BitValue(context.choice));
}

/// Shows the shift, which may be more than is allowed, in these units.
void ShowShift(TabStockSetupContext* context, StockUnits units, SInt32 millimeters) {
    context->units = units;
    SetNumberProperty(context->shift, kSpinControlDecimalsTag, TabShiftDecimals(units));
    SetControl32BitMinimum(context->shift, 0);
    SetControl32BitMaximum(context->shift, MaximumTabShift(units));
    ShowSpinControlInput(context->shift, TabShiftFromMillimeters(units, millimeters));
}

SInt32 Millimeters(const TabStockSetupContext& context) {
    return MillimetersFromTabShift(context.units, SpinControlInput(context.shift));
}

bool CanAccept(const TabStockSetupContext& context) {
    return Choice(context) != TabShiftChoice::custom || SpinControlIsInputValid(context.shift);
}

void EnableOK(const TabStockSetupContext& context) {
    ControlRef okButton = nullptr;
    GetWindowDefaultButton(context.window.get(), &okButton);
    if (CanAccept(context)) {
        EnableControl(okButton);
    } else {
        DisableControl(okButton);
    }
}

/// A shift is asked for with the choice of one only.
void EnableShift(const TabStockSetupContext& context) {
    const bool enabled = Choice(context) == TabShiftChoice::custom;
    for (const ControlRef control : {context.field, context.shift, context.unitsPopUp}) {
        if (enabled) {
            EnableControl(control);
        } else {
            DisableControl(control);
        }
    }
    EnableOK(context);
}

OSStatus ShiftTyped(EventHandlerCallRef, EventRef, void* userData) {
    EnableOK(*static_cast<const TabStockSetupContext*>(userData));
    return eventNotHandledErr;
}

OSStatus End(TabStockSetupContext* context, SInt16 result) {
    context->result = result;
    return QuitAppModalLoopForWindow(context->window.get());
}

OSStatus Accept(TabStockSetupContext* context) {
    if (!CanAccept(*context)) {
        return SetKeyboardFocus(context->window.get(), context->field);
    }
    SetTabShift(context->options, Choice(*context), Millimeters(*context));
    return End(context, kTabStockSetupOK);
}

OSStatus TabStockSetupEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    auto* context = static_cast<TabStockSetupContext*>(userData);
    HICommand command{};
    GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr, &command);
    switch (command.commandID) {
        case FourCharCode("Tmsh"):
            EnableShift(*context);
            return noErr;
        case FourCharCode("Tmun"):
            ShowShift(context, static_cast<StockUnits>(GetControl32BitValue(context->unitsPopUp)),
                      Millimeters(*context));
            return noErr;
        case FourCharCode("ok  "):
            return Accept(context);
        case FourCharCode("not!"):
            return End(context, kTabStockSetupCancel);
        case FourCharCode("Thlp"):
            return DisplayHelp(context->bundle, nullptr, CFSTR("Mac_topics/M_Tab_Stock_Setup.htm"));
        default:
            return eventNotHandledErr;
    }
}

OSStatus DrawPicture(EventHandlerCallRef, EventRef, void* userData) {
    DrawImage(CFSTR("TabMarginShift.gif"), static_cast<const TabStockSetupContext*>(userData)->picture, false);
    return noErr;
}

StockUnits LocaleUnits() {
    const auto locale = CFRef<CFLocaleRef>::adopt(CFLocaleCopyCurrent());
    return StockSizeDefaultsOf(static_cast<CFStringRef>(CFLocaleGetValue(locale.get(), kCFLocaleMeasurementSystem)))
        .units;
}

void ShowModulus(const TabStockSetupContext& context) {
    const CFRef<CFStringRef> number = makeString(std::to_string(context.modulus));
    const auto text =
        CopyFilledInMessage(CopyLocalizedText(context.bundle, CFSTR("Tabs In A Bank")).get(), {number.get()});
    const CFStringRef shown = text.get();
    SetControlData(Find(context, kModulusID), kControlEntireControl, kControlStaticTextCFStringTag, sizeof shown,
                   &shown);
}

OSStatus InitializeTabStockSetupDialog(TabStockSetupContext* context) {
    const bool hasModulus = context->modulus > 0;
    OSStatus status = context->window.load(context->bundle, CFSTR("StockTypeSetupDialogs"),
                                           hasModulus ? CFSTR("TabStockSetupWithModulus") : CFSTR("TabStockSetup"));
    if (status != noErr) {
        return status;
    }
    if (hasModulus) {
        ShowModulus(*context);
    }
    context->picture = Find(*context, kPictureID);
    context->choice = Find(*context, kChoiceID);
    context->field = Find(*context, kFieldID);
    context->shift = Find(*context, kShiftID);
    context->unitsPopUp = Find(*context, kUnitsID);
    SetNumberProperty(context->shift, kSpinControlFieldTag, kFieldID.id);
    SetNumberProperty(context->field, kSpinControlArrowsTag, kShiftID.id);
    if (status = CreateSpinControl(context->shift); status != noErr) {
        return status;
    }
    const StockUnits units = LocaleUnits();
    const TabShiftChoice choice = TabShiftChoiceOf(*context->options, units);
    SetControl32BitValue(context->unitsPopUp, static_cast<SInt32>(units));
    SetControl32BitValue(context->choice, static_cast<SInt32>(choice));
    ShowShift(context, units, choice == TabShiftChoice::none ? 0 : context->options->x1);
    EnableShift(*context);
    InstallControlEventHandler(context->picture, DrawPicture, std::size(kDrawEvents), kDrawEvents, context, nullptr);
    InstallWindowEventHandler(context->window.get(), ShiftTyped, std::size(kTextChanges), kTextChanges, context,
                              nullptr);
    return InstallWindowEventHandler(context->window.get(), TabStockSetupEventHandler, std::size(kCommandEvents),
                                     kCommandEvents, context, nullptr);
}

}  // namespace

OSStatus RunModalTabStockSetupDialog(CFBundleRef bundle, Stock* stock, _IS_Options* options, SInt16* result) {
    *result = kTabStockSetupCancel;
    TabStockSetupContext context{
        .bundle = bundle, .result = kTabStockSetupCancel, .options = options, .modulus = stock->modulus()};
    if (const OSStatus status = InitializeTabStockSetupDialog(&context); status != noErr) {
        return status;
    }
    RunAppModalLoopForWindow(context.window.get());
    *result = context.result;
    return noErr;
}

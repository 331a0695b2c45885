#include "model/stock_dialogs/custom_stock_size.h"

#include "model/settings/ticket_access.h"
#include "model/stock/media_limits.h"
#include "platform/foundation/CFNumberFormatter.h"
#include "platform/toolbox/Notices.h"
#include "platform/toolbox/Views.h"
#include "ui/localization.h"
#include "ui/nib_window.h"
#include "ui/spin_control.h"

#include <algorithm>

StockUnits gCurrentUnits = StockUnits::unset;

namespace {

constexpr OSType kSignature = FourCharCode("TPDE");
constexpr ControlID kPreviewID = {kSignature, 1000};
constexpr ControlID kLengthFieldID = {kSignature, 1002};
constexpr ControlID kLengthID = {kSignature, 1003};
constexpr ControlID kLengthUnitsID = {kSignature, 1004};
constexpr ControlID kWidthFieldID = {kSignature, 1006};
constexpr ControlID kWidthID = {kSignature, 1007};
constexpr ControlID kWidthUnitsID = {kSignature, 1008};
constexpr ControlID kUnitsID = {kSignature, 1010};

constexpr EventTypeSpec kCommandEvents[] = {{kEventClassCommand, kEventCommandProcess}};
constexpr EventTypeSpec kDrawEvents[] = {{kEventClassControl, kEventControlDraw}};

/// One side of the paper: where it is shown, and how long it may be (points).
struct Side {
    ControlRef field;
    ControlRef value;
    ControlRef unitsLabel;
    float minimum;
    float maximum;
};

struct CustomStockSizeDialogContext {
    CFBundleRef bundle;
    WindowFromNib window;
    SInt16 result;
    ControlRef preview;
    ControlRef units;
    Side width;
    Side length;
    StockSizeDefaults defaults;
};

ControlRef Find(const CustomStockSizeDialogContext& context, ControlID id) {
    ControlRef control = nullptr;
    GetControlByID(context.window.get(), &id, &control);
    return control;
}

void SetNumberProperty(ControlRef control, OSType tag, SInt32 number) {
    SetControlProperty(control, kSpinControlCreator, tag, sizeof number, &number);
}

void ShowStored(const Side& side, SInt32 stored) {
    ShowSpinControlInput(side.value, DisplayedFromStored(gCurrentUnits, stored));
}

SInt32 Stored(const Side& side) {
    return StoredFromDisplayed(gCurrentUnits, GetControl32BitValue(side.value));
}

void SetSideUnits(CFBundleRef bundle, const Side& side, StockUnits units) {
    SetLocalizedStaticText(bundle, units == StockUnits::inches ? CFSTR("Units Inches") : CFSTR("Units Millimeters"),
                           side.unitsLabel);
    SetNumberProperty(side.value, kSpinControlDecimalsTag, StockUnitsDecimals(units));
    const SInt32 minimum = DisplayedFromPoints(units, side.minimum);
    SetControl32BitMinimum(side.value, minimum);
    SetControl32BitMaximum(side.value, std::max(minimum, DisplayedFromPoints(units, side.maximum)));
}

/// Shows both sides in other units; `force` also where they are shown in these ones already.
void SetUnits(CustomStockSizeDialogContext* context, StockUnits units, bool force) {
    const bool isChange = units != gCurrentUnits;
    if (!isChange && !force) {
        return;
    }
    for (const Side& side : {context->width, context->length}) {
        const SInt32 displayed = SpinControlInput(side.value);
        SetSideUnits(context->bundle, side, units);
        ShowSpinControlInput(side.value, isChange ? DisplayedFromOtherUnits(units, displayed) : displayed);
    }
    gCurrentUnits = units;
}

void ShowDefaults(CustomStockSizeDialogContext* context) {
    SetControl32BitValue(context->units, static_cast<SInt32>(context->defaults.units));
    SetUnits(context, context->defaults.units, false);
    ShowStored(context->width, context->defaults.width);
    ShowStored(context->length, context->defaults.length);
}

/// Tells the user of an input that is no size, and shows both sides as they were last.
void RefuseInput(const CustomStockSizeDialogContext& context) {
    const Side& wrong = SpinControlIsInputValid(context.width.value) ? context.length : context.width;
    CFOptionFlags response = 0;
    CFUserNotificationDisplayAlert(0, kCFUserNotificationCautionAlertLevel, nullptr, nullptr, nullptr,
                                   CopyLocalizedText(context.bundle, CFSTR("Invalid Paper Size Header")).get(),
                                   CopyLocalizedText(context.bundle, CFSTR("Invalid Paper Size Message")).get(),
                                   nullptr, nullptr, nullptr, &response);
    for (const Side& side : {context.width, context.length}) {
        SetSpinControlValue(side.value, GetControl32BitValue(side.value), true);
    }
    SetKeyboardFocus(context.window.get(), wrong.field);
}

void End(CustomStockSizeDialogContext* context, SInt16 result) {
    context->result = result;
    QuitAppModalLoopForWindow(context->window.get());
}

OSStatus CustomStockSizeDialogEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    HICommand command{};
    GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr, &command);
    auto* context = static_cast<CustomStockSizeDialogContext*>(userData);
    switch (command.commandID) {
        case FourCharCode("UNIT"):
            SetUnits(context, static_cast<StockUnits>(GetControl32BitValue(context->units)), false);
            return noErr;
        case FourCharCode("rvrt"):
            ShowDefaults(context);
            return noErr;
        case FourCharCode("not!"):
            End(context, kCustomStockSizeCancel);
            return noErr;
        case FourCharCode("ok  "):
            if (SpinControlIsInputValid(context->width.value) && SpinControlIsInputValid(context->length.value)) {
                End(context, kCustomStockSizeOK);
            } else {
                RefuseInput(*context);
            }
            return noErr;
        default:
            return eventNotHandledErr;
    }
}

/// Paints the paper in the middle of the pane. The longest paper of all would just fit.
OSStatus DrawPreview(EventHandlerCallRef, EventRef, void* userData) {
    const auto& context = *static_cast<const CustomStockSizeDialogContext*>(userData);
    const CGContextRef drawing = HIViewGetDrawContext(context.preview);
    HIRect pane{};
    HIViewGetBounds(context.preview, &pane);
    HIThemeEraseBackground(drawing, &pane);
    const double scale = pane.size.width / std::max(1, GetControl32BitMaximum(context.length.value));
    const double width = scale * GetControl32BitValue(context.width.value);
    const double length = scale * GetControl32BitValue(context.length.value);
    const HIRect paper = {{(pane.size.width - width) / 2, (pane.size.height - length) / 2}, {width, length}};
    CGContextSetRGBFillColor(drawing, 1, 1, 1, 1);
    CGContextFillRect(drawing, paper);
    CGContextSetRGBStrokeColor(drawing, 0, 0, 0, 1);
    CGContextStrokeRect(drawing, paper);
    return noErr;
}

Side FindSide(const CustomStockSizeDialogContext& context, ControlID field, ControlID value, ControlID unitsLabel) {
    const Side side = {Find(context, field), Find(context, value), Find(context, unitsLabel), 0, 0};
    SetNumberProperty(side.value, kSpinControlFieldTag, field.id);
    SetNumberProperty(side.field, kSpinControlArrowsTag, value.id);
    SetNumberProperty(side.value, kSpinControlRedrawTag, kPreviewID.id);
    return side;
}

StockSizeDefaults LocaleDefaults() {
    const auto locale = CFRef<CFLocaleRef>::adopt(CFLocaleCopyCurrent());
    return StockSizeDefaultsOf(static_cast<CFStringRef>(CFLocaleGetValue(locale.get(), kCFLocaleMeasurementSystem)));
}

OSStatus InitializeCustomStockSizeDialog(CustomStockSizeDialogContext* context, SInt32 width, SInt32 length) {
    OSStatus status = context->window.load(context->bundle, CFSTR("CustomStockSize"), CFSTR("Custom"));
    if (status != noErr) {
        return status;
    }
    context->preview = Find(*context, kPreviewID);
    context->units = Find(*context, kUnitsID);
    context->width = FindSide(*context, kWidthFieldID, kWidthID, kWidthUnitsID);
    context->length = FindSide(*context, kLengthFieldID, kLengthID, kLengthUnitsID);
    GetMediaLimits(&context->width.minimum, &context->length.minimum, &context->width.maximum,
                   &context->length.maximum);
    context->defaults = LocaleDefaults();
    if (gCurrentUnits == StockUnits::unset) {
        gCurrentUnits = context->defaults.units;
    }
    SetControl32BitValue(context->units, static_cast<SInt32>(gCurrentUnits));
    for (const Side& side : {context->width, context->length}) {
        if (status = CreateSpinControl(side.value); status != noErr) {
            return status;
        }
    }
    SetUnits(context, gCurrentUnits, true);
    ShowStored(context->width, width == kTicketValueUnset ? context->defaults.width : width);
    ShowStored(context->length, length == kTicketValueUnset ? context->defaults.length : length);
    InstallControlEventHandler(context->preview, DrawPreview, std::size(kDrawEvents), kDrawEvents, context, nullptr);
    InstallWindowEventHandler(context->window.get(), CustomStockSizeDialogEventHandler, std::size(kCommandEvents),
                              kCommandEvents, context, nullptr);
    SetKeyboardFocus(context->window.get(), context->width.field);
    return noErr;
}

}  // namespace

OSStatus RunModalCustomStockSizeDialog(CFBundleRef bundle, SInt16* result, SInt32* width, SInt32* length) {
    if (bundle == nullptr || result == nullptr || width == nullptr || length == nullptr) {
        return paramErr;
    }
    *result = kCustomStockSizeCancel;
    CustomStockSizeDialogContext context{.bundle = bundle, .result = kCustomStockSizeCancel};
    if (const OSStatus status = InitializeCustomStockSizeDialog(&context, *width, *length); status != noErr) {
        return status;
    }
    RunAppModalLoopForWindow(context.window.get());
    *result = context.result;
    if (context.result == kCustomStockSizeOK) {
        *width = Stored(context.width);
        *length = Stored(context.length);
    }
    return noErr;
}

#include "ui/custom_value_dialog.h"

#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Windows.h"
#include "ui/localization.h"
#include "ui/nib_window.h"
#include "ui/text_input.h"

namespace {

constexpr ControlID kFieldID = {FourCharCode("TPDE"), 123456};
constexpr ControlID kLabelID = {FourCharCode("TPDE"), 123457};
constexpr ControlID kHintID = {FourCharCode("TPDE"), 123458};
constexpr EventTypeSpec kCommandEvents[] = {{kEventClassCommand, kEventCommandProcess}};

struct CustomValueContext {
    WindowRef window;
    SInt16 result;
};

void ShowTexts(CFBundleRef bundle, const CustomValueTexts* texts, WindowRef window) {
    ControlRef label = nullptr;
    ControlRef hint = nullptr;
    GetControlByID(window, &kLabelID, &label);
    GetControlByID(window, &kHintID, &hint);
    if (texts == nullptr) {
        HideControl(hint);
        return;
    }
    SetLocalizedWindowTitle(bundle, texts->title, window);
    SetLocalizedStaticText(bundle, texts->label, label);
    SetLocalizedStaticText(bundle, texts->hint, hint);
}

}  // namespace

OSStatus RunModalCustomValueDialog(CFBundleRef bundle, SInt32 maximum, CFStringRef* text, SInt16* result,
                                   const CustomValueTexts* texts) {
    const CFStringRef initial = *text;
    *text = nullptr;
    *result = kCustomValueCancel;
    WindowFromNib window;
    if (const OSStatus status = window.load(bundle, CFSTR("Utilities"), CFSTR("CustomValue")); status != noErr) {
        return status;
    }
    ControlRef field = nullptr;
    GetControlByID(window.get(), &kFieldID, &field);
    LimitInputLength(field, maximum);
    ShowTexts(bundle, texts, window.get());
    if (initial != nullptr) {
        SetControlData(field, kControlEntireControl, kControlEditTextCFStringTag, sizeof initial, &initial);
    }
    SetKeyboardFocus(window.get(), field);

    CustomValueContext context{window.get(), kCustomValueCancel};
    InstallWindowEventHandler(window.get(), CustomValueEventHandler, std::size(kCommandEvents), kCommandEvents,
                              &context, nullptr);
    RunAppModalLoopForWindow(window.get());

    if (context.result == kCustomValueOK) {
        GetControlData(field, kControlEntireControl, kControlEditTextCFStringTag, sizeof *text, text, nullptr);
        *result = kCustomValueOK;
    }
    return noErr;
}

OSStatus CustomValueEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    HICommand command{};
    GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr, &command);
    auto* context = static_cast<CustomValueContext*>(userData);
    switch (command.commandID) {
        case FourCharCode("ok  "):
            context->result = kCustomValueOK;
            break;
        case FourCharCode("not!"):
            context->result = kCustomValueCancel;
            break;
        default:
            return eventNotHandledErr;
    }
    QuitAppModalLoopForWindow(context->window);
    return noErr;
}

#include "jobtypes/secure_print.h"

#include "jobtypes/job_type.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFCharacterSet.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Notices.h"
#include "ui/draw_image.h"
#include "ui/help.h"
#include "ui/localization.h"
#include "ui/nib_window.h"
#include "ui/text_input.h"

#include <array>

namespace {

constexpr OSType kDialogSignature = FourCharCode("TPDE");
// The fields are known under two signatures: to the limits of what may be typed, and to what reads and fills them.
constexpr ControlID kPasscode = {kDialogSignature, 20001};
constexpr ControlID kConfirmation = {kDialogSignature, 20003};
constexpr ControlID kPasscodeText = {FourCharCode("Tshl"), 20001};
constexpr ControlID kConfirmationText = {FourCharCode("Tshl"), 20003};
constexpr ControlID kHintText = {kDialogSignature, 20004};
constexpr ControlID kDialogPicture = {kDialogSignature, 20008};
constexpr ControlID kHintPicture = {kDialogSignature, 20009};

constexpr SInt32 kLongestPasscode = 10;
constexpr CFIndex kShortestConfirmed = 4;

struct SecurePrintContext {
    CFBundleRef bundle;
    WindowRef window;
    bool accepted;

    ControlRef control(ControlID id) const {
        ControlRef control = nullptr;
        GetControlByID(window, &id, &control);
        return control;
    }
};

CFRef<CFStringRef> CopyFieldText(ControlRef field) {
    CFStringRef text = nullptr;
    GetControlData(field, kControlEntireControl, kControlEditTextCFStringTag, sizeof text, &text, nullptr);
    return CFRef<CFStringRef>::adopt(text);
}

void SetFieldText(ControlRef field, CFStringRef text) {
    SetControlData(field, kControlEntireControl, kControlEditTextCFStringTag, sizeof text, &text);
}

CFRef<CFStringRef> CopyText(CFBundleRef bundle, CFStringRef key) {
    return CFRef<CFStringRef>::adopt(CFBundleCopyLocalizedString(bundle, key, key, CFSTR("Localizable")));
}

void UpdateConfirmation(const SecurePrintContext& context) {
    ControlRef confirmation = context.control(kConfirmation);
    const auto passcode = CopyFieldText(context.control(kPasscode));
    if (PasscodeCanBeConfirmed(CFStringGetLength(passcode.get()))) {
        EnableControl(confirmation);
    } else {
        DisableControl(confirmation);
    }
}

/// Whether the dialog may close: the job goes without a passcode, or with one that was typed twice.
bool PasscodeIsConfirmed(const SecurePrintContext& context) {
    const auto passcode = CopyASCIIDigits(CopyFieldText(context.control(kPasscodeText)).get());
    const auto confirmation = CopyASCIIDigits(CopyFieldText(context.control(kConfirmationText)).get());
    return CFStringGetLength(passcode.get()) == 0 ||
           CFStringCompare(passcode.get(), confirmation.get(), kCFCompareCaseInsensitive) == kCFCompareEqualTo;
}

void TellMismatch(CFBundleRef bundle) {
    CFOptionFlags response = 0;
    CFUserNotificationDisplayAlert(0, kCFUserNotificationCautionAlertLevel, nullptr, nullptr, nullptr,
                                   CopyText(bundle, CFSTR("Invalid Secure Print Passcode Header")).get(),
                                   CopyText(bundle, CFSTR("Invalid Secure Print Passcode Message")).get(), nullptr,
                                   nullptr, nullptr, &response);
}

OSStatus HandleCommand(SecurePrintContext& context, OSType command) {
    switch (command) {
        case FourCharCode("ok  "):
            if (!PasscodeIsConfirmed(context)) {
                TellMismatch(context.bundle);
                return noErr;
            }
            context.accepted = true;
            return QuitAppModalLoopForWindow(context.window);
        case FourCharCode("not!"):
            return QuitAppModalLoopForWindow(context.window);
        case FourCharCode("Thlp"):
            return DisplayHelp(context.bundle, nullptr, CFSTR("Mac_topics/m_how_to_use_Secure_Print.htm"));
        default:
            return eventNotHandledErr;
    }
}

OSStatus SecurePrintEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    auto& context = *static_cast<SecurePrintContext*>(userData);
    if (GetEventClass(event) == kEventClassTextInputChange) {
        UpdateConfirmation(context);
        return eventNotHandledErr;
    }
    HICommand command{};
    GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr, &command);
    return HandleCommand(context, command.commandID);
}

OSStatus DrawPicture(EventHandlerCallRef, EventRef event, void*) {
    ControlRef pane = nullptr;
    GetEventParameter(event, kEventParamDirectObject, typeControlRef, nullptr, sizeof pane, nullptr, &pane);
    ControlID id{};
    GetControlID(pane, &id);
    DrawImage(id.id == kHintPicture.id ? CFSTR("Hint.gif") : CFSTR("Secure-Print.gif"), pane, false);
    return noErr;
}

void InitializeSecurePrintSetup(SecurePrintContext& context, CFStringRef passcode) {
    SetLocalizedWindowTitle(context.bundle, CFSTR("SecurePrintSetupTitle"), context.window);
    SetLocalizedStaticText(context.bundle, CFSTR("SecurePrintHintText"), context.control(kHintText));
    for (const ControlID id : {kPasscode, kConfirmation}) {
        LimitInputLengthAndCharacters(context.control(id), kLongestPasscode,
                                      CFCharacterSetGetPredefined(kCFCharacterSetDecimalDigit));
    }
    for (const ControlID id : {kPasscodeText, kConfirmationText}) {
        if (passcode != nullptr) {
            SetFieldText(context.control(id), passcode);
        }
    }
    UpdateConfirmation(context);
    static constexpr EventTypeSpec kDraw{kEventClassControl, kEventControlDraw};
    for (const ControlID id : {kDialogPicture, kHintPicture}) {
        InstallControlEventHandler(context.control(id), DrawPicture, 1, &kDraw, nullptr, nullptr);
    }
    static constexpr std::array kEvents{EventTypeSpec{kEventClassCommand, kEventCommandProcess},
                                        EventTypeSpec{kEventClassTextInputChange, kEventInputIsEmpty},
                                        EventTypeSpec{kEventClassTextInputChange, kEventInputHasText}};
    InstallWindowEventHandler(context.window, SecurePrintEventHandler, kEvents.size(), kEvents.data(), &context,
                              nullptr);
    SetKeyboardFocus(context.window, context.control(kPasscode));
}

}  // namespace

bool PasscodeCanBeConfirmed(CFIndex length) {
    return length >= kShortestConfirmed;
}

OSStatus RunModalSecurePrintSetup(CFBundleRef bundle, CFRef<CFStringRef>* passcode) {
    WindowFromNib window;
    if (const OSStatus status = window.load(bundle, CFSTR("JobTypes"), CFSTR("SecurePrint")); status != noErr) {
        return status;
    }
    SecurePrintContext context{bundle, window.get(), false};
    InitializeSecurePrintSetup(context, passcode->get());
    RunAppModalLoopForWindow(window.get());
    if (context.accepted) {
        *passcode = CopyASCIIDigits(CopyFieldText(context.control(kPasscodeText)).get());
    }
    return noErr;
}

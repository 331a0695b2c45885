#include "jobtypes/dialogs/secure_print.h"

#include "jobtypes/records/job_type.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFCharacterSet.h"
#include "platform/toolbox/Notices.h"
#include "ui/dialog_window.h"
#include "ui/help.h"
#include "ui/localization.h"
#include "ui/text_input.h"

#include <algorithm>
#include <utility>

namespace {

constexpr SInt32 kPasscode = 20001;
constexpr SInt32 kConfirmation = 20003;
constexpr SInt32 kHintText = 20004;
constexpr SInt32 kDialogPicture = 20008;
constexpr SInt32 kHintPicture = 20009;

constexpr SInt32 kLongestPasscode = 10;
constexpr CFIndex kShortestConfirmed = 4;

#define kPasscodesDiffer CFSTR("Passcodes Differ")

struct SecurePrintContext {
    DialogWindow window;
    bool accepted;
    CFStringRef refusedKey = nullptr;  // of what was entered last; null when all of it went in

    /// The fields are known under two signatures: under the dialog's to the limits of what may be typed, under this one
    /// to what reads and fills them.
    ControlRef field(SInt32 number) const {
        const ControlID id{FourCharCode("Tshl"), number};
        ControlRef field = nullptr;
        GetControlByID(window.get(), &id, &field);
        return field;
    }
    CFRef<CFStringRef> copyDigits(SInt32 number) const {
        CFStringRef text = nullptr;
        GetControlData(field(number), kControlEntireControl, kControlEditTextCFStringTag, sizeof text, &text, nullptr);
        return CopyASCIIDigits(CFRef<CFStringRef>::adopt(text).get());
    }
};

CFRef<CFStringRef> CopyText(CFBundleRef bundle, CFStringRef key) {
    return CFRef<CFStringRef>::adopt(CFBundleCopyLocalizedString(bundle, key, key, CFSTR("Localizable")));
}

void UpdateConfirmation(const DialogWindow& window) {
    const auto passcode = CopyASCIIDigits(window.copyText(kPasscode).get());
    window.enable(kConfirmation, PasscodeCanBeConfirmed(CFStringGetLength(passcode.get())));
}

/// Says below the fields what the passcode lacks, or what of it was not taken.
void ShowFault(SecurePrintContext& context) {
    const CFStringRef fault =
        PasscodeFault(context.copyDigits(kPasscode).get(), context.copyDigits(kConfirmation).get());
    const CFStringRef refused = std::exchange(context.refusedKey, nullptr);
    const CFStringRef key = refused != nullptr ? refused : fault;
    const auto text = key != nullptr ? CopyText(context.window.bundle(), key) : CFRef<CFStringRef>();
    const bool isOfConfirmation = key != nullptr && CFEqual(key, kPasscodesDiffer);
    HIViewSetFieldMessage(context.window.control(kPasscode), text.get(), key != nullptr && !isOfConfirmation);
    HIViewSetFieldMessage(context.window.control(kConfirmation), isOfConfirmation ? text.get() : nullptr,
                          isOfConfirmation);
}

/// Whether the dialog may close: the job goes without a passcode, or with one that was typed twice.
bool PasscodeIsConfirmed(const SecurePrintContext& context) {
    const auto passcode = context.copyDigits(kPasscode);
    const auto confirmation = context.copyDigits(kConfirmation);
    const CFIndex length = CFStringGetLength(passcode.get());
    return length == 0 ||
           (PasscodeCanBeConfirmed(length) &&
            CFStringCompare(passcode.get(), confirmation.get(), kCFCompareCaseInsensitive) == kCFCompareEqualTo);
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
                TellMismatch(context.window.bundle());
                return noErr;
            }
            context.accepted = true;
            return QuitAppModalLoopForWindow(context.window.get());
        case FourCharCode("not!"):
            return QuitAppModalLoopForWindow(context.window.get());
        case FourCharCode("Thlp"):
            return DisplayHelp(context.window.bundle(), nullptr, CFSTR("Mac_topics/m_how_to_use_Secure_Print.htm"));
        default:
            return eventNotHandledErr;
    }
}

OSStatus SecurePrintEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    auto& context = *static_cast<SecurePrintContext*>(userData);
    if (GetEventClass(event) == kEventClassTextInputChange) {
        UpdateConfirmation(context.window);
        ShowFault(context);
        return eventNotHandledErr;
    }
    return HandleCommand(context, CommandOf(event));
}

void InitializeSecurePrintSetup(SecurePrintContext& context, CFStringRef passcode) {
    const DialogWindow& window = context.window;
    SetLocalizedWindowTitle(window.bundle(), CFSTR("SecurePrintSetupTitle"), window.get());
    SetLocalizedStaticText(window.bundle(), CFSTR("SecurePrintHintText"), window.control(kHintText));
    for (const SInt32 number : {kPasscode, kConfirmation}) {
        LimitInputLengthAndCharacters(window.control(number), kLongestPasscode,
                                      CFCharacterSetGetPredefined(kCFCharacterSetDecimalDigit));
        KeepAllowedInput(
            window.control(number),
            [](const RefusedInput& refused, void* userData) {
                auto& dialog = *static_cast<SecurePrintContext*>(userData);
                dialog.refusedKey = CFStringGetLength(refused.characters) > 0 ? CFSTR("Passcode Not Digits")
                                    : refused.isTooLong                       ? CFSTR("Passcode Too Long")
                                                                              : nullptr;
                if (dialog.refusedKey != nullptr) {
                    const CFStringRef key = dialog.refusedKey;
                    ShowFault(dialog);
                    dialog.refusedKey = key;  // for the rest of the text, which may go in now
                }
            },
            &context);
        if (passcode != nullptr) {
            SetControlData(context.field(number), kControlEntireControl, kControlEditTextCFStringTag, sizeof passcode,
                           &passcode);
        }
    }
    window.enable(kConfirmation, false);  // what is preset is confirmed until it is changed
    window.showPicture(kDialogPicture, CFSTR("Secure-Print.gif"));
    window.showPicture(kHintPicture, CFSTR("Hint.gif"));
    window.handleCommands(SecurePrintEventHandler, &context);
    window.handle({kEventClassTextInputChange, kEventInputIsEmpty}, SecurePrintEventHandler, &context);
    window.handle({kEventClassTextInputChange, kEventInputHasText}, SecurePrintEventHandler, &context);
    window.focus(kPasscode);
}

}  // namespace

CFStringRef PasscodeFault(CFStringRef passcode, CFStringRef confirmation) {
    const CFIndex length = CFStringGetLength(passcode);
    if (length > 0 && !PasscodeCanBeConfirmed(length)) {
        return CFSTR("Passcode Too Short");
    }
    const CFIndex typed = std::min(CFStringGetLength(confirmation), length);
    const auto start = CFRef<CFStringRef>::adopt(CFStringCreateWithSubstring(nullptr, passcode, {0, typed}));
    return CFEqual(start.get(), confirmation) ? nullptr : kPasscodesDiffer;
}

bool PasscodeCanBeConfirmed(CFIndex length) {
    return length >= kShortestConfirmed;
}

OSStatus RunModalSecurePrintSetup(CFBundleRef bundle, CFRef<CFStringRef>* passcode) {
    SecurePrintContext context{DialogWindow(bundle), false};
    if (const OSStatus status = context.window.load(CFSTR("JobTypes"), CFSTR("SecurePrint")); status != noErr) {
        return status;
    }
    InitializeSecurePrintSetup(context, passcode->get());
    RunAppModalLoopForWindow(context.window.get());
    if (context.accepted) {
        *passcode = context.copyDigits(kPasscode);
    }
    return noErr;
}

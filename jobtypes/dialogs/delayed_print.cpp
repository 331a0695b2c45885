#include "jobtypes/dialogs/delayed_print.h"

#include "jobtypes/records/job_type.h"
#include "ui/dialog_window.h"
#include "ui/help.h"
#include "ui/localization.h"

namespace {

constexpr SInt32 kPicture = 20008;
constexpr SInt32 kClock = 21001;

struct DelayedPrintContext {
    DialogWindow window;
    LongDateTime time;
    bool accepted;
};

void ShowTime(const DelayedPrintContext& context) {
    LongDateRec date{};
    LongSecondsToDate(&context.time, &date);
    SetControlData(context.window.control(kClock), kControlEntireControl, kControlClockLongDateTag, sizeof date, &date);
}

LongDateTime ReadTime(const DelayedPrintContext& context) {
    LongDateTime now = 0;
    GetDateTime(&now);
    LongDateRec date{};
    GetControlData(context.window.control(kClock), kControlEntireControl, kControlClockLongDateTag, sizeof date, &date,
                   nullptr);
    return NextTimeOfDay(date, now);
}

OSStatus DelayedPrintEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    auto& context = *static_cast<DelayedPrintContext*>(userData);
    switch (CommandOf(event)) {
        case FourCharCode("ok  "):
            context.time = ReadTime(context);
            context.accepted = true;
            return QuitAppModalLoopForWindow(context.window.get());
        case FourCharCode("not!"):
            return QuitAppModalLoopForWindow(context.window.get());
        case FourCharCode("Thlp"):
            return DisplayHelp(context.window.bundle(), nullptr, CFSTR("Mac_topics/m_how_to_use_Delayed_Print.htm"));
        default:
            return eventNotHandledErr;
    }
}

void InitializeDelayedPrintSetup(DelayedPrintContext& context) {
    const DialogWindow& window = context.window;
    SetLocalizedWindowTitle(window.bundle(), CFSTR("DelayedPrintSetupTitle"), window.get());
    window.showPicture(kPicture, CFSTR("Delayed-Print.gif"));
    window.handleCommands(DelayedPrintEventHandler, &context);
    ShowTime(context);
    window.focus(kClock);
}

}  // namespace

OSStatus RunModalDelayedPrintSetup(CFBundleRef bundle, LongDateTime* time) {
    DelayedPrintContext context{DialogWindow(bundle), *time, false};
    if (const OSStatus status = context.window.load(CFSTR("JobTypes"), CFSTR("DelayedPrint")); status != noErr) {
        return status;
    }
    InitializeDelayedPrintSetup(context);
    RunAppModalLoopForWindow(context.window.get());
    if (context.accepted) {
        *time = context.time;
    }
    return noErr;
}

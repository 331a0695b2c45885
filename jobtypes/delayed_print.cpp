#include "jobtypes/delayed_print.h"

#include "jobtypes/job_type.h"
#include "platform/toolbox/Controls.h"
#include "ui/draw_image.h"
#include "ui/help.h"
#include "ui/localization.h"
#include "ui/nib_window.h"

namespace {

constexpr ControlID kPicture = {FourCharCode("TPDE"), 20008};
constexpr ControlID kClock = {FourCharCode("TPDE"), 21001};

struct DelayedPrintContext {
    CFBundleRef bundle;
    WindowRef window;
    ControlRef clock;
    LongDateTime time;
    bool accepted;
};

void ShowTime(const DelayedPrintContext& context) {
    LongDateRec date{};
    LongSecondsToDate(&context.time, &date);
    SetControlData(context.clock, kControlEntireControl, kControlClockLongDateTag, sizeof date, &date);
}

LongDateTime ReadTime(const DelayedPrintContext& context) {
    LongDateTime now = 0;
    GetDateTime(&now);
    LongDateRec date{};
    GetControlData(context.clock, kControlEntireControl, kControlClockLongDateTag, sizeof date, &date, nullptr);
    return NextTimeOfDay(date, now);
}

OSStatus DelayedPrintEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    auto& context = *static_cast<DelayedPrintContext*>(userData);
    HICommand command{};
    GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr, &command);
    switch (command.commandID) {
        case FourCharCode("ok  "):
            context.time = ReadTime(context);
            context.accepted = true;
            return QuitAppModalLoopForWindow(context.window);
        case FourCharCode("not!"):
            return QuitAppModalLoopForWindow(context.window);
        case FourCharCode("Thlp"):
            return DisplayHelp(context.bundle, nullptr, CFSTR("Mac_topics/m_how_to_use_Delayed_Print.htm"));
        default:
            return eventNotHandledErr;
    }
}

OSStatus DrawPicture(EventHandlerCallRef, EventRef event, void*) {
    ControlRef pane = nullptr;
    GetEventParameter(event, kEventParamDirectObject, typeControlRef, nullptr, sizeof pane, nullptr, &pane);
    DrawImage(CFSTR("Delayed-Print.gif"), pane, false);
    return noErr;
}

void InitializeDelayedPrintSetup(DelayedPrintContext& context) {
    SetLocalizedWindowTitle(context.bundle, CFSTR("DelayedPrintSetupTitle"), context.window);
    GetControlByID(context.window, &kClock, &context.clock);
    ControlRef picture = nullptr;
    GetControlByID(context.window, &kPicture, &picture);
    static constexpr EventTypeSpec kDraw{kEventClassControl, kEventControlDraw};
    InstallControlEventHandler(picture, DrawPicture, 1, &kDraw, nullptr, nullptr);
    static constexpr EventTypeSpec kCommand{kEventClassCommand, kEventCommandProcess};
    InstallWindowEventHandler(context.window, DelayedPrintEventHandler, 1, &kCommand, &context, nullptr);
    ShowTime(context);
    SetKeyboardFocus(context.window, context.clock);
}

}  // namespace

OSStatus RunModalDelayedPrintSetup(CFBundleRef bundle, LongDateTime* time) {
    WindowFromNib window;
    if (const OSStatus status = window.load(bundle, CFSTR("JobTypes"), CFSTR("DelayedPrint")); status != noErr) {
        return status;
    }
    DelayedPrintContext context{bundle, window.get(), nullptr, *time, false};
    InitializeDelayedPrintSetup(context);
    RunAppModalLoopForWindow(window.get());
    if (context.accepted) {
        *time = context.time;
    }
    return noErr;
}

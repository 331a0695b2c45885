#include "host/dialog/preparing_window.h"

#include "host/dialog/dialog_controls.h"
#include "host/settings/texts.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Events.h"
#include "platform/toolbox/Windows.h"

#include <iterator>

namespace {

using namespace std::chrono_literals;

constexpr auto kMoment = 400ms;
constexpr double kSecondsBetweenLooks = 0.05;

struct Waiting {
    OpeningDocument& document;
    WindowRef window = nullptr;
    bool isDone = false;
};

OSStatus handleEvent(EventHandlerCallRef, EventRef event, void* waiting) {
    HICommand command{};
    GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr, &command);
    if (GetEventClass(event) == kEventClassCommand && command.commandID != FourCharCode("not!")) {
        return eventNotHandledErr;
    }
    return QuitAppModalLoopForWindow(static_cast<Waiting*>(waiting)->window);
}

void look(EventLoopTimerRef, void* userData) {
    auto& waiting = *static_cast<Waiting*>(userData);
    if (!waiting.isDone && waiting.document.advance(0ms)) {
        waiting.isDone = true;
        QuitAppModalLoopForWindow(waiting.window);
    }
}

}  // namespace

bool waitInWindow(CFBundleRef bundle, OpeningDocument* document) {
    if (document->advance(kMoment)) {
        return true;
    }
    Waiting waiting{*document};
    waiting.window = makeWindow(bundle, CFSTR("JobProgress"));
    if (waiting.window == nullptr) {
        return document->advance(-1ms);
    }
    setStaticText(hostControl(waiting.window, kJobProgressTitle),
                  localized(bundle, CFSTR("Document Preparing"), shortened(document->document().name)));
    SetControl32BitMaximum(hostControl(waiting.window, kJobProgressBar), 0);  // nobody knows how long it takes
    setStaticText(hostControl(waiting.window, kJobProgressState), localized(bundle, CFSTR("Document Printed Then")));
    static constexpr EventTypeSpec kEvents[] = {{kEventClassCommand, kEventCommandProcess},
                                                {kEventClassWindow, kEventWindowClose}};
    InstallWindowEventHandler(waiting.window, handleEvent, std::size(kEvents), kEvents, &waiting, nullptr);
    EventLoopTimerRef timer = nullptr;
    InstallEventLoopTimer(kSecondsBetweenLooks, kSecondsBetweenLooks, look, &waiting, &timer);
    RunAppModalLoopForWindow(waiting.window);
    RemoveEventLoopTimer(timer);
    DisposeWindow(waiting.window);
    return waiting.isDone;
}

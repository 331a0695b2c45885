#include "panels/paper_output/finishing_window.h"

#include "ui/draw_image.h"
#include "ui/help.h"

OSStatus FinishingWindow::load(CFStringRef windowName) {
    const OSStatus status = DialogWindow::load(CFSTR("FinishingDialogs"), windowName);
    if (status == noErr) {
        handleCommands(handleCommand, this);
        handle({kEventClassControl, kEventControlHit}, handleHit, this);
    }
    return status;
}

bool FinishingWindow::run() {
    RunAppModalLoopForWindow(get());
    return accepted_;
}

void FinishingWindow::showPictureOf(SInt32 pane) {
    static constexpr EventTypeSpec kDraw{kEventClassControl, kEventControlDraw};
    InstallControlEventHandler(control(pane), drawPicture, 1, &kDraw, this, nullptr);
}

OSStatus FinishingWindow::handleCommand(EventHandlerCallRef, EventRef event, void* self) {
    auto& dialog = *static_cast<FinishingWindow*>(self);
    switch (CommandOf(event)) {
        case FourCharCode("ok  "):
            if (!dialog.mayEnd()) {
                return noErr;
            }
            dialog.accepted_ = true;
            return QuitAppModalLoopForWindow(dialog.get());
        case FourCharCode("not!"):
            return QuitAppModalLoopForWindow(dialog.get());
        case FourCharCode("Thlp"):
            return DisplayHelp(dialog.bundle(), nullptr, CFSTR("finishing.html"));
        default:
            return eventNotHandledErr;
    }
}

OSStatus FinishingWindow::handleHit(EventHandlerCallRef, EventRef, void* self) {
    static_cast<FinishingWindow*>(self)->changed();
    return eventNotHandledErr;
}

OSStatus FinishingWindow::drawPicture(EventHandlerCallRef, EventRef event, void* self) {
    ControlRef pane = nullptr;
    GetEventParameter(event, kEventParamDirectObject, typeControlRef, nullptr, sizeof pane, nullptr, &pane);
    ControlID id{};
    GetControlID(pane, &id);
    DrawImage(static_cast<const FinishingWindow*>(self)->picture(id.id), pane, false);
    return noErr;
}

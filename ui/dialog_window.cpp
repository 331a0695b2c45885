#include "ui/dialog_window.h"

#include "ui/draw_image.h"

namespace {

constexpr OSType kSignature = FourCharCode("TPDE");

OSStatus DrawPicture(EventHandlerCallRef, EventRef event, void* fileName) {
    ControlRef pane = nullptr;
    GetEventParameter(event, kEventParamDirectObject, typeControlRef, nullptr, sizeof pane, nullptr, &pane);
    DrawImage(static_cast<CFStringRef>(fileName), pane, false);
    return noErr;
}

}  // namespace

ControlRef DialogWindow::control(SInt32 number) const {
    const ControlID id{kSignature, number};
    ControlRef control = nullptr;
    GetControlByID(get(), &id, &control);
    return control;
}

SInt32 DialogWindow::value(SInt32 number) const {
    return GetControl32BitValue(control(number));
}

void DialogWindow::setValue(SInt32 number, SInt32 value) const {
    SetControl32BitValue(control(number), value);
}

void DialogWindow::enable(SInt32 number, bool enabled) const {
    enabled ? EnableControl(control(number)) : DisableControl(control(number));
}

void DialogWindow::focus(SInt32 number) const {
    SetKeyboardFocus(get(), control(number));
}

CFRef<CFStringRef> DialogWindow::copyText(SInt32 number) const {
    CFStringRef text = nullptr;
    GetControlData(control(number), kControlEntireControl, kControlEditTextCFStringTag, sizeof text, &text, nullptr);
    return CFRef<CFStringRef>::adopt(text);
}

void DialogWindow::setText(SInt32 number, CFStringRef text) const {
    const CFStringRef shown = text != nullptr ? text : CFSTR("");
    SetControlData(control(number), kControlEntireControl, kControlEditTextCFStringTag, sizeof shown, &shown);
}

void DialogWindow::showPicture(SInt32 number, CFStringRef constantFileName) const {
    static constexpr EventTypeSpec kDraw{kEventClassControl, kEventControlDraw};
    InstallControlEventHandler(control(number), DrawPicture, 1, &kDraw, const_cast<CFStringObject*>(constantFileName),
                               nullptr);
}

void DialogWindow::handleCommands(EventHandlerUPP handler, void* userData) const {
    handle({kEventClassCommand, kEventCommandProcess}, handler, userData);
}

void DialogWindow::handle(EventTypeSpec event, EventHandlerUPP handler, void* userData) const {
    InstallWindowEventHandler(get(), handler, 1, &event, userData, nullptr);
}

OSType CommandOf(EventRef event) {
    HICommand command{};
    GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr, &command);
    return command.commandID;
}

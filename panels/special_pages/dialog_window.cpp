#include "panels/special_pages/dialog_window.h"

#include "platform/foundation/CFString.h"
#include "platform/toolbox/Windows.h"

#include <iterator>

OSStatus SpecialPagesWindow::load(CFBundleRef bundle, CFStringRef name, EventHandlerProcPtr commands, void* userData) {
    static constexpr EventTypeSpec kCommands[] = {{kEventClassCommand, kEventCommandProcess}};
    bundle_ = bundle;
    const OSStatus status = window_.load(bundle, CFSTR("SpecialPages"), name);
    return status != noErr
               ? status
               : InstallWindowEventHandler(get(), commands, std::size(kCommands), kCommands, userData, nullptr);
}

void SpecialPagesWindow::drawPictures(std::initializer_list<SInt32> numbers, EventHandlerProcPtr handler,
                                      void* userData) const {
    static constexpr EventTypeSpec kDraws[] = {{kEventClassControl, kEventControlDraw}};
    for (const SInt32 number : numbers) {
        InstallControlEventHandler(find(number), handler, std::size(kDraws), kDraws, userData, nullptr);
    }
}

ControlRef SpecialPagesWindow::find(SInt32 number) const {
    const ControlID id{kSpecialPagesSignature, number};
    ControlRef control = nullptr;
    GetControlByID(get(), &id, &control);
    return control;
}

SInt16 SpecialPagesWindow::run() {
    RunAppModalLoopForWindow(get());
    return result_;
}

OSStatus SpecialPagesWindow::end(SInt16 result) {
    result_ = result;
    return QuitAppModalLoopForWindow(get());
}

HICommand GetEventCommand(EventRef event) {
    HICommand command{};
    GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr, &command);
    return command;
}

SInt32 GetSpecialPagesControlNumber(ControlRef control) {
    ControlID id{};
    return GetControlID(control, &id) == noErr && id.signature == kSpecialPagesSignature ? id.id : 0;
}

void SetControlEnabled(ControlRef control, bool enabled) {
    if (enabled) {
        EnableControl(control);
    } else {
        DisableControl(control);
    }
}

#include "host/dialog/server_password.h"

#include "host/dialog/dialog_controls.h"
#include "host/settings/texts.h"
#include "platform/foundation/text.h"
#include "platform/printing/PMPrinter.h"
#include "platform/toolbox/Events.h"
#include "platform/toolbox/Windows.h"

#include <utility>

namespace {

struct PasswordWindow {
    WindowRef window = nullptr;
    bool isAccepted = false;
};

OSStatus handleCommand(EventHandlerCallRef, EventRef event, void* userData) {
    auto& dialog = *static_cast<PasswordWindow*>(userData);
    HICommand command{};
    GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr, &command);
    switch (command.commandID) {
        case FourCharCode("ok  "):
            dialog.isAccepted = true;
            return QuitAppModalLoopForWindow(dialog.window);
        case FourCharCode("not!"):
            return QuitAppModalLoopForWindow(dialog.window);
        default:
            return eventNotHandledErr;
    }
}

Boolean ask(CFStringRef server, CFStringRef proposal, Boolean isAgain, CFStringRef* user, CFStringRef* password,
            void* bundleOf) {
    const CFBundleRef bundle = (*static_cast<std::function<CFBundleRef()>*>(bundleOf))();
    PasswordWindow dialog;
    dialog.window = bundle == nullptr ? nullptr : makeWindow(bundle, CFSTR("ServerPassword"));
    if (dialog.window == nullptr) {
        return false;
    }
    setStaticText(hostControl(dialog.window, kServerQuestion),
                  localized(bundle, isAgain ? CFSTR("Server Refuses Password") : CFSTR("Server Wants Password"),
                            utf8Text(server)));
    setFieldText(hostControl(dialog.window, kServerUser), makeString(utf8Text(proposal)));
    static constexpr EventTypeSpec kCommand{kEventClassCommand, kEventCommandProcess};
    InstallWindowEventHandler(dialog.window, handleCommand, 1, &kCommand, &dialog, nullptr);
    SetKeyboardFocus(dialog.window, hostControl(dialog.window, kServerPassword));
    RunAppModalLoopForWindow(dialog.window);
    if (dialog.isAccepted) {
        *user = makeString(fieldText(hostControl(dialog.window, kServerUser))).leak();
        *password = makeString(fieldText(hostControl(dialog.window, kServerPassword))).leak();
    }
    DisposeWindow(dialog.window);
    return dialog.isAccepted;
}

}  // namespace

void askServerPasswordsInWindows(std::function<CFBundleRef()> bundle) {
    static std::function<CFBundleRef()> bundleOf;
    bundleOf = std::move(bundle);
    PMServerSetPasswordProc(ask, &bundleOf);
}

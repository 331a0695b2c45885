#include "host/dialog/document_password.h"

#include "host/dialog/dialog_controls.h"
#include "host/settings/texts.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Events.h"
#include "platform/toolbox/Windows.h"

namespace {

struct PasswordWindow {
    CFBundleRef bundle;
    OpeningDocument& document;
    WindowRef window = nullptr;
    int tries = 0;
    bool isGivenUp = false;
};

/// A wrong password is told where it was typed, as long as there is another try.
void tryPassword(PasswordWindow& dialog) {
    const ControlRef field = hostControl(dialog.window, kDocumentPassword);
    dialog.document.unlock(fieldText(field));
    static_cast<void>(dialog.document.finish());
    const int left = kMostPasswords - ++dialog.tries;
    if (!dialog.document.isLocked() || left == 0) {
        QuitAppModalLoopForWindow(dialog.window);
        return;
    }
    setStaticText(hostControl(dialog.window, kDocumentPasswordFault),
                  left == 1 ? localized(dialog.bundle, CFSTR("Document Refuses Password Once"))
                            : localized(dialog.bundle, CFSTR("Document Refuses Password"), std::to_string(left)));
    setFieldText(field, CFRef<CFStringRef>::retain(CFSTR("")));
    SetKeyboardFocus(dialog.window, field);
}

OSStatus handleCommand(EventHandlerCallRef, EventRef event, void* userData) {
    auto& dialog = *static_cast<PasswordWindow*>(userData);
    HICommand command{};
    GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr, &command);
    switch (command.commandID) {
        case FourCharCode("ok  "):
            tryPassword(dialog);
            return noErr;
        case FourCharCode("not!"):
            dialog.isGivenUp = true;
            return QuitAppModalLoopForWindow(dialog.window);
        default:
            return eventNotHandledErr;
    }
}

}  // namespace

bool askDocumentPassword(CFBundleRef bundle, OpeningDocument* document) {
    PasswordWindow dialog{bundle, *document};
    dialog.window = makeWindow(bundle, CFSTR("DocumentPassword"));
    if (dialog.window == nullptr) {
        return false;
    }
    setStaticText(hostControl(dialog.window, kDocumentPasswordQuestion),
                  localized(bundle, CFSTR("Document Wants Password"), shortened(document->document().name)));
    static constexpr EventTypeSpec kCommand{kEventClassCommand, kEventCommandProcess};
    InstallWindowEventHandler(dialog.window, handleCommand, 1, &kCommand, &dialog, nullptr);
    SetKeyboardFocus(dialog.window, hostControl(dialog.window, kDocumentPassword));
    RunAppModalLoopForWindow(dialog.window);
    DisposeWindow(dialog.window);
    return !dialog.isGivenUp;
}

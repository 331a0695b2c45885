#include "host/dialog/preset_name_dialog.h"

#include "host/dialog/dialog_controls.h"
#include "host/dialog/notice.h"
#include "host/script/text.h"
#include "host/settings/texts.h"
#include "platform/toolbox/Events.h"
#include "platform/toolbox/Windows.h"

namespace {

struct NameDialog {
    CFBundleRef bundle;
    PresetNaming naming;
    std::string oldName;
    const KeptSettings& presets;
    WindowRef window = nullptr;
    std::optional<std::string> answer;

    [[nodiscard]] std::string typedName() const { return cleanPresetName(fieldText(hostControl(window, kPresetName))); }
    void updateButton() const {
        const ControlRef button = hostControl(window, kPresetNameOK);
        typedName().empty() ? DisableControl(button) : EnableControl(button);
    }
    /// A preset that is given its own name again is not replaced.
    [[nodiscard]] bool mayBeUsed(const std::string& name) const {
        const bool isOwn = naming == PresetNaming::rename && name == oldName;
        return isOwn || !presets.contains(name) ||
               askByNotice(localized(bundle, CFSTR("Preset Replace Header"), shortened(name)),
                           localized(bundle, CFSTR("Preset Replace Message")),
                           localized(bundle, CFSTR("Preset Replace Button")),
                           localized(bundle, CFSTR("Preset Cancel Button")));
    }
    void accept() {
        if (const std::string name = typedName(); !name.empty() && mayBeUsed(name)) {
            answer = name;
            QuitAppModalLoopForWindow(window);
        }
        updateButton();  // text may be taken away by the mouse alone
    }
};

OSStatus handleTyping(EventHandlerCallRef next, EventRef event, void* userData) {
    const OSStatus status = CallNextEventHandler(next, event);  // the field takes the text
    static_cast<NameDialog*>(userData)->updateButton();
    return status;
}

OSStatus handleCommand(EventHandlerCallRef, EventRef event, void* userData) {
    auto& dialog = *static_cast<NameDialog*>(userData);
    HICommand command{};
    GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr, &command);
    switch (command.commandID) {
        case FourCharCode("ok  "):
            dialog.accept();
            return noErr;
        case FourCharCode("not!"):
            QuitAppModalLoopForWindow(dialog.window);
            return noErr;
        default:
            return eventNotHandledErr;
    }
}

}  // namespace

std::optional<std::string> askPresetName(CFBundleRef bundle, PresetNaming naming, const std::string& name,
                                         const KeptSettings& presets) {
    NameDialog dialog{bundle, naming, name, presets};
    dialog.window = makeWindow(bundle, CFSTR("PresetName"));
    if (dialog.window == nullptr) {
        return std::nullopt;
    }
    const bool isSave = naming == PresetNaming::save;
    SetWindowTitleWithCFString(
        dialog.window, localized(bundle, isSave ? CFSTR("Preset Save Title") : CFSTR("Preset Rename Title")).get());
    SetControlTitleWithCFString(
        hostControl(dialog.window, kPresetNameOK),
        localized(bundle, isSave ? CFSTR("Preset Save Button") : CFSTR("Preset Rename Button")).get());
    setFieldText(hostControl(dialog.window, kPresetName), cfString(name));
    dialog.updateButton();
    static constexpr EventTypeSpec kCommand{kEventClassCommand, kEventCommandProcess};
    InstallWindowEventHandler(dialog.window, handleCommand, 1, &kCommand, &dialog, nullptr);
    static constexpr EventTypeSpec kTyping{kEventClassTextInput, kEventTextInputUnicodeForKeyEvent};
    InstallControlEventHandler(hostControl(dialog.window, kPresetName), handleTyping, 1, &kTyping, &dialog, nullptr);
    SetKeyboardFocus(dialog.window, hostControl(dialog.window, kPresetName));
    RunAppModalLoopForWindow(dialog.window);
    DisposeWindow(dialog.window);
    return dialog.answer;
}

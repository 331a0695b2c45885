#include "host/dialog/preset_name_dialog.h"

#include "host/dialog/dialog_controls.h"
#include "host/dialog/notice.h"
#include "host/settings/shared_presets.h"
#include "host/settings/texts.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Events.h"
#include "platform/toolbox/Windows.h"

namespace {

struct NameDialog {
    CFBundleRef bundle;
    std::string oldName;
    const KeptSettings& presets;
    const Printer* printer;  // for which a new preset is; null for an old one
    WindowRef window = nullptr;
    std::optional<PresetAnswer> answer;

    [[nodiscard]] bool isForAll() const {
        const ControlRef box = hostControl(window, kPresetForAll);
        return IsControlVisible(box) && GetControl32BitValue(box) != 0;
    }
    /// Instances cannot have every name, so it is told what the other programs will list.
    void showNameForAll() const {
        const std::string name = typedName();
        setStaticText(hostControl(window, kPresetForAllName),
                      printer != nullptr && isForAll() && !name.empty()
                          ? localized(bundle, CFSTR("Preset For All Name"), sharedName(*printer, name))
                          : makeString(""));
    }

    [[nodiscard]] std::string typedName() const { return cleanPresetName(fieldText(hostControl(window, kPresetName))); }
    void updateButton() const {
        const ControlRef button = hostControl(window, kPresetNameOK);
        typedName().empty() ? DisableControl(button) : EnableControl(button);
        showNameForAll();
    }
    /// A preset that is given its own name again is not replaced.
    [[nodiscard]] bool mayBeUsed(const std::string& name) const {
        const bool isOwn = printer == nullptr && name == oldName;
        return isOwn || !presets.contains(name) ||
               askByNotice(localized(bundle, CFSTR("Preset Replace Header"), shortened(name)),
                           localized(bundle, CFSTR("Preset Replace Message")),
                           localized(bundle, CFSTR("Preset Replace Button")),
                           localized(bundle, CFSTR("Preset Cancel Button")));
    }
    void accept() {
        if (const std::string name = typedName(); !name.empty() && mayBeUsed(name)) {
            answer = {name, isForAll()};
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

OSStatus handleHit(EventHandlerCallRef, EventRef, void* userData) {
    static_cast<NameDialog*>(userData)->showNameForAll();
    return eventNotHandledErr;
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

std::optional<PresetAnswer> ask(NameDialog dialog) {
    const CFBundleRef bundle = dialog.bundle;
    dialog.window = makeWindow(bundle, CFSTR("PresetName"));
    if (dialog.window == nullptr) {
        return std::nullopt;
    }
    const bool isSave = dialog.printer != nullptr;
    SetWindowTitleWithCFString(
        dialog.window, localized(bundle, isSave ? CFSTR("Preset Save Title") : CFSTR("Preset Rename Title")).get());
    SetControlTitleWithCFString(
        hostControl(dialog.window, kPresetNameOK),
        localized(bundle, isSave ? CFSTR("Preset Save Button") : CFSTR("Preset Rename Button")).get());
    setFieldText(hostControl(dialog.window, kPresetName), makeString(dialog.oldName));
    const bool isForAllOffered = isSave && canBeShared(*dialog.printer);
    const ControlRef forAll = hostControl(dialog.window, kPresetForAll);
    SetControlVisibility(forAll, isForAllOffered, true);
    SetControlVisibility(hostControl(dialog.window, kPresetForAllName), isForAllOffered, true);
    SetControl32BitValue(forAll, isForAllOffered && isShared(*dialog.printer, dialog.oldName) ? 1 : 0);
    dialog.updateButton();
    static constexpr EventTypeSpec kCommand{kEventClassCommand, kEventCommandProcess};
    InstallWindowEventHandler(dialog.window, handleCommand, 1, &kCommand, &dialog, nullptr);
    static constexpr EventTypeSpec kTyping{kEventClassTextInput, kEventTextInputUnicodeForKeyEvent};
    InstallControlEventHandler(hostControl(dialog.window, kPresetName), handleTyping, 1, &kTyping, &dialog, nullptr);
    static constexpr EventTypeSpec kHit{kEventClassControl, kEventControlHit};
    InstallControlEventHandler(forAll, handleHit, 1, &kHit, &dialog, nullptr);
    SetKeyboardFocus(dialog.window, hostControl(dialog.window, kPresetName));
    RunAppModalLoopForWindow(dialog.window);
    DisposeWindow(dialog.window);
    return dialog.answer;
}

}  // namespace

std::optional<PresetAnswer> askPresetToSave(CFBundleRef bundle, const std::string& name, const KeptSettings& presets,
                                            const Printer& printer) {
    return ask({bundle, name, presets, &printer});
}

std::optional<std::string> askPresetName(CFBundleRef bundle, const std::string& name, const KeptSettings& presets) {
    const auto answer = ask({bundle, name, presets, nullptr});
    return answer ? std::optional(answer->name) : std::nullopt;
}

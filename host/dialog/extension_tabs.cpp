#include "host/dialog/extension_tabs.h"

#include "host/dialog/dialog_controls.h"
#include "host/script/panels.h"
#include "platform/toolbox/Windows.h"

namespace {

// What panels send for keys that step through them.
constexpr OSType kNextPanel = FourCharCode("TFup");
constexpr OSType kPreviousPanel = FourCharCode("TFdn");

static_assert(kMakersTabs == script::kExtensionTabs.id && kHostSignature == script::kExtensionTabs.signature);

}  // namespace

ExtensionTabs::ExtensionTabs(WindowRef window, PluginHost& plugin) : window_(window), plugin_(plugin) {
    static constexpr EventTypeSpec kCommands{kEventClassCommand, kEventCommandProcess};
    InstallControlEventHandler(hostControl(window_, kMakersPlace), handleCommand, 1, &kCommands, this, nullptr);
}

void ExtensionTabs::fill() {
    const ControlRef tabs = hostControl(window_, kMakersTabs);
    const auto count = static_cast<SInt32>(plugin_.count());
    SetControl32BitMaximum(tabs, count > 1 ? count : 0);
    for (SInt32 i = 1; count > 1 && i <= count; ++i) {
        const ControlTabInfoRecV1 info{kControlTabInfoVersionOne, 0, plugin_.title(static_cast<std::size_t>(i - 1))};
        SetControlData(tabs, static_cast<ControlPartCode>(i), kControlTabInfoTag, sizeof info, &info);
    }
    SetControl32BitValue(tabs, static_cast<SInt32>(plugin_.shown() + 1));
    SetControlVisibility(tabs, count > 1, true);
}

void ExtensionTabs::choose() {
    const ControlRef tabs = hostControl(window_, kMakersTabs);
    if (plugin_.show(static_cast<std::size_t>(GetControl32BitValue(tabs) - 1))) {
        ControlRef focused = nullptr;
        GetKeyboardFocus(window_, &focused);
        if (!IsControlActive(focused)) {
            SetKeyboardFocus(window_, tabs);  // else the keys would go to what comes after the panel in the window
        }
    }
}

OSStatus ExtensionTabs::handleCommand(EventHandlerCallRef, EventRef event, void* self) {
    HICommand command{};
    GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr, &command);
    const SInt32 steps = command.commandID == kNextPanel ? 1 : command.commandID == kPreviousPanel ? -1 : 0;
    const auto* const tabs = static_cast<const ExtensionTabs*>(self);
    return steps != 0 && tabs->step(steps) ? noErr : eventNotHandledErr;
}

bool ExtensionTabs::step(SInt32 steps) const {
    if (plugin_.count() < 2) {
        return false;
    }
    const SInt32 count = script::countPanels(window_);
    const auto others = static_cast<SInt32>(plugin_.count() - 1);
    const SInt32 from = script::shownPanel(window_);
    const SInt32 to = (from - 1 + steps + count) % count + 1;
    const bool isInShell = from + others <= count && to + others <= count;
    if (!isInShell) {
        script::showPanel(window_, to);
    }
    return !isInShell;
}

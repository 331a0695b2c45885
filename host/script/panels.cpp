#include "host/script/panels.h"

#include "host/script/stage.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/Events.h"
#include "platform/toolbox/Menus.h"

namespace script {

namespace {

ControlRef find(WindowRef window, const ControlID& id) {
    ControlRef control = nullptr;
    GetControlByID(window, &id, &control);
    return control;
}

/// Where the panels' controls are: null is as good as a control without items.
struct Choosers {
    explicit Choosers(WindowRef window)
        : selector(find(window, kPanelSelector)),
          tabs(find(window, kExtensionTabs)),
          menu(GetControlPopupMenuHandle(selector)),
          inShell(CountMenuItems(menu)),
          extensions(tabs == nullptr ? 0 : GetControl32BitMaximum(tabs)) {}

    [[nodiscard]] SInt32 tabOf(SInt32 panel) const { return panel <= inShell ? 1 : panel - inShell + 1; }

    ControlRef selector;
    ControlRef tabs;
    MenuRef menu;
    SInt32 inShell;
    SInt32 extensions;  // the shell is one of them
};

void setAndTell(ControlRef control, SInt32 value) {
    if (control == nullptr || GetControl32BitValue(control) == value) {
        return;
    }
    SetControl32BitValue(control, value);
    EventRef hit = nullptr;
    CreateEvent(nullptr, kEventClassControl, kEventControlHit, 0, 0, &hit);
    SetEventParameter(hit, kEventParamDirectObject, typeControlRef, sizeof control, &control);
    SendEventToEventTarget(hit, GetControlEventTarget(control));
    ReleaseEvent(hit);
}

}  // namespace

SInt32 countPanels(WindowRef window) {
    const Choosers choosers(window);
    return choosers.inShell + (choosers.extensions > 1 ? choosers.extensions - 1 : 0);
}

SInt32 shownPanel(WindowRef window) {
    const Choosers choosers(window);
    const SInt32 tab = choosers.extensions > 1 ? GetControl32BitValue(choosers.tabs) : 1;
    return tab > 1 ? choosers.inShell + tab - 1 : GetControl32BitValue(choosers.selector);
}

ControlRef shownPanelPane(WindowRef window) {
    const Choosers choosers(window);
    const SInt32 panel = shownPanel(window);
    return panel <= choosers.inShell ? find(window, {kPanelPaneSignature, panel})
                                     : find(window, {kExtensionPaneSignature, choosers.tabOf(panel)});
}

std::string panelTitle(WindowRef window, SInt32 panel) {
    const Choosers choosers(window);
    if (panel <= choosers.inShell) {
        return panel < 1 ? std::string() : itemText(choosers.menu, static_cast<MenuItemIndex>(panel));
    }
    ControlTabInfoRecV1 info{};
    GetControlData(choosers.tabs, static_cast<ControlPartCode>(choosers.tabOf(panel)), kControlTabInfoTag, sizeof info,
                   &info, nullptr);
    return utf8Text(CFRef<CFStringRef>::adopt(info.name).get());
}

OSStatus choosePanel(WindowRef window, SInt32 panel) {
    const Choosers choosers(window);
    const SInt32 tab = choosers.tabOf(panel);
    if (choosers.extensions > 1 && GetControl32BitValue(choosers.tabs) != tab) {
        if (const OSStatus status = AutomationSetValue(choosers.tabs, tab); status != noErr) {
            return status;
        }
    }
    return tab > 1 ? OSStatus{noErr}
                   : AutomationChooseMenuItem(choosers.selector, choosers.menu, static_cast<MenuItemIndex>(panel));
}

void showPanel(WindowRef window, SInt32 panel) {
    const Choosers choosers(window);
    if (choosers.extensions > 1) {
        setAndTell(choosers.tabs, choosers.tabOf(panel));
    }
    if (panel <= choosers.inShell) {
        setAndTell(choosers.selector, panel);
    }
}

}  // namespace script

#include "host/script/actions.h"

#include "host/script/control_listing.h"
#include "host/script/panels.h"
#include "host/script/quoted.h"
#include "platform/foundation/message.h"
#include "platform/foundation/terminal_text.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/Events.h"
#include "platform/toolbox/Menus.h"

#include <filesystem>

namespace script {

namespace {

using Reason = std::optional<std::string>;

std::string noControl(const ControlName& name) {
    return messageText("there is no control %1", {controlNameText(name)});
}

/// Why a user could not have done that to the control.
std::string unusable(ControlRef control) {
    const std::string name = nameOf(control);
    if (!isShown(control)) {
        return messageText("%1 is hidden", {name});
    }
    if (!IsControlEnabled(control)) {
        return messageText("%1 is disabled", {name});
    }
    if (GetControlOwner(control) != FrontNonFloatingWindow()) {
        return messageText("%1 is behind another window", {name});
    }
    return messageText("%1 cannot be reached or does not take that", {name});
}

/// The reason of a status; `wrongKind` is what it means that the control cannot do such a thing at all.
Reason reasonOf(OSStatus status, ControlRef control, const std::string& wrongKind) {
    if (status == noErr) {
        return std::nullopt;
    }
    return status == kControlNotUsableErr ? unusable(control) : wrongKind;
}

/// An item of a menu or of a submenu.
struct FoundItem {
    MenuRef menu;
    MenuItemIndex item;
};

/// The first item that satisfies the condition, a menu's own items before those of its submenus.
template <typename Condition>
std::optional<FoundItem> findItem(MenuRef menu, Condition condition) {
    AutomationPrepareMenu(menu);
    for (MenuItemIndex item = 1; item <= CountMenuItems(menu); ++item) {
        if (condition(menu, item)) {
            return FoundItem{menu, item};
        }
    }
    for (MenuItemIndex item = 1; item <= CountMenuItems(menu); ++item) {
        MenuRef submenu = nullptr;
        GetMenuItemHierarchicalMenu(menu, item, &submenu);
        if (const auto found = findItem(submenu, condition)) {
            return found;
        }
    }
    return std::nullopt;
}

Reason chooseItem(ControlRef control, FoundItem found) {
    return reasonOf(AutomationChooseMenuItem(control, found.menu, found.item), control,
                    messageText("its menu does not open"));
}

Reason pressButton(WindowRef window, OSStatus (*find)(WindowRef, ControlRef*)) {
    ControlRef button = nullptr;
    if (find(window, &button) != noErr) {
        return messageText("the dialog is closed");
    }
    return reasonOf(AutomationClick(button), button, messageText("it is no button"));
}

class Performer {
public:
    explicit Performer(const Stage& stage) : stage_(stage) {}

    Reason operator()(const Panel& panel) const {
        const WindowRef window = stage_.mainWindow;
        const SInt32 count = countPanels(window);
        if (count == 0) {
            return messageText("there are no panels");
        }
        SInt32 found = 0;
        for (SInt32 i = count; i > 0; --i) {
            const bool isNumber = found == 0 && std::to_string(i) == panel.titleOrNumber;
            found = isNumber || panelTitle(window, i) == panel.titleOrNumber ? i : found;
        }
        if (found == 0) {
            return messageText("there is no panel %1", {quoted(panel.titleOrNumber)});
        }
        ControlRef selector = findControl(stage_, {kPanelSelector.signature, kPanelSelector.id});
        return reasonOf(choosePanel(window, found), selector, messageText("its menu does not open"));
    }

    Reason operator()(const Click& click) const {
        return withControl(click.control, [](ControlRef control) {
            return reasonOf(AutomationClick(control), control,
                            messageText("it cannot be clicked; use %1, %2 or %3", {"set", "choose", "rows"}));
        });
    }

    Reason operator()(const Set& set) const {
        return withControl(set.control, [&](ControlRef control) {
            return reasonOf(AutomationSetValue(control, set.value), control,
                            messageText("%1 does not take the value %2", {controlNameText(set.control), set.value}));
        });
    }

    Reason operator()(const Choose& choose) const {
        return withControl(choose.control, [&](ControlRef control) -> Reason {
            const std::string none =
                messageText("%1 has no item %2", {controlNameText(choose.control), quoted(choose.text)});
            const MenuRef menu = GetControlPopupMenuHandle(control);
            if (menu == nullptr) {
                return reasonOf(AutomationChooseText(control, makeString(choose.text).get()), control, none);
            }
            const auto found =
                findItem(menu, [&](MenuRef in, MenuItemIndex i) { return itemText(in, i) == choose.text; });
            return found ? chooseItem(control, *found) : none;
        });
    }

    Reason operator()(const Item& wanted) const {
        return withControl(wanted.control, [&](ControlRef control) -> Reason {
            const auto found = findItem(GetControlPopupMenuHandle(control), [&](MenuRef menu, MenuItemIndex i) {
                OSType command = 0;
                MenuRefCon reference = 0;
                return GetMenuItemCommandID(menu, i, &command) == noErr && command == wanted.command &&
                       GetMenuItemRefCon(menu, i, &reference) == noErr && reference == wanted.reference;
            });
            if (!found) {
                return messageText(
                    "%1 has no item %2 with reference value %3",
                    {controlNameText(wanted.control), quoted(FourCharCodeText(wanted.command)), wanted.reference});
            }
            return chooseItem(control, *found);
        });
    }

    Reason operator()(const Type& type) const {
        return withControl(type.control, [&](ControlRef control) {
            return reasonOf(AutomationType(control, makeString(type.text).get()), control,
                            messageText("%1 is no field that takes this text", {controlNameText(type.control)}));
        });
    }

    Reason operator()(const Rows& rows) const {
        return withControl(rows.control, [&](ControlRef control) {
            return reasonOf(AutomationSelectRows(control, static_cast<ItemCount>(rows.rows.size()), rows.rows.data()),
                            control,
                            messageText("%1 is no list with these rows, or does not allow the selection",
                                        {controlNameText(rows.control)}));
        });
    }

    /// From the focused control of the shown panel, else from that panel's pane: never from a field beside the panel,
    /// whose parents are not the panel's.
    Reason operator()(const Command& command) const {
        const WindowRef front = FrontNonFloatingWindow();
        if (front == nullptr) {
            return messageText("no window is open");
        }
        ControlRef sender = nullptr;
        GetKeyboardFocus(front, &sender);
        if (ControlRef pane = shownPanelPane(front); pane != nullptr && !isWithin(sender, pane)) {
            sender = pane;
        }
        const HICommand record{kHICommandFromControl, command.code, nullptr, 0, sender};
        EventRef event = nullptr;
        CreateEvent(nullptr, kEventClassCommand, kEventCommandProcess, 0, 0, &event);
        SetEventParameter(event, kEventParamDirectObject, typeHICommand, sizeof record, &record);
        SendEventToEventTarget(event, sender != nullptr ? GetControlEventTarget(sender) : GetWindowEventTarget(front));
        ReleaseEvent(event);
        return std::nullopt;
    }

    Reason operator()(const Answer&) const { return std::nullopt; }
    Reason operator()(const File&) const { return std::nullopt; }
    Reason operator()(const Expect& expect) const { return check(expect, stage_); }
    Reason operator()(const ExpectWindow& expect) const { return check(expect); }
    Reason operator()(const ExpectConflicts& expect) const { return check(expect, stage_); }

    Reason operator()(const Controls&) const {
        const WindowRef front = FrontNonFloatingWindow();
        if (front == nullptr) {
            return messageText("no window is open");
        }
        printLines(stage_.output, listing(listedWindow(front)));
        return std::nullopt;
    }

    Reason operator()(const Shot& shot) const {
        const WindowRef front = FrontNonFloatingWindow();
        if (front == nullptr) {
            return messageText("no window is open");
        }
        if (stage_.finish) {
            stage_.finish();
        }
        const std::filesystem::path folder = stage_.shotsFolder.empty() ? "." : stage_.shotsFolder;
        std::error_code error;
        std::filesystem::create_directories(folder, error);
        const std::string file = (folder / (shot.name + ".png")).string();
        if (error || AutomationSnapshot(front, makeFileURL(file).get()) != noErr) {
            return messageText("%1 cannot be written", {file});
        }
        return std::nullopt;
    }

    Reason operator()(const Ok&) const { return pressButton(stage_.mainWindow, GetWindowDefaultButton); }
    Reason operator()(const Cancel&) const { return pressButton(stage_.mainWindow, GetWindowCancelButton); }

    Reason operator()(const Own& own) const { return stage_.perform(own); }

private:
    template <typename Act>
    Reason withControl(const ControlName& name, Act act) const {
        ControlRef control = findControl(stage_, name);
        return control != nullptr ? act(control) : noControl(name);
    }

    static bool isWithin(ControlRef control, ControlRef pane) {
        while (control != nullptr && control != pane) {
            control = GetSuperControl(control);
        }
        return control != nullptr;
    }

    const Stage& stage_;
};

}  // namespace

std::optional<std::string> perform(const Action& action, const Stage& stage) {
    return std::visit(Performer(stage), action);
}

}  // namespace script

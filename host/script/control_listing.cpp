#include "host/script/control_listing.h"

#include "host/script/panels.h"
#include "host/script/text.h"
#include "platform/foundation/terminal_text.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/Menus.h"

#include <algorithm>
#include <sstream>

namespace script {

namespace {

/// Controls below which the listing does not go.
using Leaves = bool (*)(ControlRef);

std::string nameText(ControlRef control) {
    const std::string name = nameOf(control);
    return name.empty() ? name : " " + name;
}

std::string commandText(OSType command) {
    if (command == 0) {
        return {};
    }
    const std::string code = FourCharCodeText(command);
    return " command " + (code.find(' ') == std::string::npos ? code : quoted(code));
}

std::string valueText(ControlRef control) {
    std::string value = " value " + std::to_string(GetControl32BitValue(control));
    switch (GetControlKind(control)) {
        case ControlKind::littleArrows:
        case ControlKind::slider:
        case ControlKind::progressBar:
            return value + " of " + std::to_string(GetControl32BitMinimum(control)) + " to " +
                   std::to_string(GetControl32BitMaximum(control));
        case ControlKind::popUp:
        case ControlKind::checkBox:
        case ControlKind::radioButton:
        case ControlKind::radioGroup:
        case ControlKind::tabs:
            return value;
        case ControlKind::list:
            return " rows " + std::to_string(AutomationCountRows(control));
        default:
            return {};
    }
}

std::string stateText(ControlRef control) {
    std::string state;
    if (!IsControlVisible(control)) {
        state += " (hidden)";
    }
    if (!IsControlEnabled(control)) {
        state += " (disabled)";
    }
    return state;
}

void listMenu(MenuRef menu, const std::string& indent, std::string* listing) {
    AutomationPrepareMenu(menu);
    for (MenuItemIndex item = 1; item <= CountMenuItems(menu); ++item) {
        OSType command = 0;
        MenuRefCon reference = 0;
        GetMenuItemCommandID(menu, item, &command);
        GetMenuItemRefCon(menu, item, &reference);
        *listing += indent + std::to_string(item) + " " + quoted(itemText(menu, item)) + commandText(command);
        if (reference != 0) {
            *listing += " reference " + std::to_string(reference);
        }
        *listing += IsMenuItemChecked(menu, item) ? " (checked)" : "";
        *listing += IsMenuItemEnabled(menu, item) ? "\n" : " (disabled)\n";
        MenuRef submenu = nullptr;
        GetMenuItemHierarchicalMenu(menu, item, &submenu);
        listMenu(submenu, indent + "  ", listing);
    }
}

/// The first rows of a list, with the texts of their cells.
void listRows(ControlRef list, const std::string& indent, std::string* listing) {
    constexpr UInt32 kShownRows = 10;
    const auto count = static_cast<UInt32>(AutomationCountRows(list));
    for (UInt32 row = 1; row <= std::min(count, kShownRows); ++row) {
        *listing += indent + std::to_string(row);
        for (UInt32 column = 1;; ++column) {
            const auto text = CFRef<CFStringRef>::adopt(AutomationCopyCellText(list, row, column));
            if (!text) {
                break;
            }
            *listing += " " + quoted(utf8(text.get()));
        }
        *listing += AutomationIsRowSelected(list, row) ? " (selected)\n" : "\n";
    }
    if (count > kShownRows) {
        *listing += indent + "... " + std::to_string(count - kShownRows) + " more\n";
    }
}

void listControl(ControlRef control, int depth, Leaves leaves, std::string* listing) {
    const std::string indent(static_cast<std::size_t>(depth) * 2, ' ');
    const std::string text = textOf(control);
    *listing += indent + ControlKindName(GetControlKind(control)) + nameText(control) +
                commandText(GetControlCommandID(control)) + valueText(control);
    *listing += (text.empty() ? "" : " " + printableTextOf(control)) + stateText(control) + "\n";
    listMenu(GetControlPopupMenuHandle(control), indent + "  ", listing);
    listRows(control, indent + "  ", listing);
    if (leaves(control)) {
        return;
    }
    for (UInt16 i = 1; i <= CountSubControls(control); ++i) {
        ControlRef child = nullptr;
        GetIndexedSubControl(control, i, &child);
        listControl(child, depth + 1, leaves, listing);
    }
}

std::string listBelowTitle(WindowRef window, Leaves leaves) {
    CFStringRef title = nullptr;
    CopyWindowTitleAsCFString(window, &title);
    std::string listing = "window " + quoted(utf8(CFRef<CFStringRef>::adopt(title).get())) + "\n";
    ControlRef root = nullptr;
    if (GetRootControl(window, &root) == noErr) {
        for (UInt16 i = 1; i <= CountSubControls(root); ++i) {
            ControlRef child = nullptr;
            GetIndexedSubControl(root, i, &child);
            listControl(child, 1, leaves, &listing);
        }
    }
    return listing;
}

bool isPanelPane(ControlRef control) {
    ControlID id{};
    const bool hasID = GetControlID(control, &id) == noErr;
    return hasID && (id.signature == kPanelPaneSignature || (id.signature == kExtensionPaneSignature && id.id > 1));
}

}  // namespace

void printLines(std::FILE* stream, const std::string& listing) {
    std::istringstream lines(listing);
    for (std::string line; std::getline(lines, line);) {
        printLine(stream, line);
    }
}

std::string listWindow(WindowRef window) {
    return listBelowTitle(window, [](ControlRef) { return false; });
}

std::string listPanels(WindowRef window) {
    std::string listing = listBelowTitle(window, isPanelPane);
    for (SInt32 panel = 1; panel <= countPanels(window); ++panel) {
        listing += "\npanel " + std::to_string(panel) + " " + quoted(panelTitle(window, panel)) + "\n";
        choosePanel(window, panel);
        listControl(
            shownPanelPane(window), 1, [](ControlRef) { return false; }, &listing);
    }
    return listing;
}

}  // namespace script

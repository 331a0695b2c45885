#include "host/script/listed_controls.h"

#include "host/script/panels.h"
#include "host/script/stage.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Automation.h"

#include <algorithm>

namespace script {

namespace {

/// Controls below which the listing does not go.
using Leaves = bool (*)(ControlRef);

std::vector<ListedItem> itemsOf(MenuRef menu) {
    AutomationPrepareMenu(menu);
    std::vector<ListedItem> items;
    for (MenuItemIndex item = 1; item <= CountMenuItems(menu); ++item) {
        ListedItem& listed = items.emplace_back();
        listed.text = itemText(menu, item);
        GetMenuItemCommandID(menu, item, &listed.command);
        GetMenuItemRefCon(menu, item, &listed.reference);
        listed.isChecked = IsMenuItemChecked(menu, item);
        listed.isEnabled = IsMenuItemEnabled(menu, item);
        MenuRef submenu = nullptr;
        GetMenuItemHierarchicalMenu(menu, item, &submenu);
        listed.items = itemsOf(submenu);
    }
    return items;
}

std::vector<ListedRow> rowsOf(ControlRef list, UInt32 count) {
    std::vector<ListedRow> rows(std::min(count, kShownRows));
    for (UInt32 row = 1; row <= rows.size(); ++row) {
        ListedRow& listed = rows[row - 1];
        for (UInt32 column = 1;; ++column) {
            const auto text = CFRef<CFStringRef>::adopt(AutomationCopyCellText(list, row, column));
            if (!text) {
                break;
            }
            listed.cells.push_back(utf8Text(text.get()));
        }
        listed.isSelected = AutomationIsRowSelected(list, row);
    }
    return rows;
}

/// The value of a kind of control whose value means something.
void takeValue(ControlRef control, ListedControl* listed) {
    switch (GetControlKind(control)) {
        case ControlKind::littleArrows:
        case ControlKind::slider:
        case ControlKind::progressBar:
            listed->minimum = GetControl32BitMinimum(control);
            listed->maximum = GetControl32BitMaximum(control);
            [[fallthrough]];
        case ControlKind::popUp:
        case ControlKind::checkBox:
        case ControlKind::radioButton:
        case ControlKind::radioGroup:
        case ControlKind::tabs:
            listed->value = GetControl32BitValue(control);
            break;
        case ControlKind::list:
            listed->rowCount = static_cast<UInt32>(AutomationCountRows(control));
            break;
        default:
            break;
    }
}

ListedControl listedControl(ControlRef control, Leaves leaves) {
    ListedControl listed;
    listed.kind = ControlKindName(GetControlKind(control));
    listed.name = nameOf(control);
    listed.command = GetControlCommandID(control);
    takeValue(control, &listed);
    listed.text = textOf(control);
    listed.isSecret = isSecret(control) && !listed.text.empty();
    if (listed.isSecret) {
        listed.text.clear();
    }
    listed.isVisible = IsControlVisible(control);
    listed.isEnabled = IsControlEnabled(control);
    listed.items = itemsOf(GetControlPopupMenuHandle(control));
    listed.firstRows = rowsOf(control, static_cast<UInt32>(AutomationCountRows(control)));
    if (leaves(control)) {
        return listed;
    }
    for (UInt16 i = 1; i <= CountSubControls(control); ++i) {
        ControlRef child = nullptr;
        GetIndexedSubControl(control, i, &child);
        listed.controls.push_back(listedControl(child, leaves));
    }
    return listed;
}

ListedWindow listedBelowTitle(WindowRef window, Leaves leaves) {
    CFStringRef title = nullptr;
    CopyWindowTitleAsCFString(window, &title);
    ListedWindow listed{utf8Text(CFRef<CFStringRef>::adopt(title).get()), {}, {}};
    ControlRef root = nullptr;
    if (GetRootControl(window, &root) == noErr) {
        listed.controls = listedControl(root, leaves).controls;
    }
    return listed;
}

bool isPanelPane(ControlRef control) {
    ControlID id{};
    const bool hasID = GetControlID(control, &id) == noErr;
    return hasID && (id.signature == kPanelPaneSignature || (id.signature == kExtensionPaneSignature && id.id > 1));
}

}  // namespace

ListedWindow listedWindow(WindowRef window) {
    return listedBelowTitle(window, [](ControlRef) { return false; });
}

ListedWindow listedPanels(WindowRef window) {
    ListedWindow listed = listedBelowTitle(window, isPanelPane);
    for (SInt32 panel = 1; panel <= countPanels(window); ++panel) {
        std::string title = panelTitle(window, panel);
        choosePanel(window, panel);
        listed.panels.push_back(
            {panel, std::move(title), listedControl(shownPanelPane(window), [](ControlRef) { return false; })});
    }
    return listed;
}

}  // namespace script

// What a window has, as it is told: its controls with their menus and rows, and the panels of the dialog.
#pragma once

#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Menus.h"

#include <optional>
#include <string>
#include <vector>

namespace script {

struct ListedItem {
    std::string text;
    OSType command = 0;  // 0 for none
    MenuRefCon reference = 0;
    bool isChecked = false;
    bool isEnabled = true;
    std::vector<ListedItem> items;  // of its submenu
};

struct ListedRow {
    std::vector<std::string> cells;
    bool isSelected = false;
};

struct ListedControl {
    const char* kind = "";
    std::string name;    // SIGNATURE:NUMBER; may be empty
    OSType command = 0;  // 0 for none
    std::optional<SInt32> value;
    std::optional<SInt32> minimum;  // both, or none
    std::optional<SInt32> maximum;
    std::string text;       // empty for a secret
    bool isSecret = false;  // there is one
    bool isVisible = true;
    bool isEnabled = true;
    std::vector<ListedItem> items;     // of its menu
    std::optional<UInt32> rowCount;    // of a list
    std::vector<ListedRow> firstRows;  // kShownRows at most
    std::vector<ListedControl> controls;
};
inline constexpr UInt32 kShownRows = 10;

struct ListedPanel {
    SInt32 number = 0;
    std::string title;
    ListedControl pane;
};

struct ListedWindow {
    std::string title;
    std::vector<ListedControl> controls;
    std::vector<ListedPanel> panels;
};

/// The window with all its controls, and no panels.
ListedWindow listedWindow(WindowRef window);

/// Every panel of the window, each shown through the selector first, and the window's other controls.
ListedWindow listedPanels(WindowRef window);

}  // namespace script

#include "host/script/control_listing.h"

#include "host/script/quoted.h"
#include "host/script/stage.h"
#include "platform/foundation/terminal_text.h"

#include <sstream>

namespace script {

namespace {

std::string commandText(OSType command) {
    if (command == 0) {
        return {};
    }
    const std::string code = FourCharCodeText(command);
    return " command " + (code.find(' ') == std::string::npos ? code : quoted(code));
}

std::string valueText(const ListedControl& control) {
    if (control.rowCount) {
        return " rows " + std::to_string(*control.rowCount);
    }
    std::string value = control.value ? " value " + std::to_string(*control.value) : std::string();
    if (control.minimum && control.maximum) {
        value += " of " + std::to_string(*control.minimum) + " to " + std::to_string(*control.maximum);
    }
    return value;
}

std::string stateText(const ListedControl& control) {
    return std::string(control.isVisible ? "" : " (hidden)") + (control.isEnabled ? "" : " (disabled)");
}

void listItems(const std::vector<ListedItem>& items, const std::string& indent, std::string* listing) {
    for (std::size_t number = 0; const ListedItem& item : items) {
        *listing += indent + std::to_string(++number) + " " + quoted(item.text) + commandText(item.command);
        if (item.reference != 0) {
            *listing += " reference " + std::to_string(item.reference);
        }
        *listing += item.isChecked ? " (checked)" : "";
        *listing += item.isEnabled ? "\n" : " (disabled)\n";
        listItems(item.items, indent + "  ", listing);
    }
}

/// The first rows of a list, with the texts of their cells.
void listRows(const ListedControl& list, const std::string& indent, std::string* listing) {
    for (std::size_t number = 0; const ListedRow& row : list.firstRows) {
        *listing += indent + std::to_string(++number);
        for (const std::string& cell : row.cells) {
            *listing += " " + quoted(cell);
        }
        *listing += row.isSelected ? " (selected)\n" : "\n";
    }
    if (list.rowCount.value_or(0) > list.firstRows.size()) {
        *listing += indent + "... " + std::to_string(*list.rowCount - list.firstRows.size()) + " more\n";
    }
}

void listControl(const ListedControl& control, int depth, std::string* listing) {
    const std::string indent(static_cast<std::size_t>(depth) * 2, ' ');
    *listing += indent + control.kind + (control.name.empty() ? "" : " " + control.name) +
                commandText(control.command) + valueText(control);
    *listing += control.isSecret ? std::string(" ") + kDots : control.text.empty() ? "" : " " + quoted(control.text);
    *listing += stateText(control) + "\n";
    listItems(control.items, indent + "  ", listing);
    listRows(control, indent + "  ", listing);
    for (const ListedControl& child : control.controls) {
        listControl(child, depth + 1, listing);
    }
}

}  // namespace

void printLines(std::FILE* stream, const std::string& listing) {
    std::istringstream lines(listing);
    for (std::string line; std::getline(lines, line);) {
        printLine(stream, line);
    }
}

std::string listing(const ListedWindow& window) {
    std::string text = "window " + quoted(window.title) + "\n";
    for (const ListedControl& control : window.controls) {
        listControl(control, 1, &text);
    }
    for (const ListedPanel& panel : window.panels) {
        text += "\npanel " + std::to_string(panel.number) + " " + quoted(panel.title) + "\n";
        listControl(panel.pane, 1, &text);
    }
    return text;
}

}  // namespace script

// Where a script plays: the windows that are open, and the controls in them.
#pragma once

#include "host/script/script_parser.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Windows.h"

#include <cstdio>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace script {

struct Stage {
    WindowRef mainWindow = nullptr;  // the print dialog, whose buttons `ok` and `cancel` press
    std::string shotsFolder;         // made when the first shot is taken
    std::FILE* output = stdout;      // of `controls` and of notices
    /// Does what the program does when the user pauses; called before each line. May be empty.
    std::function<void()> settle;
    /// Does the program's own actions, if it has any; returns why one could not be done.
    std::function<std::optional<std::string>(const Own&)> perform;
    /// A sentence for each conflict between the settings, when the program knows of any.
    std::function<std::vector<std::string>()> conflicts = nullptr;
    /// Waits until the front window shows all that it is going to show; called before a picture of it is taken.
    std::function<void()> finish = nullptr;
};

/// The control of that name in the front window, else in the main window; null when there is none.
ControlRef findControl(const Stage& stage, const ControlName& name);

/// How scripts call a control; empty for one that they cannot call.
std::string nameOf(ControlRef control);

/// Whether it and all its parents are shown.
bool isShown(ControlRef control);

/// What the control says: a field's text, a pop-up's chosen item, a button's title. Empty for other kinds.
std::string textOf(ControlRef control);
/// What is printed for a secret.
inline constexpr const char* kDots = "••••";
/// The same, quoted, with a secret replaced by dots; for everything that is printed.
std::string printableTextOf(ControlRef control);
bool isSecret(ControlRef control);

std::string itemText(MenuRef menu, MenuItemIndex item);

}  // namespace script

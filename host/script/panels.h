// The maker's panels in the dialog, by their numbers: those of the shell, as its selector counts them, then the other
// extensions, each of which is a panel of its own, in the order of their tabs.
#pragma once

#include "platform/toolbox/Controls.h"

#include <string>

namespace script {

/// The signature and number of a shell's panel selector, and the signature of its panels' panes, which are numbered as
/// the selector's items.
inline constexpr ControlID kPanelSelector{FourCharCode("Tshl"), 16};
inline constexpr OSType kPanelPaneSignature = FourCharCode("TSgb");

/// The tabs of the extensions, of which the first is the shell, and the signature of their panes, which are numbered as
/// the tabs. There are no tabs where there is one extension only.
inline constexpr ControlID kExtensionTabs{FourCharCode("Host"), 52};
inline constexpr OSType kExtensionPaneSignature = FourCharCode("Hext");

/// 0 for a window without panels.
SInt32 countPanels(WindowRef window);
/// The number of the panel that is shown; 0 for none.
SInt32 shownPanel(WindowRef window);
/// The pane of the panel that is shown; null for none.
ControlRef shownPanelPane(WindowRef window);
/// Empty for a number that no panel has.
std::string panelTitle(WindowRef window, SInt32 panel);

/// Shows a panel by mouse and keys, as a user does: the status of the toolbox's automation.
OSStatus choosePanel(WindowRef window, SInt32 panel);
/// Shows a panel for the program; its controls hear of it as if the user had chosen it.
void showPanel(WindowRef window, SInt32 panel);

}  // namespace script

// The menu of the finishing button: what the printer can do with a set.
//
// Its commands are the kinds of finishing (finishing_choices.h) and those below. CarryOutFinishingCommand
// (finishing_commands.h) carries all of them out but kBookletCreationCommand, which is the panel's.
#pragma once

#include "panels/paper_output/finishing_choices.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Menus.h"

inline constexpr OSType kSlipSheetsCommand = FourCharCode("Spsh");
inline constexpr OSType kOffsetCommand = FourCharCode("Ofsb");
inline constexpr OSType kBookletCreationCommand = FourCharCode("Bkcr");

/// Fills the menu of a bevel button. Always 0.
OSStatus InitializeFinishingMenuButton(ControlRef button, CFBundleRef bundle);
/// For symmetry: the menu is the button's, and holds on to nothing.
void FinalizeFinishingMenuButton(ControlRef button);

/// Replaces all items of the menu by what the printer can do. Items that cannot be deleted stay, and none are added.
void PopulateFinishingMenu(MenuRef menu, CFBundleRef bundle);

/// Puts a check mark beside the item of the chosen finishing, and beside those of slip sheets and offset when they are
/// on.
void MarkFinishingMenu(MenuRef menu, const FinishingSettings& settings);

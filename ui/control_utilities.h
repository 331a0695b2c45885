// What panels do with their controls: put them into the dialog, switch tabs, show summaries.
#pragma once

#include "platform/toolbox/Controls.h"

/// Makes the child a part of the parent and shows it.
void EmbedAndShowControl(ControlRef parent, ControlRef child);

/// Shows the pane of the chosen tab: pane n belongs to the tab control's value n + 1 and is activated, shown and
/// enabled; all others are hidden, disabled and deactivated.
void UpdateTabControl(ControlRef tabControl, UInt16 paneCount, const ControlRef* panes);

/// The size that the user has chosen for all text.
inline constexpr SInt16 kUserFontSize = 0;

/// Makes a text view ready for use: words wrap, the text has the size (points, or kUserFontSize) and is empty.
void SetupTextViewControl(ControlRef textView, SInt16 fontSize);

/// Shows the text in a view that the user cannot change. paramErr for a null text.
OSStatus UpdateSummaryTextView(ControlRef textView, CFStringRef text);

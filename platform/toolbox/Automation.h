// The hands of a script: what a user does with mouse and keys, done by a program.
//
// Every action takes the user's road (input events, handlers, enabling). kControlNotUsableErr for a control that is
// hidden, disabled, covered or behind a modal window, paramErr for what no user could do with it. An action whose
// handler runs a modal loop returns when that loop has ended: go on from a timer that was set before.
#pragma once

#include "platform/foundation/CFBase.h"
#include "platform/toolbox/ToolboxTypes.h"

inline constexpr OSStatus kControlNotUsableErr = -30590;

/// Starts the toolbox: to be called once, first. With `scripted`, nobody is at the screen: Qt's offscreen platform is
/// used when there is no display, notices are answered from the queue below and web addresses are printed. The texts of
/// the arguments are lent for as long as the process lasts.
OSStatus ToolboxInitialize(int* argc, char** argv, Boolean scripted);

/// Ends the toolbox: to be called last, when no window is needed any more; the process ends then. What waits to be
/// deleted is deleted. A process that ends without it may crash: a thread of the toolbox still uses Qt.
void ToolboxTerminate();

/// Ends the toolbox when it goes, whichever way a program takes to its end; also one that never began.
class ToolboxEnd {
public:
    ToolboxEnd() = default;
    ~ToolboxEnd() { ToolboxTerminate(); }
    ToolboxEnd(const ToolboxEnd&) = delete;
    ToolboxEnd& operator=(const ToolboxEnd&) = delete;
};

/// A click; on a list, a double click on the selected row, of which there must be one.
OSStatus AutomationClick(ControlRef control);
OSStatus AutomationSetValue(ControlRef control, SInt32 value);
/// Brings a menu to the state in which the user would see it: its last call to change its items.
void AutomationPrepareMenu(MenuRef menu);
/// Picks an item of the control's menu or of a menu below it: `menu` is the one that the item stands in.
OSStatus AutomationChooseMenuItem(ControlRef control, MenuRef menu, MenuItemIndex item);
/// The same for a pop-up of an adopted window, which has no menu: picks the first item of that text.
OSStatus AutomationChooseText(ControlRef control, CFStringRef text);
/// Whether a menu is open: an item is being picked, and nothing else can be done until that has happened.
Boolean AutomationIsMenuOpen();
/// Replaces the field's text, key by key; focus leaves nothing else behind. In a clock, each number or word goes into
/// one section: "18:30", or "6:30 PM" where clocks show that. For a list these are keys: letters search, "\n" is Return
/// and "\b" the Delete key.
OSStatus AutomationType(ControlRef field, CFStringRef text);
OSStatus AutomationSelectRows(ControlRef list, ItemCount count, const UInt32* rows);
CFIndex AutomationCountRows(ControlRef list);
/// A new string: what a cell shows. Rows and columns count from 1; null where there is no cell.
CFStringRef AutomationCopyCellText(ControlRef list, UInt32 row, UInt32 column);
Boolean AutomationIsRowSelected(ControlRef list, UInt32 row);
/// A PNG of the window as it is drawn now; passwords show as dots.
OSStatus AutomationSnapshot(WindowRef window, CFURLRef file);

/// When the modal window in front was made by somebody else, of widgets of their own: makes it a window of the
/// toolbox's until it closes, and a control of each of its widgets that has a name. They have no signature and number,
/// send no events and can be used by all that stands here. Widgets that came later are added with the next call.
void AutomationAdoptFrontWindow();
/// A new string: the name of an adopted window's control; null for other controls.
CFStringRef AutomationCopyControlName(ControlRef control);
/// The first control of that name in an adopted window. errUnknownControl when there is none.
OSStatus AutomationFindControl(WindowRef window, CFStringRef name, ControlRef* control);

/// How often the system has beeped so far.
UInt32 AutomationCountBeeps();

/// The answer of the next notice. Notices are told to `listener` with header and text before they are answered.
void AutomationQueueAnswer(CFOptionFlags response);
using AutomationNoticeListener = void (*)(CFStringRef header, CFStringRef message, void* userData);
void AutomationSetNoticeListener(AutomationNoticeListener listener, void* userData);

/// The file that the next file chooser gives; one without a file waiting is cancelled.
void AutomationQueueFile(CFURLRef file);

// Windows, nibs and modal loops.
#pragma once

#include "platform/foundation/CFBase.h"
#include "platform/toolbox/ToolboxTypes.h"

// ---- Nibs: Resources/NAME.nib/WINDOW.ui, a Designer file, which the project's build compiles to WINDOW.window
//
// A widget becomes a control when it carries one of the dynamic properties "signature" (four characters) and "number",
// "command" (four characters), "signature2" (a second signature under which the number is found), "viewClass" (a
// registered custom view class) or "kind" (a name of ControlKindName() where the widget's class leaves it open). Texts
// are keys of the strings table with the nib's name. Class "LittleArrows", with the properties minimum, maximum, value
// and singleStep, is two small buttons that step a value. A pop-up with the property "actsAtOnce" has items that do
// more than set a value: neither the wheel nor keys go through them while its menu is closed. A text view's property
// "lines" says how many lines it shows at least. A static text with a command sends it when it is clicked.
//
// A window or control with the property "keys", a list of texts such as "TFup Ctrl+PgDown", sends these commands itself
// when the user presses the keys. A pop-up with the property "itemKeys", such as "Ctrl+", picks one of its first nine
// items when the user presses that with a digit. Both work wherever the focus is in the window.

using IBNibRef = struct OpaqueIBNibRef*;
inline constexpr OSStatus kNibNotFoundErr = -10960;
inline constexpr OSStatus kNibWindowNotFoundErr = -10962;  // no such window in the nib, or it does not parse

/// Has windows run in the direction of the language in which the bundle has its texts for this user, from right to left
/// for Arabic, and words of the toolbox's own, such as those of a file chooser, be in it where they are installed. To
/// be called before the first window. paramErr without a bundle, or before the toolbox is started.
OSStatus SetWindowLanguage(CFBundleRef bundle);

/// The nib of that name in the bundle's resources.
OSStatus CreateNibReferenceWithCFBundle(CFBundleRef bundle, CFStringRef name, IBNibRef* nib);
void DisposeNibReference(IBNibRef nib);
/// A new hidden window with its controls, laid out. On failure the reason stands on standard error in one line that
/// names the file.
OSStatus CreateWindowFromNib(IBNibRef nib, CFStringRef name, WindowRef* window);

// ---- Windows

/// Ends the window and everything in it, now or, from inside one of its handlers, when that returns.
void DisposeWindow(WindowRef window);
Boolean IsValidWindowPtr(WindowRef window);
void ShowWindow(WindowRef window);
void HideWindow(WindowRef window);
Boolean IsWindowVisible(WindowRef window);
/// Brings the window to the front.
void SelectWindow(WindowRef window);
/// The front window of this program that is shown, modal ones first; null when there is none.
WindowRef FrontNonFloatingWindow();
OSStatus SetWindowTitleWithCFString(WindowRef window, CFStringRef title);
OSStatus CopyWindowTitleAsCFString(WindowRef window, CFStringRef* title);
/// Lays the window in front of one of another program, which the desktop's portal names "x11:HEX" or "wayland:HANDLE".
/// It has no owner then when the screen does not know such a window, or names its windows in another way. paramErr for
/// what can be no window of this screen.
OSStatus SetWindowForeignOwner(WindowRef window, CFStringRef owner);
/// The content's rectangle on the screen.
OSStatus GetWindowContentBounds(WindowRef window, Rect* bounds);
/// Moves and sizes the window; a rectangle that lies off the screen is moved onto it. A window that fills its screen
/// goes on doing so.
OSStatus SetWindowContentBounds(WindowRef window, const Rect* bounds);
/// The smallest content that has room for all controls that are shown; the platform's call tells the largest, too.
OSStatus GetWindowResizeLimits(WindowRef window, HISize* smallest);
/// Where the content of a window has room on the window's screen; the platform's call takes a display. A screen that
/// nobody sees has room for all.
OSStatus GetAvailableWindowPositioningBounds(WindowRef window, Rect* bounds);
/// How many pixels of the screen a point of the window has; the platform's call tells a mode, too. 1 for none.
double HIWindowGetScaleFactor(WindowRef window);

// The buttons that Return and Escape press; errUnknownControl when the window has none. A nib names them by the
// commands 'ok  ' and 'not!'. While another button has the focus, Return presses that one. F1 sends the command 'Thlp'
// to the window, as its Help button does.
OSStatus GetWindowDefaultButton(WindowRef window, ControlRef* button);
OSStatus GetWindowCancelButton(WindowRef window, ControlRef* button);

// ---- Modal loops

/// Runs events for the window, which is shown first, and blocks the windows behind it, until the loop is ended. Nests.
OSStatus RunAppModalLoopForWindow(WindowRef window);
/// Ends the window's loop; harmless when there is none (any more). Closing a window by its title bar or Escape
/// presses its cancel button, or sends the command 'not!' when it has none; when nobody ends the loop then, it ends.
OSStatus QuitAppModalLoopForWindow(WindowRef window);

// ---- Timers, and what else the event loop waits for

using EventLoopTimerRef = struct OpaqueEventLoopTimer*;
using EventLoopTimerUPP = void (*)(EventLoopTimerRef timer, void* userData);
/// Calls the routine after `delay` seconds and then, when `interval` is above 0, every `interval` seconds.
OSStatus InstallEventLoopTimer(double delay, double interval, EventLoopTimerUPP routine, void* userData,
                               EventLoopTimerRef* timer);
/// Calls the routine each time when the user has pressed keys or buttons and then none for `delay` seconds, and no menu
/// is open.
OSStatus InstallEventLoopIdleTimer(double delay, EventLoopTimerUPP routine, void* userData, EventLoopTimerRef* timer);
OSStatus RemoveEventLoopTimer(EventLoopTimerRef timer);

using EventLoopDescriptorRef = struct OpaqueEventLoopDescriptor*;
using EventLoopDescriptorUPP = void (*)(int descriptor, void* userData);
/// Calls the routine again and again while the descriptor, which must stay open, has something to read.
OSStatus InstallEventLoopDescriptor(int descriptor, EventLoopDescriptorUPP routine, void* userData,
                                    EventLoopDescriptorRef* watch);
OSStatus RemoveEventLoopDescriptor(EventLoopDescriptorRef watch);

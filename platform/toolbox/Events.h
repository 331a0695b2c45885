// Events and their handlers.
//
// An event goes to a target: a control, a window, or the application. The handlers of a target run newest first. A
// handler that answers eventNotHandledErr passes the event on: to the target's older handlers, then to the control's
// parents, its window and the application, and last to the default behaviour (text enters the field, a button with a
// command code sends its command). Any other answer ends the journey. Draw, hit-test, activation, tracking and
// view-life events stay at their own target. What a program sets makes no event; only what a user does makes one.
//
// A handler may remove itself, dispose of its control or close its window while it runs.
#pragma once

#include "platform/foundation/four_char_code.h"
#include "platform/toolbox/ToolboxTypes.h"

using EventRef = struct OpaqueEventRef*;
using EventTargetRef = struct OpaqueEventTargetRef*;
using EventHandlerRef = struct OpaqueEventHandlerRef*;
using EventHandlerCallRef = struct OpaqueEventHandlerCallRef*;
using EventTime = double;
using EventAttributes = UInt32;
using EventParamName = OSType;
using EventParamType = OSType;

using EventHandlerProcPtr = OSStatus (*)(EventHandlerCallRef next, EventRef event, void* userData);
using EventHandlerUPP = EventHandlerProcPtr;

struct EventTypeSpec {
    OSType eventClass;
    UInt32 eventKind;
};

inline constexpr OSStatus eventNotHandledErr = -9874;
inline constexpr OSStatus eventParameterNotFoundErr = -9870;
inline constexpr OSStatus eventHandlerAlreadyRemovedErr = -9861;

// Classes and kinds.
inline constexpr OSType kEventClassControl = FourCharCode("cntl");
inline constexpr UInt32 kEventControlHit = 1;      // the user changed or pressed the control
inline constexpr UInt32 kEventControlHitTest = 3;  // custom views: which part lies at the mouse location?
inline constexpr UInt32 kEventControlDraw = 4;     // paint now, into the event's graphics context
// A field gets the focus (part kControlEditTextPart) or gives it up (kControlFocusNoPart). An open menu and a window
// that goes behind another one only borrow it.
inline constexpr UInt32 kEventControlSetFocusPart = 7;
// The control became active, by itself or with what it lies in; parents are told before their children. A program makes
// this event too.
inline constexpr UInt32 kEventControlActivate = 9;
inline constexpr OSType kEventClassCommand = FourCharCode("cmds");
inline constexpr UInt32 kEventCommandProcess = 1;
inline constexpr OSType kEventClassTextInput = FourCharCode("text");
inline constexpr UInt32 kEventTextInputUnicodeForKeyEvent = 2;  // before the field takes typed, pasted or composed text
inline constexpr OSType kEventClassMenu = FourCharCode("menu");
inline constexpr UInt32 kEventMenuEnableItems = 8;  // the menu is about to be shown: last call to change its items
inline constexpr OSType kEventClassMouse = FourCharCode("mous");
inline constexpr UInt32 kEventMouseEntered = 8;
inline constexpr UInt32 kEventMouseExited = 9;
inline constexpr UInt32 kEventMouseWheelMoved = 10;  // over a field that has the focus, or a pane
inline constexpr OSType kEventClassWindow = FourCharCode("wind");
inline constexpr UInt32 kEventWindowShown = 24;  // the first frame after showing is on the screen
inline constexpr UInt32 kEventWindowClose = 72;
inline constexpr OSType kEventClassKeyboard = FourCharCode("keyb");
// From a field of one line: the keys Up and Down; of a whole number: Return. From a pane: the keys that move. A pane
// that hears of them when it is shown takes the focus, also by a click.
inline constexpr UInt32 kEventRawKeyDown = 1;
inline constexpr UniChar kHomeCharCode = 0x01;
inline constexpr UniChar kEndCharCode = 0x04;
inline constexpr UniChar kPageUpCharCode = 0x0B;
inline constexpr UniChar kPageDownCharCode = 0x0C;
inline constexpr UniChar kReturnCharCode = 0x0D;
inline constexpr UniChar kLeftArrowCharCode = 0x1C;
inline constexpr UniChar kRightArrowCharCode = 0x1D;
inline constexpr UniChar kUpArrowCharCode = 0x1E;
inline constexpr UniChar kDownArrowCharCode = 0x1F;
inline constexpr OSType kEventClassHIObject = FourCharCode("hiob");
inline constexpr UInt32 kEventHIObjectConstruct = 1;
inline constexpr UInt32 kEventHIObjectInitialize = 2;
inline constexpr UInt32 kEventHIObjectDestruct = 3;

// Texts of the delete keys.
inline constexpr UniChar kBackspaceCharCode = 0x08;
inline constexpr UniChar kDeleteCharCode = 0x7F;

// Parameters and their types.
inline constexpr EventParamName kEventParamDirectObject = FourCharCode("----");  // the control, window or HICommand
inline constexpr EventParamName kEventParamTextInputSendText = FourCharCode("tstx");  // typeUnicodeText
inline constexpr EventParamName kEventParamMouseLocation = FourCharCode("mloc");      // typeHIPoint, in the view
inline constexpr EventParamName kEventParamControlPart = FourCharCode("cprt");        // typeControlPartCode
inline constexpr EventParamName kEventParamCGContextRef = FourCharCode("cntx");       // typeCGContextRef
inline constexpr EventParamName kEventParamMouseWheelDelta = FourCharCode("mwdl");    // typeSInt32: 1 up, -1 down
inline constexpr EventParamName kEventParamKeyUnicodes = FourCharCode("kuni");        // typeUnicodeText
inline constexpr EventParamName kEventParamHIObjectInstance = FourCharCode("hioi");   // typeVoidPtr: out of construct
inline constexpr EventParamType typeControlRef = FourCharCode("ctrl");
inline constexpr EventParamType typeWindowRef = FourCharCode("wind");
inline constexpr EventParamType typeMenuRef = FourCharCode("menu");
inline constexpr EventParamType typeHICommand = FourCharCode("hcmd");
inline constexpr EventParamType typeUnicodeText = FourCharCode("utxt");
inline constexpr EventParamType typeHIPoint = FourCharCode("hipt");
inline constexpr EventParamType typeSInt32 = FourCharCode("long");
inline constexpr EventParamType typeControlPartCode = FourCharCode("cpar");
inline constexpr EventParamType typeCGContextRef = FourCharCode("cntx");
inline constexpr EventParamType typeVoidPtr = FourCharCode("void");

/// What a command event carries: the code, and the control or menu item that it came from.
struct HICommand {
    UInt32 attributes;  // kHICommandFromMenu or kHICommandFromControl
    OSType commandID;
    MenuRef menu;  // null unless from a menu
    MenuItemIndex menuItemIndex;
    ControlRef control;  // the control; for a menu, the control that owns it
};
inline constexpr UInt32 kHICommandFromMenu = 1;
inline constexpr UInt32 kHICommandFromControl = 2;

/// A routine's handle, for the platform's sake: it is the function itself and disposing of it does nothing.
inline EventHandlerUPP NewEventHandlerUPP(EventHandlerProcPtr proc) {
    return proc;
}
inline void DisposeEventHandlerUPP(EventHandlerUPP) {}

// Targets, lent; null for a null object.
EventTargetRef GetControlEventTarget(ControlRef control);
EventTargetRef GetWindowEventTarget(WindowRef window);
EventTargetRef GetApplicationEventTarget();

/// Puts a handler in front of the target's chain for the listed events. The handle (may be null) stays valid until the
/// handler is removed or its target goes.
OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP handler, ItemCount count, const EventTypeSpec* list,
                             void* userData, EventHandlerRef* ref);
inline OSStatus InstallControlEventHandler(ControlRef control, EventHandlerUPP handler, ItemCount count,
                                           const EventTypeSpec* list, void* userData, EventHandlerRef* ref) {
    return InstallEventHandler(GetControlEventTarget(control), handler, count, list, userData, ref);
}
inline OSStatus InstallWindowEventHandler(WindowRef window, EventHandlerUPP handler, ItemCount count,
                                          const EventTypeSpec* list, void* userData, EventHandlerRef* ref) {
    return InstallEventHandler(GetWindowEventTarget(window), handler, count, list, userData, ref);
}
/// eventHandlerAlreadyRemovedErr for null and for a handle that is gone.
OSStatus RemoveEventHandler(EventHandlerRef ref);
/// From inside a handler: lets the rest of the journey have the event now, and returns its answer.
OSStatus CallNextEventHandler(EventHandlerCallRef next, EventRef event);

/// A new event with one owner; the time and the attributes are ignored.
OSStatus CreateEvent(CFAllocatorRef allocator, OSType eventClass, UInt32 kind, EventTime when,
                     EventAttributes attributes, EventRef* event);
void ReleaseEvent(EventRef event);
OSType GetEventClass(EventRef event);
UInt32 GetEventKind(EventRef event);
OSStatus SetEventParameter(EventRef event, EventParamName name, EventParamType type, ByteCount size, const void* data);
/// Copies at most bufferSize bytes of the parameter; its whole size in *actualSize. The type must be the one that it
/// was set with. outType, actualSize and data may be null.
OSStatus GetEventParameter(EventRef event, EventParamName name, EventParamType type, EventParamType* outType,
                           ByteCount bufferSize, ByteCount* actualSize, void* data);
/// Sends the event on its journey; eventNotHandledErr when nobody took it.
OSStatus SendEventToEventTarget(EventRef event, EventTargetRef target);

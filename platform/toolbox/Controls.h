// Controls: found by signature and number, with a value, a text, properties and a place in a tree.
//
// A control is one widget of the nib or of the program. Its value means what the platform's controls mean: a pop-up
// and a radio group count items from 1 (0: none), a check box is 0 or 1, arrows and sliders keep to their range.
#pragma once

#include "platform/foundation/DateTimeUtils.h"
#include "platform/foundation/four_char_code.h"
#include "platform/toolbox/ToolboxTypes.h"

struct ControlID {
    OSType signature;
    SInt32 id;
};

/// What a control is. Written in listings by the names in ControlKindName().
enum class ControlKind {
    userPane,
    customView,
    pushButton,
    bevelButton,
    popUp,
    checkBox,
    radioGroup,
    radioButton,
    editText,
    passwordText,
    staticText,
    textView,
    littleArrows,
    slider,
    tabs,
    groupBox,
    list,
    clock,
    picture,
    progressBar,
};
ControlKind GetControlKind(ControlRef control);
const char* ControlKindName(ControlKind kind);

// ---- Finding

/// The control of that signature and number in the window. errUnknownControl when there is none.
OSStatus GetControlByID(WindowRef window, const ControlID* id, ControlRef* control);
/// The same below a control (itself included).
OSStatus HIViewFindByID(ControlRef root, ControlID id, ControlRef* control);
OSStatus GetControlID(ControlRef control, ControlID* id);
OSStatus SetControlID(ControlRef control, const ControlID* id);
/// The control's command code; 0 when it has none.
OSType GetControlCommandID(ControlRef control);

// ---- Tree

WindowRef GetControlOwner(ControlRef control);
/// The window's content as a control: the parent of all.
OSStatus GetRootControl(WindowRef window, ControlRef* root);
ControlRef GetSuperControl(ControlRef control);
/// Children in tab order; positions from 1.
UInt16 CountSubControls(ControlRef control);
OSStatus GetIndexedSubControl(ControlRef control, UInt16 index, ControlRef* child);
/// Makes the control a child of the container, also across windows; its bounds stay the same numbers.
OSStatus EmbedControl(ControlRef control, ControlRef container);
/// Removes the control with its children; all references to them end.
void DisposeControl(ControlRef control);

inline constexpr UInt32 kControlSupportsEmbedding = 1 << 1;
/// A new empty pane in the window's content.
OSStatus CreateUserPaneControl(WindowRef window, const Rect* bounds, UInt32 features, ControlRef* control);

// ---- Place

/// The control's rectangle in its window's coordinates.
Rect* GetControlBounds(ControlRef control, Rect* bounds);
void SetControlBounds(ControlRef control, const Rect* bounds);
/// Moves the top left corner to a place in its window's coordinates.
void MoveControl(ControlRef control, SInt16 left, SInt16 top);

// ---- State

/// What is in the control waits until somebody needs it: until MakeControlContent is called for it, a control is looked
/// for in its window that is not there yet, or its children are asked for. The routine is then called, once.
using ControlContentProc = void (*)(ControlRef control, void* userData);
OSStatus SetControlContentProc(ControlRef control, ControlContentProc make, void* userData);
void MakeControlContent(ControlRef control);

void ShowControl(ControlRef control);
void HideControl(ControlRef control);
/// The control's own state: shown, whatever its parents are.
Boolean IsControlVisible(ControlRef control);
/// Redraws only when `redraw` is set.
OSStatus SetControlVisibility(ControlRef control, Boolean visible, Boolean redraw);
OSStatus EnableControl(ControlRef control);
OSStatus DisableControl(ControlRef control);
/// Enabled, with all its parents.
Boolean IsControlEnabled(ControlRef control);
/// "Active" is a state of its own, apart from shown and enabled.
OSStatus ActivateControl(ControlRef control);
OSStatus DeactivateControl(ControlRef control);
/// Activated, with all its parents.
Boolean IsControlActive(ControlRef control);
/// Asks for a redraw.
void Draw1Control(ControlRef control);

// ---- Value and text

SInt32 GetControl32BitValue(ControlRef control);
void SetControl32BitValue(ControlRef control, SInt32 value);
SInt32 GetControl32BitMinimum(ControlRef control);
void SetControl32BitMinimum(ControlRef control, SInt32 minimum);
SInt32 GetControl32BitMaximum(ControlRef control);
/// The range of a pop-up is its menu's; setting its maximum does nothing. That of tabs without pages of their own is
/// how many there are.
void SetControl32BitMaximum(ControlRef control, SInt32 maximum);
/// The title of a custom view is what assistive technologies say in its place.
OSStatus SetControlTitleWithCFString(ControlRef control, CFStringRef title);
OSStatus CopyControlTitleAsCFString(ControlRef control, CFStringRef* title);

/// The text beside the pointer when it rests on the control, and for assistive technologies; the platform's record of
/// contents holds no more here. Empty or null for none.
OSStatus HMSetControlHelpContent(ControlRef control, CFStringRef content);
/// Says that something is wrong with the control: by a sign in a button, check box or pop-up that has no picture of its
/// own, and by the reason in front of its help. Null or empty for nothing. Not of the platform.
OSStatus SetControlAlert(ControlRef control, CFStringRef reason);
/// Has assistive technologies say at once what a static text shows. Not of the platform, either.
OSStatus AnnounceControl(ControlRef text);
/// Shows a text at the control for a while, once what is going on has come to its end; not when the control is hidden
/// by then. The platform's call takes a place on the screen.
OSStatus HMDisplayTag(ControlRef control, CFStringRef content);

/// Says at a field which values it takes or, as a fault, why it does not take what stands in it: in the label that the
/// nib has for it (property "messageOf": the field's object name), in its help text, and with a frame and a mark for a
/// fault. Null for what the label says in the nib. Not of the platform, whose fields only beep.
OSStatus HIViewSetFieldMessage(ControlRef field, CFStringRef message, Boolean isFault);

// ---- Action procedures: called while the user holds the mouse on a part of the control

inline constexpr ControlPartCode kControlUpButtonPart = 20;    // little arrows
inline constexpr ControlPartCode kControlDownButtonPart = 21;  // little arrows
inline constexpr ControlPartCode kControlIndicatorPart = 129;  // a slider's thumb: the value as a whole

using ControlActionProcPtr = void (*)(ControlRef control, ControlPartCode part);
using ControlActionUPP = ControlActionProcPtr;
/// A routine's handle, for the platform's sake: it is the function itself.
inline ControlActionUPP NewControlActionUPP(ControlActionProcPtr proc) {
    return proc;
}
/// Arrows: the action moves the value, once for a press and, while that is held, again and again at a steady rate.
/// Arrows without one step by themselves. An assistive technology may also set a value: part kControlIndicatorPart.
/// Sliders: the action follows each change of the value while the thumb moves. The event 'cntl'/1 follows each time.
void SetControlAction(ControlRef control, ControlActionUPP action);

/// Does what a click on the part of the arrows does, without moving the mouse: its action, and the event. Whoever lets
/// keys or the wheel step the arrows calls it. The modifiers are ignored; the part is in *clicked (may be null).
OSStatus HIViewSimulateClick(ControlRef view, ControlPartCode part, UInt32 modifiers, ControlPartCode* clicked);

// ---- Data

// By tag. The part is kControlEntireControl where nothing else is said.
inline constexpr ControlPartCode kControlEntireControl = 0;
inline constexpr OSType kControlStaticTextCFStringTag = FourCharCode("cfst");      // CFStringRef; static texts
inline constexpr OSType kControlEditTextCFStringTag = FourCharCode("cfst");        // CFStringRef; fields and text views
inline constexpr OSType kControlEditTextSelectionTag = FourCharCode("sele");       // ControlEditTextSelectionRec
inline constexpr OSType kControlEditTextValidationProcTag = FourCharCode("vali");  // ControlEditTextValidationUPP
inline constexpr OSType kControlContentTag = FourCharCode("cont");        // CGImageRef; bevel buttons, pictures
inline constexpr OSType kControlClockLongDateTag = FourCharCode("date");  // LongDateRec, in years 1752 to 9999; clocks
inline constexpr OSType kControlTextReadOnlyTag = FourCharCode("rdon");   // Boolean; text views
inline constexpr OSType kControlTextWordWrapTag = FourCharCode("wrap");   // Boolean; text views
inline constexpr OSType kControlTextFontSizeTag = FourCharCode("fsiz");   // SInt16, points; text views
inline constexpr OSType kControlLittleArrowsIncrementValueTag =
    FourCharCode("incr");                                           // SInt32 above 0; arrows, 1 at first
inline constexpr OSType kControlTabInfoTag = FourCharCode("tabi");  // ControlTabInfoRecV1; the part is the tab's number

/// What a tab shows.
struct ControlTabInfoRecV1 {
    SInt16 version;      // kControlTabInfoVersionOne
    SInt16 iconSuiteID;  // 0, as tabs have texts only
    CFStringRef name;
};
inline constexpr SInt16 kControlTabInfoVersionOne = 1;

/// Selected text, in UTF-16 code units.
struct ControlEditTextSelectionRec {
    SInt32 selStart;
    SInt32 selEnd;
};
/// Called after every change that the user makes to the field's text.
using ControlEditTextValidationUPP = void (*)(ControlRef control);

/// errDataNotSupported for a tag that the control does not have, paramErr for a size that is not the tag's.
OSStatus SetControlData(ControlRef control, ControlPartCode part, OSType tag, ByteCount size, const void* data);
/// Strings are copied: the caller releases them.
OSStatus GetControlData(ControlRef control, ControlPartCode part, OSType tag, ByteCount bufferSize, void* buffer,
                        ByteCount* actualSize);

// ---- Properties: bytes that code attaches to a control

OSStatus SetControlProperty(ControlRef control, OSType creator, OSType tag, ByteCount size, const void* data);
/// Copies at most bufferSize bytes. controlPropertyNotFoundErr when there is none.
OSStatus GetControlProperty(ControlRef control, OSType creator, OSType tag, ByteCount bufferSize, ByteCount* actualSize,
                            void* data);
OSStatus RemoveControlProperty(ControlRef control, OSType creator, OSType tag);

// ---- Menus of controls

/// The menu of a pop-up or bevel button, lent; null for another control.
MenuRef GetControlPopupMenuHandle(ControlRef control);
/// The same for a bevel button only: errDataNotSupported for another control.
OSStatus GetBevelButtonMenuHandle(ControlRef button, MenuRef* menu);

// ---- Focus

inline constexpr ControlPartCode kControlFocusNoPart = 0;
inline constexpr ControlPartCode kControlEditTextPart = 5;
OSStatus SetKeyboardFocus(WindowRef window, ControlRef control);
/// Takes the focus away from whatever has it in the window.
OSStatus ClearKeyboardFocus(WindowRef window);
/// The focused control, null when none is.
OSStatus GetKeyboardFocus(WindowRef window, ControlRef* control);

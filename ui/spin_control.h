// Spin controls: numeric inputs made of little arrows that hold the value, a field that shows it and, if wanted, a
// slider and other controls that mirror it.
//
// The value is a 32-bit integer, a value with decimals times 10^decimals. The parts are any controls of one window and
// one signature, tied together by properties of creator kSpinControlCreator, 4 bytes each, that the dialog sets before
// it calls CreateSpinControl(). Step, minimum and maximum are the arrows' own (kControlLittleArrowsIncrementValueTag,
// SetControl32BitMinimum(), SetControl32BitMaximum()).
//
// What is typed goes into the arrows key by key, and the text stays as it was typed until the focus leaves the field,
// which then shows the arrows' value in the user's own notation, and, when what was typed is no such value, which
// values it takes. In fields with decimals each country's decimal sign stands for the locale's. The keys Up and Down
// and the wheel in the focused field do what the arrows do.
#pragma once

#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Events.h"

inline constexpr OSType kSpinControlCreator = FourCharCode("SPIN");
// On the arrows. The flags are 32-bit numbers, 0 when absent.
inline constexpr OSType kSpinControlFieldTag = FourCharCode("edit");  // number of the field
inline constexpr OSType kSpinControlDecimalsTag =
    FourCharCode("decs");                                             // decimals that are shown (0 to 9; 0 when absent)
inline constexpr OSType kSpinControlAngleTag = FourCharCode("angl");  // flag: the text ends in the angle mark
inline constexpr OSType kSpinControlPercentTag = FourCharCode("perc");  // flag: the text ends in "%"
inline constexpr OSType kSpinControlRedrawTag = FourCharCode("xdrw");   // number of a control to redraw on each change
inline constexpr OSType kSpinControlMirrorTag = FourCharCode("othr");   // number of a control that gets the same value
inline constexpr OSType kSpinControlValidTag = FourCharCode("vald");  // flag, 1 when absent: the text last entered was
                                                                      // a number in range
// On the field and on a slider.
inline constexpr OSType kSpinControlArrowsTag = FourCharCode("arro");  // number of the arrows

/// Makes a spin control of the arrows and their field: what the user does to either works on both from now on. paramErr
/// for null, the error of the property when the arrows name no field, of the search when the window does not have it.
OSStatus CreateSpinControl(ControlRef arrows);
/// For symmetry: a spin control ends with its controls.
void DisposeSpinControl(ControlRef arrows);

/// Gives the arrows the value and shows it in field and mirror. A value out of the arrows' range leaves them at their
/// nearest one, with their text as it was and marked as invalid, after a beep: paramErr. The flag is not used.
OSStatus SetSpinControlValue(ControlRef arrows, SInt32 value, Boolean flag);
/// Shows a value that may be out of range, such as a stored one. The field shows it; out of range it is marked as an
/// invalid input, and the arrows have the value nearest to it.
void ShowSpinControlInput(ControlRef arrows, SInt32 value);
/// The number that stands in the field, in range or not; the arrows' value when there is none.
SInt32 SpinControlInput(ControlRef arrows);
/// Whether the text that the user last entered was a number in range. A dialog's OK is for those only. Word of each
/// change goes to the window (SendInputChange() in ui/text_input.h).
Boolean SpinControlIsInputValid(ControlRef arrows);

/// Whether the field may take the characters: all are control characters, or all are decimal digits, the decimal sign
/// of the user's locale or "-".
Boolean SpinControlValidateInput(const UniChar* characters, CFIndex length);
/// Puts the number that the field's text is into its arrows and their mirror. The arrows keep their value, and the
/// input is marked as invalid, when the text is no number or one that is out of range. No text is 0.
void SpinControlValidate(ControlRef field);

/// For dialogs to install on a field: what SpinControlEventHandler() does with text ('text', 2).
OSStatus SpinControlTextInputEventHandler(EventHandlerCallRef next, EventRef event, void* userData);
/// The handler of the field. Text is checked before it enters, with a beep when it may not, and read when it has;
/// the arrow keys and the wheel step; a field that loses the focus shows the arrows' value.
OSStatus SpinControlEventHandler(EventHandlerCallRef next, EventRef event, void* userData);
/// The action of the arrows: one step up or down, to the end of the range at most; a beep there. The part
/// kControlIndicatorPart stands for a value that the arrows have already.
void SpinControlArrowsActionProc(ControlRef arrows, ControlPartCode part);
/// The action of a slider that shows the arrows' value: gives the arrows its own.
void SpinSliderActionProc(ControlRef slider, ControlPartCode part);

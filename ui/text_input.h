// Helpers for edit fields: what may be typed, how much of it, and word of it to the dialog.
//
// Each handler looks at text ('text', 2) before the field takes it: typed, pasted or composed. Text of control
// characters alone stands for an editing action (deletion, cut, undo) and always passes. Refused text makes the
// system beep, never reaches the field, and has a tag there say what the field takes; text that passes is in the field
// when the handler sends its word of it: an event of class 'TPDE' and kind 'ICno' when the field is now empty, 'ICso'
// when it is not, with the field as the direct object. Lengths are in UTF-16 code units, of the text as it will be once
// the selection has been replaced. Digits are the decimal digits of every script.
#pragma once

#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Events.h"

inline constexpr OSType kEventClassTextInputChange = FourCharCode("TPDE");
inline constexpr UInt32 kEventInputIsEmpty = FourCharCode("ICno");
inline constexpr UInt32 kEventInputHasText = FourCharCode("ICso");

/// Limits the field's text to `maximum` code units; nothing happens when that is below 1. The limit is the field's
/// 4-byte property ('TPDE', 'ILmt'); further calls for the field change it. Word of changes goes to the field.
void LimitInputLength(ControlRef field, SInt32 maximum);
OSStatus InputLengthLimitHandler(EventHandlerCallRef next, EventRef event, void* userData);
/// The validation routine of such fields: cuts a text that became too long on another road (an undo, a drop) to the
/// limit, or to one less where the limit would split a surrogate pair.
void EditTextValidationHandler(ControlRef field);

/// Limits the field's text to `maximum` code units (0: to any length), property ('TPDE', 'Tlen'), and its characters
/// to the set's (null: to none in particular), property ('TPDE', 'Tchr'). Word of changes goes to the field's window.
///
/// The field retains the set until this function is called for it again. Nothing tells the end of a field, so a
/// caller whose set does not live as long as the process releases it with a null set before disposing of the field.
void LimitInputLengthAndCharacters(ControlRef field, SInt32 maximum, CFCharacterSetRef characters);
OSStatus LimitInputEventHandler(EventHandlerCallRef next, EventRef event, void* userData);

/// What a field did not take of the text that was entered last; both are false and empty when it took all.
struct RefusedInput {
    CFStringRef characters;  // of the text, which lie outside of the set
    bool isTooLong;          // the rest did not fit, and nothing was taken
};
using RefusedInputProc = void (*)(const RefusedInput& refused, void* userData);

/// After LimitInputLengthAndCharacters: a text is no longer refused as a whole for single characters. Those outside of
/// the set are left out, with a beep, and digits of other scripts become ASCII digits where the set has only these. So
/// a number may be pasted as people write it. Each time that text is entered `tell` (null: nobody) learns what was
/// refused.
void KeepAllowedInput(ControlRef field, RefusedInputProc tell, void* userData);

/// Sends word of a change to the field's window, for fields whose text is taken elsewhere.
void SendInputChange(ControlRef field);

/// Lets only decimal digits into the field. Word of changes goes to its window.
void FilterNumericInput(ControlRef field);
OSStatus NumericInputFilterHandler(EventHandlerCallRef next, EventRef event, void* userData);

/// For dialogs to install on a field of page ranges: lets in what PageRangeValidateInput accepts. Word of changes goes
/// to the field's window.
OSStatus PageRangeInputEventHandler(EventHandlerCallRef next, EventRef event, void* userData);
/// Whether every character is a decimal digit, a comma or a dash of any script, white space or a control character.
Boolean PageRangeValidateInput(CFStringRef text);

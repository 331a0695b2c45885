// Notices: short questions and warnings in a modal window of their own; sounds.
#pragma once

#include "platform/foundation/CFBase.h"

using CFUserNotificationLevel = CFOptionFlags;
inline constexpr CFOptionFlags kCFUserNotificationStopAlertLevel = 0;
inline constexpr CFOptionFlags kCFUserNotificationNoteAlertLevel = 1;
inline constexpr CFOptionFlags kCFUserNotificationCautionAlertLevel = 2;
/// Beside a level: closing the notice without a button is the default response, whatever its alternate one does. Not of
/// the platform.
inline constexpr CFOptionFlags kCFUserNotificationDefaultIsCancelFlag = 1 << 7;
inline constexpr CFOptionFlags kCFUserNotificationDefaultResponse = 0;
inline constexpr CFOptionFlags kCFUserNotificationAlternateResponse = 1;
inline constexpr CFOptionFlags kCFUserNotificationOtherResponse = 2;
/// The bits of a response that say the button; a ticked check box has one of its own.
inline constexpr CFOptionFlags kCFUserNotificationResponseMask = 3;
constexpr CFOptionFlags CFUserNotificationCheckBoxChecked(CFIndex checkBox) {
    return CFOptionFlags{1} << (8 + checkBox);
}

/// Shows a notice and waits for its answer in *response. A null alternate or other title leaves that button out, a
/// null default title says "OK". The time-out and the three addresses of the platform's call must be 0 and null.
/// Closing the notice without a button is the alternate response when there is one, unless the flag above says
/// otherwise, else the default one.
SInt32 CFUserNotificationDisplayAlert(double timeout, CFOptionFlags level, CFURLRef icon, CFURLRef sound,
                                      CFURLRef localization, CFStringRef header, CFStringRef message,
                                      CFStringRef defaultButton, CFStringRef alternateButton, CFStringRef otherButton,
                                      CFOptionFlags* response);
/// The same with a check box, unticked at first; whether it was ticked is in the response. Not of the platform, which
/// takes a notice's parts one by one where a notice has more than texts and buttons.
SInt32 CFUserNotificationDisplayAlertWithCheckBox(CFOptionFlags level, CFStringRef header, CFStringRef message,
                                                  CFStringRef checkBox, CFStringRef defaultButton,
                                                  CFStringRef alternateButton, CFOptionFlags* response);

/// The system's beep: input was refused.
void SysBeep(SInt16 duration);

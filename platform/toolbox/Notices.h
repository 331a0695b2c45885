// Notices: short questions and warnings in a modal window of their own; sounds.
#pragma once

#include "platform/foundation/CFBase.h"

using CFUserNotificationLevel = CFOptionFlags;
inline constexpr CFOptionFlags kCFUserNotificationStopAlertLevel = 0;
inline constexpr CFOptionFlags kCFUserNotificationNoteAlertLevel = 1;
inline constexpr CFOptionFlags kCFUserNotificationCautionAlertLevel = 2;
inline constexpr CFOptionFlags kCFUserNotificationDefaultResponse = 0;
inline constexpr CFOptionFlags kCFUserNotificationAlternateResponse = 1;
inline constexpr CFOptionFlags kCFUserNotificationOtherResponse = 2;

/// Shows a notice and waits for its answer in *response. A null alternate or other title leaves that button out, a
/// null default title says "OK". The time-out and the three addresses of the platform's call must be 0 and null.
/// Closing the notice without a button is the alternate response when there is one, else the default one.
SInt32 CFUserNotificationDisplayAlert(double timeout, CFOptionFlags level, CFURLRef icon, CFURLRef sound,
                                      CFURLRef localization, CFStringRef header, CFStringRef message,
                                      CFStringRef defaultButton, CFStringRef alternateButton, CFStringRef otherButton,
                                      CFOptionFlags* response);

/// The system's beep: input was refused.
void SysBeep(SInt16 duration);

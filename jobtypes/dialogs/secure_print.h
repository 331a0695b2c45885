// The dialog that asks for the passcode of a secure print job.
#pragma once

#include "platform/foundation/CFRef.h"
#include "platform/toolbox/Events.h"

/// Shows the dialog (nib "JobTypes", window "SecurePrint") with the passcode, which may be null, until the user ends
/// it. After OK *passcode is what was typed, in ASCII digits: empty, or 4 to 10 of them. Otherwise it stays as it was.
/// Returns the status of loading the nib; a dialog that could not be shown changes nothing.
OSStatus RunModalSecurePrintSetup(CFBundleRef bundle, CFRef<CFStringRef>* passcode);

/// The key of the text that says what is wrong with what was typed so far, in ASCII digits; null while nothing is. The
/// second field is wrong only when it can no longer become the first one.
CFStringRef PasscodeFault(CFStringRef passcode, CFStringRef confirmation);

/// Whether a passcode of that many digits can be confirmed.
bool PasscodeCanBeConfirmed(CFIndex length);

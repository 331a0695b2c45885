// The dialog that asks for the passcode of a secure print job.
#pragma once

#include "platform/foundation/CFRef.h"
#include "platform/toolbox/Events.h"

/// Shows the dialog (nib "JobTypes", window "SecurePrint") with the passcode, which may be null, until the user ends
/// it. After OK *passcode is what was typed, in ASCII digits: empty, or 4 to 10 of them. Otherwise it stays as it was.
/// Returns the status of loading the nib; a dialog that could not be shown changes nothing.
OSStatus RunModalSecurePrintSetup(CFBundleRef bundle, CFRef<CFStringRef>* passcode);

/// Whether a passcode of that many digits can be confirmed.
bool PasscodeCanBeConfirmed(CFIndex length);

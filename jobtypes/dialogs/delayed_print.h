// The dialog that asks for the time of day at which a job is to be printed.
#pragma once

#include "platform/foundation/DateTimeUtils.h"
#include "platform/toolbox/Events.h"

/// Shows the dialog (nib "JobTypes", window "DelayedPrint") with the time of day of *time until the user ends it. After
/// OK *time is the next moment with the chosen time of day; otherwise it stays as it was. Returns the status of loading
/// the nib; a dialog that could not be shown changes nothing.
OSStatus RunModalDelayedPrintSetup(CFBundleRef bundle, LongDateTime* time);

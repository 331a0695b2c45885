// Views of registered classes: a control whose events reach the handler of its class after its own handlers.
#pragma once

#include "platform/toolbox/objects.h"

/// Makes the control a view of the class: constructs and initialises its record. A class that nobody has registered
/// yet, or whose construction fails, leaves a plain pane.
void attachViewClass(OpaqueControlRef* control, const QString& classId);
/// What the class does with an event of its view; eventNotHandledErr for a control of no class.
OSStatus callViewClass(OpaqueControlRef* control, EventRef event);
/// Destroys the record.
void detachViewClass(OpaqueControlRef* control);

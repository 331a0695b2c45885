// A picture that is pressed like a button: the view class "com.tavro.print.about".
#pragma once

#include "platform/toolbox/Events.h"

/// Makes the class known to the nib loader; once a process is enough, and more does no harm.
void RegisterLogoButtonClass();

/// Gives a view of the class its picture: the name of a file among the plug-in's resources. The name is lent and must
/// outlive the view; it is the view's property ('TPDE', 'TcIF').
void SetLogoButtonImage(ControlRef button, CFStringRef fileName);

/// Shows that the mouse is over something to press, or no longer. A button on a panel that is not shown has no cursor.
void SetLogoButtonCursor(ControlRef button, bool mouseInside);

/// The class's handler.
OSStatus CustomPushButtonViewHandler(EventHandlerCallRef next, EventRef event, void* userData);

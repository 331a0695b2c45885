// What the user does in the panel.
#pragma once

#include "platform/toolbox/DataBrowser.h"
#include "platform/toolbox/Events.h"

/// Answers the draw events of the panel's pictures and the hits of its buttons.
OSStatus SpecialPagesEventHandler(EventHandlerCallRef next, EventRef event, void* userData);
/// Lets the delete keys in the list ask whether the selected pages shall be deleted.
OSStatus SpecialPagesListKeyHandler(EventHandlerCallRef next, EventRef event, void* userData);
/// Keeps the buttons in step with the selection, and edits a row that is double-clicked.
void SpecialPagesListItemNotificationCallback(ControlRef browser, DataBrowserItemID item,
                                              DataBrowserItemNotification message);

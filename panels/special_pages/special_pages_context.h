// What the panel knows, for its commands and its list too.
#pragma once

#include "panels/special_pages/special_pages_sync.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Events.h"

/// The signature of all controls of the panel and its dialogs.
inline constexpr OSType kSpecialPagesSignature = FourCharCode("TSPg");

struct _SpecialPagesContext {
    CFBundleRef bundle;  // lent
    CFRef<CFStringRef> title;
    // Controls are null until the first Open.
    ControlRef userPane;
    ControlRef hostPane;
    bool opened;
    SpecialPageRecords records;
    ControlRef list;
    ControlRef deleteButton;
    ControlRef deleteAllButton;
    ControlRef editButton;
    PMTicketRef ticket;  // the print settings of the last Sync
    ControlRef addCoversImage;
    ControlRef addInsertsImage;
    ControlRef addExceptionsImage;
    EventHandlerRef eventHandler;
    EventHandlerRef keyHandler;
};

/// The panel of this process, from its Prologue to its Terminate; null otherwise. List callbacks have no data of their
/// own, so they find the panel here.
inline _SpecialPagesContext* gSpecialPages = nullptr;

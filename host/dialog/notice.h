// Notices in front of the print dialog.
#pragma once

#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Notices.h"

/// Shows a notice with an OK button; a script's runner answers it when there is nobody at the screen.
void showNotice(CFOptionFlags level, const CFRef<CFStringRef>& header, const CFRef<CFStringRef>& message);

/// Asks by a notice with two buttons. Whether the answer is the first, default one.
bool askByNotice(const CFRef<CFStringRef>& header, const CFRef<CFStringRef>& message, const CFRef<CFStringRef>& yes,
                 const CFRef<CFStringRef>& no);

/// Warns of what comes out otherwise than it was chosen. The default button and Escape go back; whether the user goes
/// on all the same, by the other button.
bool goesOnDespiteNotice(const CFRef<CFStringRef>& header, const CFRef<CFStringRef>& message,
                         const CFRef<CFStringRef>& goBack, const CFRef<CFStringRef>& goOn);

enum class NoticeAnswer { goBack, goOn, putRight };
/// The same with a third button, unless its title is null, that puts it right before the user goes on.
NoticeAnswer askDespiteNotice(const CFRef<CFStringRef>& header, const CFRef<CFStringRef>& message,
                              const CFRef<CFStringRef>& goBack, const CFRef<CFStringRef>& goOn,
                              const CFRef<CFStringRef>& putRight);

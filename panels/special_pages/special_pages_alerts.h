// The notices of the panel and its dialogs.
#pragma once

#include "platform/foundation/CFRef.h"

/// Tells what is wrong with a page list: a PageRangeError (model/records/page_range.h). Other codes show nothing.
void SpecialPagesUserNotification(CFBundleRef bundle, OSStatus code);

/// The notice's message, for the field itself; null for other codes.
CFRef<CFStringRef> CopySpecialPagesFault(CFBundleRef bundle, OSStatus code);

/// Tells that something is beyond a limit: "%@" in the message is the limit, as the user writes numbers.
void TellSpecialPagesLimit(CFBundleRef bundle, CFStringRef titleKey, CFStringRef messageKey, SInt32 limit);

/// Asks whether special pages shall be deleted. True on Yes; No is the default.
bool AskToDeleteSpecialPages(CFBundleRef bundle, CFStringRef messageKey);

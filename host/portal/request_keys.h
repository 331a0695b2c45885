// The folder of a request of the desktop's portal: the service puts the request there, and the dialog its answer.
#pragma once

#include "platform/foundation/CFString.h"

#include <string>

namespace portal {

// Its files, property lists all three.
inline constexpr const char* kRequestFile = "request.plist";
inline constexpr const char* kSettingsFile = "settings.plist";  // what was chosen, as settings are kept anywhere
inline constexpr const char* kAnswerFile = "answer.plist";      // what the caller is told

// What is asked for.
inline const std::string kPrepare = "prepare";  // settings; the document comes later
inline const std::string kPrint = "print";      // the document on standard input, as it was prepared
inline const std::string kChoose = "choose";    // the same, when nothing was prepared

// Keys of a request.
#define kPortalKindKey CFSTR("Kind")
#define kPortalTitleKey CFSTR("Title")
#define kPortalParentKey CFSTR("ParentWindow")      // missing for a window of its own
#define kPortalAcceptLabelKey CFSTR("AcceptLabel")  // with an underscore in front of its letter
#define kPortalFormatsKey CFSTR("Formats")          // of what the caller can make, parted by blanks; missing for any
#define kPortalHasCurrentKey CFSTR("HasCurrentPage")
#define kPortalHasSelectionKey CFSTR("HasSelectedPages")

// Keys of a request and of its answer: dictionaries, of which settings have strings only.
#define kPortalSettingsKey CFSTR("Settings")
#define kPortalPageSetupKey CFSTR("PageSetup")

// A key of the answer: the queue that it was prepared for.
#define kPortalQueueKey CFSTR("Queue")

}  // namespace portal

// A request of the desktop's portal, as its service hands it to the dialog.
#pragma once

#include "host/settings/result.h"
#include "platform/foundation/CFRef.h"

#include <string>

struct PortalRequest {
    enum class Kind { prepare, print, choose };

    std::string folder;
    Kind kind = Kind::choose;
    std::string title;         // what the caller calls its document: a text, whatever stands in it
    std::string parentWindow;  // of the caller: "x11:HEX", "wayland:HANDLE"; empty for none
    std::string acceptLabel;   // of the button that goes on, with an underscore in front of its letter; or empty
    std::string formats;       // that the caller can make, parted by blanks; empty for any
    bool hasCurrentPage = false;
    bool hasSelectedPages = false;
    CFRef<CFDictionaryRef> settings;   // of the caller; may be null
    CFRef<CFDictionaryRef> pageSetup;  // the same
    std::string queue;                 // that was prepared for, or that the caller has used before; may be empty

    [[nodiscard]] std::string file(const char* name) const { return folder + "/" + name; }
    /// The document as this program can open it; empty when there is none yet.
    [[nodiscard]] std::string document() const;
};

/// Reads the request of a folder.
Result<PortalRequest> readPortalRequest(const std::string& folder);

// The settings of a print job as a value, and as a file: one property list with a dictionary for each ticket.
#pragma once

#include "host/settings/result.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFURL.h"

#include <optional>
#include <string>

/// The items of the three tickets, each under its own key; null for none. The PPD dictionary is an item of the first,
/// under "PPDDict".
struct JobSettings {
    CFRef<CFDictionaryRef> printSettings;
    CFRef<CFDictionaryRef> pageFormat;
    CFRef<CFDictionaryRef> printerInfo;
};

/// Reads a settings file. A ticket that is missing or is no dictionary reads as none; a file that is no property list,
/// or whose top is no dictionary, is a failure with line and column. The name that the settings have, if any, goes to
/// *name, which may be null.
Result<JobSettings> readSettingsFile(const std::string& path, std::string* name = nullptr);

/// Replaces the file, which only its owner may read; the name may be empty. Why it could not be written, in a line that
/// names it.
std::optional<std::string> writeSettingsFile(const JobSettings& settings, const std::string& path,
                                             const std::string& name = {});

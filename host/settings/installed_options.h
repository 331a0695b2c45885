// What --installed says about a printer.
#pragma once

#include "host/settings/printer.h"

/// The options (each "OPTION=VALUE") as a dictionary for the printer info ticket; null when there are none. A failure
/// when the printer's PPD does not offer one of them.
Result<CFRef<CFDictionaryRef>> readInstalledOptions(const std::vector<std::string>& options, const Printer& printer);

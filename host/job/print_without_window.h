// Printing with nobody at the screen and no window.
#pragma once

#include "host/job/job_setup.h"
#include "platform/foundation/CFBundle.h"

#include <functional>
#include <string>
#include <vector>

/// Prints just what the settings say, completed by the printer's defaults: the maker's panels, which would write what
/// they show over them, are not started. What of the settings the printer does not offer is told on standard error,
/// a line each, and its default is printed. `texts` is the program's own bundle. `goesOn`, unless it is empty, is asked
/// when something of what was chosen cannot be printed, which it is told in sentences. How the program ends.
Failure printWithoutWindow(const JobSetup& setup, CFBundleRef texts,
                           const std::function<bool(const std::vector<std::string>&)>& goesOn = {});

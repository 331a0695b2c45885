// Ghostscript as the printer's interpreter.
#pragma once

#include "driver/proof/device_events.h"

#include <optional>
#include <string>
#include <vector>

/// Runs the PostScript. Nothing, with the reason, when the interpreter cannot be run, or does not come to an end: says
/// nothing for so many seconds, or tells more than any job has to tell.
std::optional<std::vector<DeviceEvent>> interpret(const std::string& postScript, int patience, std::string* reason);

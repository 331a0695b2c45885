// Ghostscript as the printer's interpreter.
#pragma once

#include "driver/proof/proof.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

/// What the PostScript did, in order: a wish for the page device, or a page.
struct DeviceEvent {
    enum class Kind { set, page, error } kind;
    std::string key;    // of a wish
    std::string value;  // of a wish, or the error
    double left = 0;    // of a page: where there is ink; all 0 for none
    double bottom = 0;
    double right = 0;
    double top = 0;
    std::string text;  // of a page: what can be read, in one line
    Tones tones = kUsualTones;
};

/// Runs the PostScript. Nothing, with the reason, when the interpreter cannot be run, or does not come to an end: says
/// nothing for so many seconds, or tells more than any job has to tell.
std::optional<std::vector<DeviceEvent>> interpret(const std::string& postScript, int patience, std::string* reason);

// What Ghostscript tells of a job's PostScript while it plays the printer's interpreter.
#pragma once

#include "driver/proof/proof.h"

#include <string>
#include <string_view>
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

/// Reads what the interpreter has told: once with a device that says where there is ink, once with one that says what
/// can be read. A stranger's PostScript can tell whatever it likes.
std::vector<DeviceEvent> readDeviceEvents(std::string_view drawn, std::string_view read);

/// Has paper go through the printer: adds the sheets, their copies and their finishing, and the errors to the proof.
void printEvents(const std::vector<DeviceEvent>& events, Proof* proof);

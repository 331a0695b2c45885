// What stands in the way of somebody who uses a window without a mouse, or without seeing it.
#pragma once

#include <string>
#include <vector>

/// What the front window lacks, a line each: "fault: …" for a control that has no name, that keys do not reach, or
/// that comes before one above it or to its left; and one line "keys: …" with the letters of the controls that are
/// shown, in their order, each as often as it stands there.
std::vector<std::string> auditFrontWindow();

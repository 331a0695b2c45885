// A job's file in words: what its printer is told, and what comes out of it sheet by sheet.
#pragma once

#include "host/settings/printer.h"
#include "platform/foundation/CFBundle.h"

#include <string>

/// Prints a line for each command and instruction, for each sheet, and for what is done with the sets, in the words of
/// the printer's PPD. Values of commands that hold a passcode or a number of a card are left out. The failure names the
/// file: one that is no job, or whose PostScript ends with an error behind the sheets that were printed.
Failure printProof(const std::string& path, const Printer& printer, CFBundleRef texts);

// Presets that all programs have: instances of a queue, in the user's options of print queues (lpoptions(1)). Other
// programs list them as "queue/name"; the queue's filter does what no option of the printer says.
//
// Such an instance holds what the preset held when it was saved, and the preset's name, by which it follows the preset.
#pragma once

#include "host/settings/print_session.h"
#include "platform/foundation/CFBundle.h"

#include <optional>
#include <string>

/// Whether other programs can have presets of the printer.
bool canBeShared(const Printer& printer);
/// Whether they have the one of that name, of the one printer or of any.
bool isShared(const Printer& printer, const std::string& preset);
bool isShared(const std::string& preset);
/// What they list a preset of that name as ("office/Booklet-A4"): instances cannot have every name, nor one that stands
/// for something else already.
std::string sharedName(const Printer& printer, const std::string& preset);

/// Gives other programs the session's settings as the preset of that name, in the place of those that they have under
/// it. Why it cannot be done, in the user's words or in a line that names the file or queue.
std::optional<std::string> sharePreset(const PrintSession& session, const std::string& preset, CFBundleRef texts);

// The reasons of these are lines that name the file.
/// Takes it from them, of the one printer or of all.
std::optional<std::string> unsharePreset(const Printer& printer, const std::string& preset);
std::optional<std::string> unsharePreset(const std::string& preset);
/// Gives it another name there; one of that name before gives way.
std::optional<std::string> renameSharedPreset(const std::string& preset, const std::string& newName);

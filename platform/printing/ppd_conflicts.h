// Which choices cannot go together, and what to change so that they do: the PPD's constraints, as functions of values.
#pragma once

#include "platform/printing/ppd_file.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// Main keyword to the option that is chosen, "Custom.…" for a custom one. A keyword that is missing has no say.
using PPDSettings = std::map<std::string, std::string, std::less<>>;

/// The main keywords whose choices cannot go together, in the order of the PPD's line; "PageSize" alone for a custom
/// size that the printer cannot take.
using PPDConflict = std::vector<std::string>;

/// The conflicts of what is chosen for a job, 200 at the most, each once, in the PPD's order; custom sizes come last.
/// What is installed and cannot be installed together is no fault of the job's.
std::vector<PPDConflict> findConflicts(const PPDFile& ppd, const PPDSettings& settings);

/// The changes after which the settings have no conflict; nothing when none are found. What is installed is never
/// changed, and a choice of `keep` only when it stands against nothing else. A default is tried before other choices,
/// and the paper is the last thing to be changed.
std::optional<PPDSettings> resolveConflicts(const PPDFile& ppd, const PPDSettings& settings,
                                            const std::set<std::string>& keep);

/// The choice of a main keyword that stands against nothing of the other settings: of a custom size that the printer
/// cannot take the nearest one, else the default before others. Nothing when none is found, or when the keyword says
/// what is installed.
std::optional<std::string> choiceWithoutConflict(const PPDFile& ppd, const PPDSettings& settings,
                                                 const std::string& keyword);

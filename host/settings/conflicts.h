// Settings that cannot go together: why, in sentences, and what to change.
#pragma once

#include "host/settings/print_session.h"
#include "host/settings/setting_words.h"

#include <string>
#include <vector>

struct SettingChange {
    std::string mainKeyword;
    std::string option;
    SettingWords words;
};

struct ConflictReport {
    std::vector<std::string> sentences;  // one a conflict
    std::vector<SettingChange> remedy;   // ends all of them; empty when nothing is known that does
};

/// Looks at the session's settings, its kind of job and what the printer has installed. The settings of the main
/// keywords of `keep` stay where something else can give way. `texts` is the program's own bundle.
ConflictReport examineConflicts(const PrintSession& session, CFBundleRef texts, const std::vector<std::string>& keep);

/// Why a choice cannot be taken with what the printer has installed; empty when it can.
std::string obstacleOf(const PrintSession& session, CFBundleRef texts, const std::string& mainKeyword,
                       const std::string& option);

/// The first sentence, and how many more there are of them; one at least.
std::string firstOf(const std::vector<std::string>& sentences, CFBundleRef texts);
/// The title, with a mark before its key, of a button that makes the changes: "C&hange Staple", "C&hange 3 Settings".
std::string remedyTitle(const ConflictReport& report, CFBundleRef texts);
/// Each change in a line of its own: "Staple: No Staples (Paper and Output)".
std::string remedyText(const ConflictReport& report, CFBundleRef texts);

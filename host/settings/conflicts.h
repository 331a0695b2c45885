// Settings that cannot go together: why, in sentences, and what to change.
#pragma once

#include "host/settings/print_session.h"
#include "host/settings/setting_words.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

struct SettingChange {
    std::string mainKeyword;
    std::string option;
    SettingWords words;
};

struct Conflict {
    std::string sentence;
    std::vector<std::pair<std::string, std::string>> chosen;  // main keywords and options: not what is installed
};

struct ConflictReport {
    std::vector<Conflict> conflicts;
    std::vector<SettingChange> ways;    // each of them ends the first conflict; the one that fits best comes first
    std::vector<SettingChange> remedy;  // all together end all conflicts; empty when nothing is known that does

    std::vector<std::string> sentences() const;
};

/// Looks at the session's settings, its kind of job and what the printer has installed; and, of a document of so many
/// pages (0 for one that is not known), whether its sheets are not too many or too few to be finished. The settings of
/// the main keywords of `keep` stay where something else can give way. `texts` is the program's own bundle.
ConflictReport examineConflicts(const PrintSession& session, CFBundleRef texts, const std::vector<std::string>& keep,
                                std::int64_t pageCount);

/// Why a choice cannot be taken with what the printer has installed; empty when it can.
std::string obstacleOf(const PrintSession& session, CFBundleRef texts, const std::string& mainKeyword,
                       const std::string& option);

/// The first sentence, and how many more there are of them; one at least.
std::string firstOf(const std::vector<std::string>& sentences, CFBundleRef texts);

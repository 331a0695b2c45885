// A PPD setting in the words of people: what it is called, and where they find it.
#pragma once

#include "host/settings/print_session.h"
#include "platform/foundation/CFBundle.h"

#include <optional>
#include <string>

struct SettingWords {
    std::string title;   // of the main keyword: "Paper Type"
    std::string choice;  // of the option: "Transparency"
    std::string
        panel;  // of the maker's, that shows the setting; empty for what stands at the dialog's left, or nowhere
};

/// Texts that are the dialog's own come from its bundle, as do the names of trays that the finisher gives them. Nothing
/// for a setting that the printer does not offer.
std::optional<SettingWords> settingWords(const PrintSession& session, CFBundleRef bundle,
                                         const std::string& mainKeyword, const std::string& option);

/// The title of the maker's panel that shows a PPD main keyword; empty when none of them does.
std::string panelOfSetting(CFBundleRef bundle, const std::string& mainKeyword);

#include "platform/printing/ready_job.h"

#include "platform/printing/page_options.h"
#include "platform/printing/settings_option.h"

namespace {

/// A text of the user's that becomes a string of the PPD's PostScript: there a backslash begins something else, and
/// the print server's library escapes brackets only.
std::string escapedForPostScript(const PPDOption* option, const std::string& value) {
    if (option == nullptr || !option->hasTextCustom || option->isCommand || option->findChoice(value)) {
        return value;
    }
    std::string escaped;
    for (const char c : value) {
        escaped.append(c == '\\' ? 2 : 1, c);
    }
    return escaped;
}

}  // namespace

bool isUncollated(const JobRequest& request) {
    const std::string* const collate = findOption(request.choices, kCollateKeyword);
    return collate != nullptr && isSameOption(*collate, "False");
}

OptionList filterOptions(const Job& job) {
    OptionList options;
    for (const auto& [name, value] : job.printer->start.others) {
        if (!isPageOption(name)) {
            options.emplace_back(name, value);
        }
    }
    if (job.printer->start.namesSettings) {
        setOption(&options, kSettingsOption, kNoSettings);  // what they ask for is done
    }
    setOptions(&options, pagesAsTheyAre());
    OptionList choices;
    for (const auto& [name, value] : job.request.choices) {
        choices.emplace_back(name, escapedForPostScript(job.printer->ppd.findOption(name), value));
    }
    setOptions(&options, choices);
    return options;
}

#include "platform/printing/starting_options.h"

#include "platform/printing/job_options.h"
#include "platform/printing/settings_option.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace {

struct OrientationRow {
    std::string_view requested;  // of IPP's orientation-requested
    SInt32 orientation;
};
constexpr std::array kOrientations{
    // requested, of a page format ticket
    OrientationRow{kPortraitRequested, 1},
    OrientationRow{"4", 2},
    OrientationRow{"5", 3},
};

std::optional<SInt32> orientationFor(std::string_view requested) {
    const auto* const row = std::ranges::find(kOrientations, requested, &OrientationRow::requested);
    return row == kOrientations.end() ? std::nullopt : std::optional(row->orientation);
}

std::optional<SInt32> numberOfCopies(const std::string& text) {
    SInt32 copies = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), copies);
    return error == std::errc() && end == text.data() + text.size() && isNumberOfCopies(copies) ? std::optional(copies)
                                                                                                : std::nullopt;
}

/// The choice in the PPD's own spelling; empty when the option does not take the value.
std::string choiceOf(const PPDOption& option, const std::string& value) {
    if (const auto choice = option.findChoice(value)) {
        return option.choices[*choice].keyword;
    }
    static constexpr std::string_view kCustom = "Custom.";
    return isSameOption(value.substr(0, kCustom.size()), kCustom) && option.findChoice("Custom")
               ? std::string(kCustom) + value.substr(kCustom.size())
               : std::string();
}

/// Takes an option that is shown with the job. False for one that is not.
bool takeJobOption(const std::string& name, const std::string& value, StartingOptions* start) {
    if (isSameOption(name, "copies")) {
        start->copies = numberOfCopies(value);
        return true;
    }
    if (isSameOption(name, kPageRangesOption)) {
        start->pageRange = isPageRange(value) ? value : std::string();
        return true;
    }
    if (isSameOption(name, "landscape") && !start->orientation && !isSameOption(value, "false")) {
        start->orientation = orientationFor("4");
        return true;
    }
    if (isSameOption(name, kOrientationOption) && orientationFor(value)) {
        start->orientation = orientationFor(value);
        return true;
    }
    return false;
}

/// Takes the settings that no option stands for. False for another option.
bool takeSettings(const std::string& name, const std::string& value, StartingOptions* start) {
    if (!isSameOption(name, kSettingsOption)) {
        return false;
    }
    start->namesSettings = true;
    if (!isSameOption(value, kNoSettings)) {
        start->settings = unpackSettings(value, &start->settingsFault);
    }
    return true;
}

struct StandardRow {
    const char* name;
    const char* keyword;
};
constexpr std::array kStandardOptions{
    // option, the PPD's main keyword that it stands for
    StandardRow{"media", "PageSize"},
    StandardRow{"sides", "Duplex"},
    StandardRow{"output-bin", "OutputBin"},
    StandardRow{"multiple-document-handling", "Collate"},
};

/// Whether the PPD has the same for a choice of its own: the job has that one, which may have been changed meanwhile.
bool isChoiceInOtherWords(const PPDFile& ppd, const std::string& name) {
    return std::ranges::any_of(kStandardOptions, [&](const StandardRow& row) {
        return isSameOption(row.name, name) && ppd.findOption(row.keyword) != nullptr;
    });
}

}  // namespace

StartingOptions sortOptions(const PPDFile& ppd, const std::string& ppdPath, const OptionList& options) {
    StartingOptions start;
    OptionList standard;
    OptionList chosen;
    for (const auto& [name, value] : options) {
        if (const PPDOption* const option = ppd.findOption(name)) {
            if (const std::string choice = choiceOf(*option, value); !choice.empty() && !option->installable) {
                chosen.emplace_back(option->keyword, choice);
            }
            continue;
        }
        if (takeSettings(name, value, &start)) {
            continue;
        }
        if (isStandardOption(name)) {
            standard.emplace_back(name, value);
        }
        if (!takeJobOption(name, value, &start) && !isChoiceInOtherWords(ppd, name)) {
            start.others.emplace_back(name, value);
        }
    }
    setOptions(&start.choices, chosen);
    for (const auto& [keyword, choice] : chooseByStandardOptions(ppdPath, standard)) {
        if (findOption(start.choices, keyword) == nullptr) {
            start.choices.emplace_back(keyword, choice);
        }
    }
    if (start.orientation && start.orientation != 1) {
        // What a turned job is made of, as it was saved with it, comes and goes with the orientation.
        std::erase_if(start.others, [](const auto& option) {
            return isSameOption(option.first, kAutorotateOption) ||
                   (isSameOption(option.first, kScalingOption) && option.second == "fit");
        });
    }
    return start;
}

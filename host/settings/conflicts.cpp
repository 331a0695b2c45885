#include "host/settings/conflicts.h"

#include "driver/finishing/sheet_limits.h"
#include "driver/instructions/read_instructions.h"
#include "driver/job/job_ticket.h"
#include "host/settings/dictionary_values.h"
#include "host/settings/texts.h"

#include <algorithm>
#include <iterator>

namespace {

/// The option of what is not finished.
constexpr const char* kNothing = "None";

struct Side {
    std::string mainKeyword;
    std::string option;
    SettingWords words;
    bool isInstalled;
    bool isNothing;  // is installed
};

/// Says a conflict with texts of the program's bundle.
class Sentence {
public:
    Sentence(CFBundleRef texts, const std::vector<Side>& sides) : texts_(texts) {
        for (const Side& side : sides) {
            (side.isInstalled ? installed_ : chosen_).push_back(side);
        }
    }

    std::string text() const {
        const std::string reasons =
            joined(installed_, CFSTR("Conflict And Reason"), [&](const Side& side) { return reason(side); });
        if (chosen_.size() == 1 && installed_.empty()) {
            return say(CFSTR("Conflict Limits"), {named(chosen_[0])});
        }
        if (chosen_.size() == 1) {
            return say(CFSTR("Conflict Installed"), {named(chosen_[0]), reasons});
        }
        const std::string& panel = chosen_[0].words.panel;
        const bool isOnePanel =
            !panel.empty() && std::ranges::all_of(chosen_, [&](const Side& side) { return side.words.panel == panel; });
        const auto name = [&](const Side& side) { return isOnePanel ? quoted(side) : named(side); };
        const std::string others = joined({chosen_.begin() + 1, chosen_.end()}, CFSTR("Conflict And"), name);
        if (!installed_.empty()) {
            return say(CFSTR("Conflict Together Installed"), {name(chosen_[0]), others, reasons});
        }
        return isOnePanel ? say(CFSTR("Conflict One Panel"), {quoted(chosen_[0]), others, panel})
                          : say(CFSTR("Conflict"), {named(chosen_[0]), others});
    }

    /// Why the choice cannot be taken at all.
    std::string obstacle() const {
        return say(CFSTR("Conflict Obstacle"),
                   {joined(installed_, CFSTR("Conflict And Reason"), [&](const Side& side) { return reason(side); })});
    }

private:
    std::string say(CFStringRef key, const std::vector<std::string>& values) const {
        return utf8Text(localized(texts_, key, values).get());
    }
    std::string quoted(const Side& side) const {
        return say(CFSTR("Conflict Setting"), {side.words.title, side.words.choice});
    }
    /// With its panel, where it has one.
    std::string named(const Side& side) const {
        return side.words.panel.empty()
                   ? quoted(side)
                   : say(CFSTR("Conflict Setting Panel"), {side.words.title, side.words.choice, side.words.panel});
    }
    std::string reason(const Side& side) const {
        return side.isNothing ? say(CFSTR("Conflict Not Installed"), {side.words.title})
                              : say(CFSTR("Conflict Has Installed"), {side.words.title, side.words.choice});
    }
    template <typename Name>
    std::string joined(const std::vector<Side>& sides, CFStringRef conjunction, Name name) const {
        std::string all;
        for (const Side& side : sides) {
            all = all.empty() ? name(side) : say(conjunction, {all, name(side)});
        }
        return all;
    }

    CFBundleRef texts_;
    std::vector<Side> chosen_;
    std::vector<Side> installed_;
};

Side readSide(const PrintSession& session, CFBundleRef texts, CFDictionaryRef side) {
    const std::string keyword = stringIn(side, kPMSettingKeywordKey);
    const std::string option = stringIn(side, kPMSettingOptionKey);
    return {keyword, option, settingWords(session, texts, keyword, option).value_or(SettingWords{keyword, option, {}}),
            booleanIn(side, kPMSettingIsInstalledKey).value_or(false),
            booleanIn(side, kPMSettingIsNothingKey).value_or(false)};
}

std::vector<std::vector<Side>> findConflicts(const PrintSession& session, CFBundleRef texts, PMTicketRef settings) {
    CFArrayRef list = nullptr;
    PMPrinterCopyConflicts(session.printer().get(), settings, session.printerInfo(), &list);
    const auto owner = CFRef<CFArrayRef>::adopt(list);
    std::vector<std::vector<Side>> conflicts;
    for (CFIndex i = 0; i < CFArrayGetCount(list); ++i) {
        const auto* const sides = static_cast<CFArrayRef>(CFArrayGetValueAtIndex(list, i));
        conflicts.emplace_back();
        for (CFIndex j = 0; j < CFArrayGetCount(sides); ++j) {
            conflicts.back().push_back(
                readSide(session, texts, static_cast<CFDictionaryRef>(CFArrayGetValueAtIndex(sides, j))));
        }
    }
    return conflicts;
}

SettingChange changeTo(const PrintSession& session, CFBundleRef texts, const std::string& keyword,
                       const std::string& option) {
    const auto words = settingWords(session, texts, keyword, option);
    return {keyword, option, words.value_or(SettingWords{keyword, option, {}})};
}

std::vector<SettingChange> findRemedy(const PrintSession& session, CFBundleRef texts, PMTicketRef settings,
                                      const std::vector<std::string>& keep) {
    const auto kept = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
    for (const std::string& keyword : keep) {
        CFArrayAppendValue(kept.get(), makeString(keyword).get());
    }
    CFDictionaryRef changes = nullptr;
    PMPrinterCopyRemedy(session.printer().get(), settings, session.printerInfo(), kept.get(), &changes);
    const auto owner = CFRef<CFDictionaryRef>::adopt(changes);
    std::vector<SettingChange> remedy;
    for (const auto& [keyword, option] : pairsIn(changes)) {
        remedy.push_back(changeTo(session, texts, keyword, option));
    }
    std::ranges::sort(remedy, {}, [](const SettingChange& change) { return change.words.title; });
    return remedy;
}

/// What each side of a conflict could be instead. That which the remedy changes, too, comes first.
std::vector<SettingChange> findWays(const PrintSession& session, CFBundleRef texts, PMTicketRef settings,
                                    const Conflict& conflict, const std::vector<SettingChange>& remedy) {
    std::vector<SettingChange> ways;
    for (const auto& [keyword, chosen] : conflict.chosen) {
        CFStringRef option = nullptr;
        PMPrinterCopyOptionWithoutConflict(session.printer().get(), settings, session.printerInfo(),
                                           makeString(keyword).get(), &option);
        if (const auto owner = CFRef<CFStringRef>::adopt(option)) {
            ways.push_back(changeTo(session, texts, keyword, utf8Text(option)));
        }
    }
    std::stable_partition(ways.begin(), ways.end(), [&](const SettingChange& way) {
        return std::ranges::find(remedy, way.mainKeyword, &SettingChange::mainKeyword) != remedy.end();
    });
    return ways;
}

// ---- Sheets

std::vector<SheetExcess> findExcesses(const PrintSession& session, std::int64_t pageCount) {
    std::vector<std::pair<std::string, std::string>> options;
    for (const char* const keyword : kLimitedMainKeywords) {
        std::string option = session.choice(CFStringMakeConstant(keyword));
        if (!option.empty() && option != kNothing) {
            options.emplace_back(keyword, std::move(option));
        }
    }
    // Most jobs are not finished, and need no look at what finishers take.
    if (options.empty() || pageCount == 0 || session.instructions().kind == JobKind::fax) {
        return {};
    }
    return findSheetExcesses(sheetLimitsOf(session.printerInfo()), options, session.plan(pageCount));
}

std::string sentenceOf(const SheetExcess& excess, const PrintSession& session, CFBundleRef texts) {
    const SettingWords words = changeTo(session, texts, excess.mainKeyword, excess.option).words;
    const auto text = [texts](CFStringRef key, const std::vector<std::string>& values) {
        return utf8Text(localized(texts, key, values).get());
    };
    const std::string setting = words.panel.empty()
                                    ? text(CFSTR("Conflict Setting"), {words.title, words.choice})
                                    : text(CFSTR("Conflict Setting Panel"), {words.title, words.choice, words.panel});
    const std::vector<std::string> values{setting, std::to_string(excess.limit), std::to_string(excess.sheets),
                                          std::to_string(excess.thickness)};
    switch (excess.kind) {
        case SheetExcess::Kind::tooThick:
            return text(CFSTR("Conflict Sheets Too Thick"), values);
        case SheetExcess::Kind::tooFew:
            return text(CFSTR("Conflict Too Few Sheets"), values);
        case SheetExcess::Kind::tooMany:
            break;
    }
    return text(CFSTR("Conflict Too Many Sheets"), values);
}

}  // namespace

std::vector<std::string> ConflictReport::sentences() const {
    std::vector<std::string> all;
    std::ranges::transform(conflicts, std::back_inserter(all), &Conflict::sentence);
    return all;
}

ConflictReport examineConflicts(const PrintSession& session, CFBundleRef texts, const std::vector<std::string>& keep,
                                std::int64_t pageCount) {
    JobTicket settings(session.printSettings());
    if (readJobKind(settings.get()) == JobKind::secure) {
        settings.set(kPMJobPasscodeKey, {});  // that it is a secret job is enough
    }
    ConflictReport report;
    for (const auto& sides : findConflicts(session, texts, settings.get())) {
        Conflict& conflict = report.conflicts.emplace_back(Conflict{Sentence(texts, sides).text(), {}});
        for (const Side& side : sides) {
            if (!side.isInstalled) {
                conflict.chosen.emplace_back(side.mainKeyword, side.option);
            }
        }
    }
    const bool isPlain = report.conflicts.empty();
    std::vector<SettingChange> fewer;
    JobTicket settingsWithFewer(settings.get());
    for (const SheetExcess& excess : findExcesses(session, pageCount)) {
        report.conflicts.push_back({sentenceOf(excess, session, texts), {{excess.mainKeyword, excess.option}}});
        fewer.push_back(changeTo(session, texts, excess.mainKeyword, kNothing));
        settingsWithFewer.choose(excess.mainKeyword, kNothing);
    }
    if (!isPlain) {
        report.remedy = findRemedy(session, texts, settingsWithFewer.get(), keep);
        report.ways = findWays(session, texts, settings.get(), report.conflicts.front(), report.remedy);
    } else if (!fewer.empty()) {
        report.ways = {fewer.front()};
    }
    report.remedy.insert(report.remedy.end(), fewer.begin(), fewer.end());
    return report;
}

std::string obstacleOf(const PrintSession& session, CFBundleRef texts, const std::string& mainKeyword,
                       const std::string& option) {
    const JobTicket settings;
    CFMutableDictionaryRef pairs = nullptr;
    PMTicketGetPPDDict(settings.get(), kPMTopLevel, &pairs);
    CFDictionarySetValue(pairs, makeString(mainKeyword).get(), makeString(option).get());
    const auto conflicts = findConflicts(session, texts, settings.get());
    return conflicts.empty() ? std::string() : Sentence(texts, conflicts.front()).obstacle();
}

std::string firstOf(const std::vector<std::string>& sentences, CFBundleRef texts) {
    const std::size_t more = sentences.size() - 1;
    switch (more) {
        case 0:
            return sentences[0];
        case 1:
            return utf8Text(localized(texts, CFSTR("Conflict And One More"), {sentences[0]}).get());
        default:
            return utf8Text(localized(texts, CFSTR("Conflict And More"), {sentences[0], std::to_string(more)}).get());
    }
}

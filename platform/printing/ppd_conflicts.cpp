#include "platform/printing/ppd_conflicts.h"

#include "platform/printing/custom_size.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iterator>
#include <ranges>

namespace {

constexpr std::string_view kCustom = "Custom";

// A PPD may be of any size and kind.
constexpr std::size_t kMostConflicts = 200;
constexpr int kMostTries = 2000;

bool isChosen(const PPDConstraint::Side& side, const PPDSettings& settings) {
    const auto found = settings.find(settingOf(side.keyword));
    if (found == settings.end()) {
        return false;
    }
    const std::string_view option = found->second;
    if (side.choice.empty()) {
        return !isSameOption(option, "None") && !isSameOption(option, "Off") && !isSameOption(option, "False");
    }
    return isSameOption(option, side.choice) || (side.choice == kCustom && option.starts_with("Custom."));
}

bool isBroken(const PPDConstraint& constraint, const PPDSettings& settings) {
    return std::ranges::all_of(constraint.sides, [&](const auto& side) { return isChosen(side, settings); });
}

/// The numbers of the constraints that the settings can break, in the PPD's order.
std::vector<std::size_t> constraintsOfChoices(const PPDFile& ppd, const PPDSettings& settings) {
    std::vector<std::size_t> numbers;
    for (const auto& [keyword, option] : settings) {
        if (const auto found = ppd.constraintsOf.find(keyword); found != ppd.constraintsOf.end()) {
            numbers.insert(numbers.end(), found->second.begin(), found->second.end());
        }
    }
    std::ranges::sort(numbers);
    return numbers;
}

PPDConflict keywordsOf(const PPDConstraint& constraint) {
    PPDConflict keywords;
    for (const PPDConstraint::Side& side : constraint.sides) {
        keywords.emplace_back(settingOf(side.keyword));
    }
    return keywords;
}

/// The constraint is often written once from each side.
bool contains(const std::vector<PPDConflict>& conflicts, const PPDConflict& conflict) {
    return std::ranges::any_of(conflicts,
                               [&](const PPDConflict& one) { return std::ranges::is_permutation(one, conflict); });
}

constexpr double kTolerance = 0.1;  // points: what is lost between units

/// A side between the limits, which are points, in hundredths of the unit.
double clamped(double side, double unit, double minimum, double maximum) {
    const double least = std::ceil(minimum / unit * 100) / 100;
    const double most = std::floor(maximum / unit * 100) / 100;
    return least <= most ? std::clamp(side, least, most) : minimum / unit;
}

std::string numberText(double number) {
    std::array<char, 32> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr};
}

/// The nearest custom size that the printer takes, when the option is one that it does not; none for any other.
std::optional<std::string> nearestSize(const PPDFile& ppd, const PPDSettings& settings) {
    const auto chosen = settings.find("PageSize");
    const auto size = chosen == settings.end() || !ppd.customSizes ? std::nullopt : readCustomSize(chosen->second);
    if (!size) {
        return std::nullopt;
    }
    const PPDCustomSizes& limits = *ppd.customSizes;
    const double unit = size->pointsPerUnit();
    const auto fits = [&](double width, double height) {
        return width * unit > limits.minWidth - kTolerance && width * unit < limits.maxWidth + kTolerance &&
               height * unit > limits.minHeight - kTolerance && height * unit < limits.maxHeight + kTolerance;
    };
    if (fits(size->width, size->height)) {
        return std::nullopt;
    }
    const bool turned = fits(size->height, size->width);  // the same sheet, fed the other way
    const double width = turned ? size->height : clamped(size->width, unit, limits.minWidth, limits.maxWidth);
    const double height = turned ? size->width : clamped(size->height, unit, limits.minHeight, limits.maxHeight);
    return "Custom." + numberText(width) + "x" + numberText(height) + size->unit;
}

bool isInConflict(const PPDFile& ppd, const PPDSettings& settings, const std::string& keyword) {
    const auto isOfKeyword = [&](const PPDConstraint::Side& side) { return settingOf(side.keyword) == keyword; };
    return std::ranges::any_of(ppd.constraints,
                               [&](const PPDConstraint& constraint) {
                                   return std::ranges::any_of(constraint.sides, isOfKeyword) &&
                                          isBroken(constraint, settings);
                               }) ||
           (keyword == "PageSize" && nearestSize(ppd, settings));
}

bool isPaper(const std::string& keyword) {
    return keyword == "PageSize" || keyword == "MediaType";
}

class Resolution {
public:
    Resolution(const PPDFile& ppd, const PPDSettings& settings, const std::set<std::string>& keep)
        : ppd_(ppd), settings_(settings), keep_(keep) {}

    /// Settles one conflict by one more change; false when there is no way.
    bool settle(const PPDConflict& conflict) {
        if (conflict.size() == 1) {
            return change(conflict.front());
        }
        // Those that may be changed, the most welcome first.
        std::vector<std::string> keywords;
        std::ranges::copy_if(conflict, std::back_inserter(keywords),
                             [&](const std::string& keyword) { return !changes_.contains(keyword); });
        std::ranges::stable_sort(keywords, {}, [&](const std::string& keyword) {
            return std::pair(keep_.contains(keyword), isPaper(keyword));
        });
        return std::ranges::any_of(keywords, [&](const std::string& keyword) { return change(keyword); });
    }

    /// Takes the first choice of the keyword that stands against nothing; false when there is none, or when it says
    /// what is installed.
    bool change(const std::string& keyword) {
        if (const auto size = keyword == "PageSize" ? nearestSize(ppd_, settings_) : std::nullopt) {
            return accept(keyword, *size);
        }
        const PPDOption* const option = ppd_.findOption(keyword);
        if (option == nullptr || option->installable) {
            return false;
        }
        if (option->defaultChoice && accept(option->keyword, option->choices[*option->defaultChoice].keyword)) {
            return true;
        }
        return std::ranges::any_of(option->choices, [&](const PPDChoice& choice) {
            return choice.keyword != kCustom && accept(option->keyword, choice.keyword);
        });
    }

    const PPDSettings& settings() const { return settings_; }
    const PPDSettings& changes() const { return changes_; }

private:
    bool accept(const std::string& keyword, const std::string& option) {
        PPDSettings tried = settings_;
        tried[keyword] = option;
        if (--triesLeft_ < 0 || isInConflict(ppd_, tried, keyword)) {
            return false;
        }
        settings_ = std::move(tried);
        changes_[keyword] = option;
        return true;
    }

    const PPDFile& ppd_;
    PPDSettings settings_;
    PPDSettings changes_;
    const std::set<std::string>& keep_;
    int triesLeft_ = kMostTries;
};

}  // namespace

std::vector<PPDConflict> findConflicts(const PPDFile& ppd, const PPDSettings& settings) {
    std::vector<PPDConflict> conflicts;
    for (const std::size_t number : constraintsOfChoices(ppd, settings)) {
        const PPDConstraint& constraint = ppd.constraints[number];
        if (conflicts.size() == kMostConflicts || !isBroken(constraint, settings)) {
            continue;
        }
        if (PPDConflict conflict = keywordsOf(constraint); !contains(conflicts, conflict)) {
            conflicts.push_back(std::move(conflict));
        }
    }
    if (nearestSize(ppd, settings)) {
        conflicts.push_back({"PageSize"});
    }
    return conflicts;
}

std::optional<PPDSettings> resolveConflicts(const PPDFile& ppd, const PPDSettings& settings,
                                            const std::set<std::string>& keep) {
    Resolution resolution(ppd, settings, keep);
    // No keyword is changed twice, so this ends.
    for (;;) {
        const std::vector<PPDConflict> conflicts = findConflicts(ppd, resolution.settings());
        if (conflicts.empty()) {
            return resolution.changes();
        }
        if (!resolution.settle(conflicts.front())) {
            return std::nullopt;
        }
    }
}

std::optional<std::string> choiceWithoutConflict(const PPDFile& ppd, const PPDSettings& settings,
                                                 const std::string& keyword) {
    static const std::set<std::string> kKeepNone;
    Resolution resolution(ppd, settings, kKeepNone);
    return resolution.change(keyword) ? std::optional(resolution.changes().begin()->second) : std::nullopt;
}

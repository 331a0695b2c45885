// A PPD with any options and constraints, and any settings, custom sizes among them.
//
// Contract: conflicts are those that the constraints say, each once. The changes that are proposed end all of them and
// change nothing that is installed; the choice that is proposed for one keyword ends those of it.

#include "platform/printing/ppd_conflicts.h"

#include "fuzz/bytes.h"
#include "fuzz/fuzz_target.h"
#include "platform/printing/custom_size.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array kKeywords{"PageSize", "MediaType", "Duplex", "Staple", "Fold", "Option1", "Option2"};
constexpr std::array kChoices{"None", "A", "B", "C", "Custom"};

PPDFile makePPD(Bytes& bytes) {
    PPDFile ppd;
    for (const std::string keyword : kKeywords) {
        PPDOption option{keyword, keyword, 1, keyword.starts_with("Option"), {}, {}};
        for (std::size_t i = bytes.below(kChoices.size() + 1); i-- > 0;) {
            option.choices.push_back({kChoices[i], kChoices[i], false, {}});
        }
        if (const std::size_t chosen = bytes.below(option.choices.size() + 1); chosen > 0) {
            option.defaultChoice = chosen - 1;
        }
        ppd.addOption(std::move(option));
    }
    if (bytes.flag()) {
        const auto least = static_cast<float>(bytes.next());
        ppd.customSizes =
            PPDCustomSizes{least, least, least * static_cast<float>(bytes.below(8)), 1000, 0, 0, 0, 0, {0, 1, 2, 3, 4}};
    }
    for (std::size_t count = bytes.below(std::size_t{16}); count > 0; --count) {
        PPDConstraint constraint;
        const std::string* ofJob = nullptr;
        for (std::size_t sides = 2 + bytes.below(std::size_t{3}); sides > 0; --sides) {
            const PPDOption& option = ppd.options[bytes.below(ppd.options.size())];
            constraint.sides.push_back({option.keyword, bytes.flag() ? kChoices[bytes.below(kChoices.size())] : ""});
            ofJob = ofJob == nullptr && !option.installable ? &option.keyword : ofJob;
        }
        if (ofJob != nullptr) {
            ppd.constraintsOf[*ofJob].push_back(ppd.constraints.size());
            ppd.constraints.push_back(std::move(constraint));
        }
    }
    return ppd;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes bytes(data, size);
    const PPDFile ppd = makePPD(bytes);
    PPDSettings settings;
    for (const PPDOption& option : ppd.options) {
        if (const std::size_t chosen = bytes.below(option.choices.size() + 1); chosen > 0) {
            settings[option.keyword] = option.choices[chosen - 1].keyword;
        }
    }
    std::set<std::string> keep{kKeywords[bytes.below(kKeywords.size())]};
    if (bytes.flag()) {
        settings["PageSize"] = "Custom." + bytes.rest();
    }

    const std::vector<PPDConflict> conflicts = findConflicts(ppd, settings);
    for (std::size_t i = 0; i < conflicts.size(); ++i) {
        FUZZ_EXPECT(!conflicts[i].empty());
        FUZZ_EXPECT(std::find(conflicts.begin(), conflicts.begin() + std::ptrdiff_t(i), conflicts[i]) ==
                    conflicts.begin() + std::ptrdiff_t(i));
    }
    if (auto changes = resolveConflicts(ppd, settings, keep)) {
        FUZZ_EXPECT(changes->empty() == conflicts.empty());
        FUZZ_EXPECT(!changes->contains("Option1") && !changes->contains("Option2"));
        changes->merge(settings);
        FUZZ_EXPECT(findConflicts(ppd, *changes).empty());
    }
    for (const std::string keyword : kKeywords) {
        if (const auto choice = choiceWithoutConflict(ppd, settings, keyword)) {
            PPDSettings changed = settings;
            changed[keyword] = *choice;
            const auto left = findConflicts(ppd, changed);
            FUZZ_EXPECT(std::ranges::none_of(left, [&](const PPDConflict& conflict) {
                return std::ranges::find(conflict, keyword) != conflict.end();
            }));
        }
    }
    const auto paper = settings.find("PageSize");
    if (const auto custom = paper == settings.end() ? std::nullopt : readCustomSize(paper->second)) {
        FUZZ_EXPECT(custom->width > 0 && custom->height > 0 && custom->pointsPerUnit() > 0);
    }
    return 0;
}

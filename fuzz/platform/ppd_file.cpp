// Any bytes as a PPD.
//
// Contract: it is read, or there is a reason. All numbers lie in their tables; what its constraints name is there; the
// texts that are shown are byte strings of the length that they say. A way out of a conflict leads out of it.

#include "platform/printing/ppd_file.h"

#include "fuzz/memory_file.h"
#include "platform/printing/mac_roman.h"
#include "platform/printing/ppd_conflicts.h"

namespace {

void checkOption(const PPDFile& ppd, const PPDOption& option) {
    FUZZ_EXPECT(ppd.findOption(option.keyword) != nullptr);
    FUZZ_EXPECT(!option.defaultChoice || *option.defaultChoice < option.choices.size());
    for (const PPDChoice& choice : option.choices) {
        FUZZ_EXPECT(option.findChoice(choice.keyword).has_value());
        const PPDByteString title = ppdByteString(choice.title);
        FUZZ_EXPECT(!title.empty() && title.size() == std::size_t(title[0]) + 1);
    }
}

void checkConstraints(const PPDFile& ppd) {
    for (const PPDConstraint& constraint : ppd.constraints) {
        FUZZ_EXPECT(constraint.sides.size() > 1);
        for (const PPDConstraint::Side& side : constraint.sides) {
            FUZZ_EXPECT(ppd.findOption(side.keyword) != nullptr);
        }
    }
    PPDSettings settings;
    for (const PPDOption& option : ppd.options) {
        if (!option.choices.empty()) {
            settings[option.keyword] = option.choices.back().keyword;
        }
    }
    if (auto changes = resolveConflicts(ppd, settings, {"PageSize"})) {
        changes->merge(settings);
        FUZZ_EXPECT(findConflicts(ppd, *changes).empty());
    }
}

}  // namespace

/// The print server's library (2.4.2) loses texts of some PPDs, which is not what is looked for.
extern "C" int __lsan_is_turned_off() {  // NOLINT(bugprone-reserved-identifier): the sanitizer's name
    return 1;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string reason;
    const auto ppd = readPPDFile(memoryFile(data, size), &reason);
    FUZZ_EXPECT(ppd.has_value() == reason.empty());
    if (ppd) {
        for (const PPDOption& option : ppd->options) {
            checkOption(*ppd, option);
        }
        FUZZ_EXPECT(!ppd->filters.empty());
        checkConstraints(*ppd);
    }
    return 0;
}

// Any bytes as the options that are saved for a queue, which a job begins with.
//
// Contract: choices are the PPD's own, each once, and none of what is installed; numbers and ranges are such as a job
// can have; what is chosen so begins a job in the same way again.

#include "platform/printing/starting_options.h"

#include "fuzz/fuzz_target.h"

#include <algorithm>

/// The print server's library (2.4.2) loses texts of some PPDs, which is not what is looked for.
extern "C" int __lsan_is_turned_off() {  // NOLINT(bugprone-reserved-identifier): the sanitizer's name
    return 1;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string path = TAVRO_PPD;
    static const PPDFile ppd = [] {
        std::string reason;
        auto read = readPPDFile(path, &reason);
        FUZZ_EXPECT(read);
        return std::move(*read);
    }();
    const OptionList options = optionsInFilterText(std::string(reinterpret_cast<const char*>(data), size));
    const StartingOptions start = sortOptions(ppd, path, options);
    for (const auto& [keyword, choice] : start.choices) {
        const PPDOption* const option = ppd.findOption(keyword);
        FUZZ_EXPECT(option != nullptr && option->keyword == keyword && !option->installable);
        FUZZ_EXPECT(option->findChoice(choice) || choice.starts_with("Custom."));
        FUZZ_EXPECT(std::ranges::count(start.choices, keyword, [](const auto& each) { return each.first; }) == 1);
    }
    FUZZ_EXPECT(start.copies.value_or(1) >= 1);
    FUZZ_EXPECT(!start.settings || (start.namesSettings && start.settingsFault.empty()));
    FUZZ_EXPECT(sortOptions(ppd, path, start.choices).choices == start.choices);
    return 0;
}

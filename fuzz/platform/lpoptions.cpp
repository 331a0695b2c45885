// Any bytes as options that a user saves for a queue, and as the file of saved options that they come into.
//
// Contract: saved options are read back as they were, by ourselves as well as by the print server's library; the lines
// of others stay, whoever they are; what is taken away is gone.

#include "platform/printing/lpoptions_text.h"

#include "fuzz/memory_file.h"

#include <algorithm>
#include <array>

#include <cups/file.h>

namespace {

bool isOfOthers(const SavedDestination& destination) {
    return !isSameOption(destination.name, "q/i");
}

std::vector<SavedDestination> others(const std::string& text) {
    std::vector<SavedDestination> destinations = destinationsInText(text);
    std::erase_if(destinations, [](const SavedDestination& each) { return !isOfOthers(each); });
    return destinations;
}

/// The options of the destination as the print server's library takes them from the file.
OptionList optionsOfLibrary(const std::string& text) {
    const std::string& path = memoryFile(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
    cups_file_t* const file = cupsFileOpen(path.c_str(), "r");
    OptionList options;
    std::array<char, 8192> line{};
    char* value = nullptr;
    int number = 0;
    while (cupsFileGetConf(file, line.data(), line.size(), &value, &number) != nullptr) {
        const std::string_view rest = value == nullptr ? "" : value;
        const std::string_view name = rest.substr(0, rest.find_first_of(" \t\v\f\r"));
        if ((isSameOption(line.data(), "Dest") || isSameOption(line.data(), "Default")) && isSameOption(name, "q/i")) {
            setOptions(&options, optionsInFilterText(std::string(rest.substr(name.size()))));
        }
    }
    cupsFileClose(file);
    return options;
}

bool isSame(const SavedDestination& one, const SavedDestination& other) {
    return one.name == other.name && one.options == other.options && one.isDefault == other.isDefault;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::size_t end = std::min(bytes.find('\0'), size);
    const OptionList options = optionsInFilterText(bytes.substr(0, end));
    std::string file = bytes.substr(std::min(end + 1, size));
    std::erase(file, '\0');

    const std::string written = textWithOptions(file, "q/i", options);
    OptionList expected = options;
    std::erase_if(expected, [](const auto& option) { return !fitsIntoLine(option); });
    FUZZ_EXPECT(optionsInText(written, "q/i") == expected);
    FUZZ_EXPECT(optionsOfLibrary(written) == expected);
    FUZZ_EXPECT(std::ranges::equal(others(written), others(file), isSame));
    FUZZ_EXPECT(textWithOptions(written, "q/i", options) == written);
    const std::string without = textWithout(written, "q/i");
    FUZZ_EXPECT(std::ranges::equal(destinationsInText(without), others(file), isSame));
    return 0;
}

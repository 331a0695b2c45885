// Any bytes as a job that is read back: its commands, its instructions, its PostScript.
//
// Contract: commands have no line's end, instructions a name; written again, an instruction is a single line of plain
// ASCII that reads as the same name and value.

#include "driver/proof/job_file.h"

#include "driver/job/job_header.h"
#include "fuzz/fuzz_target.h"

#include <algorithm>

namespace {

void checkInstruction(const std::string& name, const std::string& value) {
    const std::string line = instructionLine(name, value);
    FUZZ_EXPECT(line.find('\n') == line.size() - 1);
    const auto again = takeApart(line + "%!PS\n");
    FUZZ_EXPECT(again && again->instructions.size() == 1 && again->commands.empty());
    FUZZ_EXPECT(again->instructions.front() == std::pair(name, value));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    checkInstruction("job-name", text);
    const auto job = takeApart(text);
    if (!job) {
        return 0;
    }
    FUZZ_EXPECT(!job->postScript.empty() && job->postScript.size() <= size + 1);
    FUZZ_EXPECT(std::ranges::none_of(job->commands, [](const std::string& command) {
        return command.empty() || command.find('\n') != std::string::npos;
    }));
    for (const auto& [name, value] : job->instructions) {
        FUZZ_EXPECT(!name.empty());
        const std::string line = instructionLine(name, value);
        const auto again = readInstruction(std::string_view(line).substr(5, line.size() - 6));
        FUZZ_EXPECT(again && again->first == name && again->second == value);
    }
    return 0;
}

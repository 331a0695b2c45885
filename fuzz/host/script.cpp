// Any bytes as a script.
//
// Contract: each line is an action, or has one error that names a place in it, or says nothing; none is both. What is
// written in quotation marks is read back as it was.

#include "host/script/script_parser.h"

#include "fuzz/fuzz_target.h"
#include "host/script/quoted.h"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    static constexpr std::string_view kOwn[] = {"open"};
    const script::Script parsed = script::parse(text, kOwn);

    std::vector<std::size_t> lengths(1);
    for (const char c : text) {
        c == '\n' ? lengths.push_back(0) : void(++lengths.back());
    }
    std::vector<int> numbers;
    for (const script::Error& error : parsed.errors) {
        FUZZ_EXPECT(error.line >= 1 && std::size_t(error.line) <= lengths.size() && !error.reason.empty());
        FUZZ_EXPECT(error.column >= 1 && std::size_t(error.column) <= lengths[std::size_t(error.line) - 1] + 1);
        numbers.push_back(error.line);
    }
    for (const script::Line& line : parsed.lines) {
        numbers.push_back(line.number);
        if (const auto* const shot = std::get_if<script::Shot>(&line.action)) {
            FUZZ_EXPECT(!shot->name.empty() && shot->name.find('/') == std::string::npos && shot->name != "..");
        }
    }
    std::ranges::sort(numbers);
    FUZZ_EXPECT(std::ranges::adjacent_find(numbers) == numbers.end());
    FUZZ_EXPECT(numbers.empty() || (numbers.front() >= 1 && std::size_t(numbers.back()) <= lengths.size()));

    const script::Script typed = script::parse("type Tshl:-16 " + quoted(text) + " # a comment");
    FUZZ_EXPECT(typed.errors.empty() && typed.lines.size() == 1);
    const auto& type = std::get<script::Type>(typed.lines.front().action);
    FUZZ_EXPECT(type.text == text && controlNameText(type.control) == "Tshl:-16");
    return 0;
}

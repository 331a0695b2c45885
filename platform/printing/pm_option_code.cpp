// The PostScript of a PPD's options.
#include "platform/foundation/text.h"
#include "platform/printing/PMPrinter.h"
#include "platform/printing/custom_size.h"
#include "platform/printing/printer_record.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace {

constexpr std::string_view kPageSize = "PageSize";

std::string numberText(double number) {
    std::array<char, 32> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed, 2).ptr;
    return {text.data(), end};
}

/// The numbers that the code of a custom size takes from the stack, a line.
std::string sizeNumbers(const CustomSize& size, const PPDCustomSizes& custom) {
    const std::array values{numberText(size.width * size.pointsPerUnit()),
                            numberText(size.height * size.pointsPerUnit()), std::string("0"), std::string("0"),
                            std::string("1")};
    std::array<std::string, values.size()> ordered;
    for (std::size_t i = 0; i < values.size(); ++i) {
        ordered[custom.order[i]] = values[i];
    }
    std::string line;
    for (const std::string& value : ordered) {
        line += value.empty() ? "0 " : value + " ";
    }
    line.back() = '\n';
    return line;
}

std::string between(const std::string& keyword, const std::string& choice, const std::string& code) {
    return "%%BeginFeature: *" + keyword + " " + choice + "\n" + code + (code.ends_with('\n') ? "" : "\n") +
           "%%EndFeature\n";
}

/// The whole number of "Custom.250" where the option takes one.
std::optional<std::string> numberOf(const PPDOption& option, std::string_view choice) {
    static constexpr std::string_view kCustom = "Custom.";
    if (!option.hasNumberCustom || !option.findChoice("Custom") || !choice.starts_with(kCustom)) {
        return std::nullopt;
    }
    const std::string_view digits = choice.substr(kCustom.size());
    int number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return error == std::errc() && end == digits.data() + digits.size() ? std::optional(std::to_string(number))
                                                                        : std::nullopt;
}

std::optional<std::string> codeOf(const PPDFile& ppd, const std::string& keyword, const std::string& choice) {
    const PPDOption* const option = ppd.findOption(keyword);
    if (option == nullptr || option->isCommand || option->installable) {
        return std::nullopt;
    }
    if (const auto found = choice.empty() ? option->defaultChoice : option->findChoice(choice)) {
        return between(keyword, option->choices[*found].keyword, option->choices[*found].code);
    }
    if (const auto number = numberOf(*option, choice)) {
        const PPDChoice& custom = option->choices[*option->findChoice("Custom")];
        return between("Custom" + keyword, "True", *number + "\n" + custom.code);
    }
    const auto size = keyword == kPageSize && ppd.customSizes ? readCustomSize(choice) : std::nullopt;
    const auto custom = option->findChoice("Custom");
    if (!size || !custom) {
        return std::nullopt;
    }
    return between("CustomPageSize", "True", sizeNumbers(*size, *ppd.customSizes) + option->choices[*custom].code);
}

}  // namespace

OSStatus PMPrinterCopyOptionCode(PMPrinter printer, CFStringRef mainKeyword, CFStringRef option, CFStringRef* code) {
    if (printer == nullptr || code == nullptr) {
        return paramErr;
    }
    const auto found = codeOf(printer->ppd, utf8Text(mainKeyword), utf8Text(option));
    if (!found) {
        return kPMKeyNotFound;
    }
    *code = makeString(*found).leak();
    return noErr;
}

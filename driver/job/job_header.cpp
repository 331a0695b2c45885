#include "driver/job/job_header.h"

#include <array>
#include <charconv>

namespace {

constexpr std::string_view kPrefix = "COMMENT TPIF ";

/// Printable ASCII goes as it is; "%" is the escape itself.
bool isPlain(unsigned char c) {
    return c >= ' ' && c <= '~' && c != '%';
}

}  // namespace

std::string instructionLine(const std::string& name, const std::string& value) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string line = "@PJL " + std::string(kPrefix) + name + "=";
    const std::size_t end = value.find_last_not_of(' ') + 1;  // blanks behind it would be the line's
    for (std::size_t i = 0; i < value.size(); ++i) {
        const auto byte = static_cast<unsigned char>(value[i]);
        if (isPlain(byte) && i < end) {
            line += value[i];
        } else {
            line += {'%', kDigits[byte >> 4], kDigits[byte & 0xF]};
        }
    }
    return line + "\n";
}

std::optional<std::pair<std::string, std::string>> readInstruction(std::string_view command) {
    if (!command.starts_with(kPrefix)) {
        return std::nullopt;
    }
    command.remove_prefix(kPrefix.size());
    const std::size_t equals = command.find('=');
    if (equals == std::string_view::npos || equals == 0) {
        return std::nullopt;
    }
    std::string value;
    for (std::size_t at = equals + 1; at < command.size(); ++at) {
        unsigned char byte = 0;
        const char* const digits = command.data() + at + 1;
        if (command[at] == '%' && at + 2 < command.size() &&
            std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
            value += static_cast<char>(byte);
            at += 2;
        } else {
            value += command[at];
        }
    }
    return std::pair(std::string(command.substr(0, equals)), std::move(value));
}

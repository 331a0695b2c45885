#include "host/script/quoted.h"

#include <array>
#include <utility>

std::string quoted(const std::string& text) {
    // character, its letter after the backslash
    static constexpr std::array<std::pair<char, char>, 5> kEscapes{
        {{'"', '"'}, {'\\', '\\'}, {'\n', 'n'}, {'\t', 't'}, {'\b', 'b'}}};
    std::string result = "\"";
    for (const char c : text) {
        char letter = '\0';
        for (const auto& [character, escape] : kEscapes) {
            letter = c == character ? escape : letter;
        }
        if (letter != '\0') {
            result += '\\';
            result += letter;
        } else {
            result += c;
        }
    }
    return result + '"';
}

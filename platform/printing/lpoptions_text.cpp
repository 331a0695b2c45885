#include "platform/printing/lpoptions_text.h"

#include <algorithm>
#include <sstream>
#include <vector>

namespace {

struct Line {
    std::string_view whole;  // without its end
    std::string_view kind;   // "Dest" or "Default" in a line of a destination
    std::string_view destination;
    std::string options;
};

/// Where the comment of a line begins, as the print server's library has it: at the first '#', if there is no backslash
/// in front of that.
std::size_t commentIn(std::string_view line) {
    const std::size_t mark = line.find('#');
    return mark != std::string_view::npos && mark > 0 && line[mark - 1] == '\\' ? std::string_view::npos : mark;
}

/// The first '#' of a line has a backslash of its own, all others are what they are.
std::string withoutMark(std::string_view options) {
    std::string text(options);
    if (const std::size_t mark = text.find('#'); mark != std::string::npos && mark > 0) {
        text.erase(mark - 1, 1);
    }
    return text;
}

std::string_view takeWord(std::string_view* text) {
    constexpr std::string_view kBlanks = " \t\r\v\f";
    text->remove_prefix(std::min(text->find_first_not_of(kBlanks), text->size()));
    const std::string_view word = text->substr(0, text->find_first_of(kBlanks));
    text->remove_prefix(word.size());
    return word;
}

std::vector<Line> linesOf(std::string_view text) {
    std::vector<Line> lines;
    while (!text.empty()) {
        const std::string_view whole = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(whole.size() + 1, text.size()));
        std::string_view rest = whole.substr(0, commentIn(whole));
        Line line{whole, takeWord(&rest), {}, {}};
        if (isSameOption(line.kind, "Dest") || isSameOption(line.kind, "Default")) {
            line.destination = takeWord(&rest);
            line.options = withoutMark(rest);
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

std::string lineFor(std::string_view kind, std::string_view destination, const OptionList& options) {
    std::ostringstream line;
    line << kind << ' ' << destination;
    for (const auto& option : options) {
        if (!fitsIntoLine(option)) {
            continue;
        }
        const auto& [name, value] = option;
        line << ' ' << name << '=';
        const bool isPlain = !value.empty() && value.find_first_of(" \t\v\f\"'\\{}") == std::string::npos;
        if (isPlain) {
            line << value;
            continue;
        }
        line << '"';
        for (const char c : value) {
            line << (c == '"' || c == '\\' ? "\\" : "") << c;
        }
        line << '"';
    }
    line << '\n';
    std::string text = line.str();
    if (const std::size_t mark = text.find('#'); mark != std::string::npos) {
        text.insert(mark, 1, '\\');
    }
    return text;
}

}  // namespace

bool fitsIntoLine(const std::pair<std::string, std::string>& option) {
    constexpr std::string_view kEnds("\n\r\0", 3);
    return (option.first + option.second).find_first_of(kEnds) == std::string::npos;
}

std::vector<SavedDestination> destinationsInText(const std::string& text) {
    std::vector<SavedDestination> destinations;
    for (const Line& line : linesOf(text)) {
        if (line.destination.empty()) {
            continue;
        }
        destinations.push_back(
            {std::string(line.destination), optionsInFilterText(line.options), isSameOption(line.kind, "Default")});
    }
    return destinations;
}

OptionList optionsInText(const std::string& text, std::string_view destination) {
    OptionList options;
    for (const SavedDestination& each : destinationsInText(text)) {
        if (isSameOption(each.name, destination)) {
            setOptions(&options, each.options);
        }
    }
    return options;
}

std::string textWithOptions(const std::string& text, std::string_view destination, const OptionList& options) {
    std::string_view kind;  // of its own line, of which there may be several: "Default" if one says so
    std::string result;
    for (const Line& line : linesOf(text)) {
        if (isSameOption(line.destination, destination)) {
            kind = kind.empty() || isSameOption(line.kind, "Default") ? line.kind : kind;
        } else {
            result.append(line.whole).append("\n");
        }
    }
    // An instance is there because of its line, and so is the default destination.
    const bool isNeeded =
        !options.empty() || isSameOption(kind, "Default") || destination.find('/') != std::string_view::npos;
    return isNeeded ? result + lineFor(kind.empty() ? "Dest" : kind, destination, options) : result;
}

std::string textWithout(const std::string& text, std::string_view destination) {
    std::string result;
    for (const Line& line : linesOf(text)) {
        if (!isSameOption(line.destination, destination)) {
            result.append(line.whole).append("\n");
        }
    }
    return result;
}

std::size_t lengthOfLine(std::string_view destination, const OptionList& options) {
    return lineFor("Default", destination, options).size() - 1;
}

#include "platform/printing/filter_route.h"

#include "platform/foundation/message.h"
#include "platform/printing/filter_chain.h"
#include "platform/printing/option_list.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kNothing = "-";  // in the place of a program: no conversion is needed
// What the printer reads stands behind the prefix where a PPD says it; no type is written like this.
constexpr std::string_view kPrinter = "printer";

struct Conversion {
    std::string from;  // a type, or "application/*", or "*/*"
    std::string to;
    int cost;
    std::string program;
    std::uintmax_t largest = UINTMAX_MAX;  // document in bytes
};

std::string lower(std::string text) {
    std::ranges::transform(text, text.begin(), lowerCase);
    return text;
}

bool isType(const std::string& word) {
    return word.find('/') != std::string::npos;
}

/// Reads "FROM [TO] COST [maxsize(BYTES)] PROGRAM". Nothing for a line of another kind.
std::optional<Conversion> readConversion(const std::string& line, const std::string& to) {
    std::istringstream words(line);
    Conversion made{{}, to, 0, {}};
    std::string word;
    words >> made.from >> word;
    if (isType(word)) {
        made.to = to.empty() ? lower(word) : to + " " + lower(word);
        words >> word;
    }
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), made.cost);
    if (!isType(made.from) || made.to.empty() || error != std::errc() || end != word.data() + word.size()) {
        return std::nullopt;
    }
    // In the server's own lists "anything" is what nobody knows.
    made.from = to.empty() && made.from == "*/*" ? "application/octet-stream" : lower(made.from);
    std::getline(words >> std::ws, made.program);
    static constexpr std::string_view kLargest = "maxsize(";
    if (made.program.starts_with(kLargest)) {
        const char* const digits = made.program.data() + kLargest.size();
        std::from_chars(digits, made.program.data() + made.program.size(), made.largest);
        std::istringstream rest(made.program.substr(made.program.find(')') + 1));
        std::getline(rest >> std::ws, made.program);
    }
    made.program.erase(made.program.find_last_not_of(" \t\r") + 1);
    return made.program.empty() ? std::nullopt : std::optional(made);
}

std::string folder(const char* variable, const char* fallback) {
    const char* const value = std::getenv(variable);
    return value == nullptr || *value == '\0' ? fallback : value;
}

/// What the print server of this machine converts, from the files that its packages bring.
std::vector<Conversion> installedConversions() {
    std::vector<Conversion> all;
    for (const fs::path& place : {fs::path(folder("CUPS_DATADIR", "/usr/share/cups")) / "mime",
                                  fs::path(folder("CUPS_SERVERROOT", "/etc/cups"))}) {
        std::error_code error;
        for (fs::directory_iterator entry(place, error), end; !error && entry != end; entry.increment(error)) {
            if (entry->path().extension() != ".convs") {
                continue;
            }
            std::ifstream file(entry->path());
            for (std::string line; std::getline(file, line);) {
                if (auto conversion = line.starts_with('#') ? std::nullopt : readConversion(line, {})) {
                    all.push_back(std::move(*conversion));
                }
            }
        }
    }
    return all;
}

bool isThere(const std::string& program) {
    return program == kNothing || access(filterProgram(program).c_str(), X_OK) == 0;
}

bool matches(const std::string& pattern, std::string_view type) {
    if (pattern == "*/*") {
        return !type.starts_with(kPrinter);
    }
    return pattern.ends_with("/*") ? type.starts_with(pattern.substr(0, pattern.size() - 1)) : pattern == type;
}

/// The cheapest conversions that lead from a type to another one, each type reached in the order of its cost.
std::optional<std::vector<Conversion>> cheapest(const std::vector<Conversion>& conversions, const std::string& from,
                                                std::uintmax_t size, std::string_view to) {
    struct Place {
        int cost;
        std::vector<Conversion> way;
    };
    std::map<std::string, Place> reached{{from, {0, {}}}};
    std::map<std::string, Place> known;
    while (!reached.empty()) {
        const auto next = std::ranges::min_element(reached, {}, [](const auto& each) { return each.second.cost; });
        const auto [type, place] = *known.insert(reached.extract(next)).position;
        if (type == to) {
            return place.way;
        }
        for (const Conversion& each : conversions) {
            const int cost = place.cost + each.cost;
            if (!matches(each.from, type) || size > each.largest || known.contains(each.to)) {
                continue;
            }
            const auto found = reached.find(each.to);
            if (found == reached.end() || found->second.cost > cost) {
                Place& better = reached.insert_or_assign(each.to, Place{cost, place.way}).first->second;
                better.way.push_back(each);
                better.way.back().from = type;
            }
        }
    }
    return std::nullopt;
}

/// The way by the programs that are there; else why there is none.
std::optional<FilterRoute> route(const std::vector<Conversion>& all, const std::string& from, std::uintmax_t size,
                                 const std::string& to, std::string* reason) {
    std::vector<Conversion> present = all;
    std::erase_if(present, [](const Conversion& each) { return !isThere(each.program); });
    const auto way = cheapest(present, from, size, to);
    if (!way) {
        const auto wanted = cheapest(all, from, size, to);
        const auto missing = wanted ? std::ranges::find_if_not(*wanted, isThere, &Conversion::program)
                                    : std::vector<Conversion>::const_iterator{};
        *reason = wanted ? missing->program + ": " +
                               messageText("this filter is not installed (%1)", {filterProgram(missing->program)})
                         : messageText("no filters are installed that make of %1 what the printer reads", {from});
        return std::nullopt;
    }
    FilterRoute made;
    for (const Conversion& each : *way) {
        if (each.program != kNothing) {
            made.filters.push_back(each.program);
        }
        // A filter of the printer's own may say what it makes; else it is known by what it reads.
        if (each.to != kPrinter) {
            made.finalContentType = each.to.substr(each.to.find(' ') + 1);
        }
    }
    return made;
}

}  // namespace

std::optional<FilterRoute> findRouteToPrinter(const std::string& contentType, std::uintmax_t size,
                                              const std::vector<std::string>& printerFilters, std::string* reason) {
    std::vector<Conversion> all = installedConversions();
    for (const std::string& line : printerFilters) {
        auto conversion = readConversion(line, std::string(kPrinter));
        if (!conversion) {
            *reason = messageText("has a line for a filter that says nothing: %1", {line});
            return std::nullopt;
        }
        if (conversion->to != kPrinter) {
            all.push_back({conversion->to, std::string(kPrinter), 0, std::string(kNothing)});
        }
        all.push_back(std::move(*conversion));
    }
    return route(all, contentType, size, std::string(kPrinter), reason);
}

std::optional<FilterRoute> findRoute(const std::string& contentType, const std::string& wanted, std::string* reason) {
    return route(installedConversions(), contentType, 0, wanted, reason);
}

#include "driver/job/instruction_values.h"

#include "platform/foundation/DateTimeUtils.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace {

struct FinishingRow {
    int value;  // of the finishing menu
    const char* name;
};
// clang-format off
constexpr std::array kFinishings{
    // value         name
    FinishingRow{1,  "none"},
    FinishingRow{2,  "tavro-custom"},
    FinishingRow{3,  "booklet-maker"},
    FinishingRow{10, "staple-top-left"},
    FinishingRow{11, "staple-top-right"},
    FinishingRow{12, "staple-bottom-right"},
    FinishingRow{13, "staple-bottom-left"},
    FinishingRow{20, "staple-dual-top"},
    FinishingRow{21, "staple-dual-right"},
    FinishingRow{22, "staple-dual-bottom"},
    FinishingRow{23, "staple-dual-left"},
    FinishingRow{30, "tavro-staple-center-top"},
    FinishingRow{31, "tavro-staple-center-right"},
    FinishingRow{32, "tavro-staple-center-bottom"},
    FinishingRow{33, "tavro-staple-center-left"},
    FinishingRow{40, "bind-left"},
    FinishingRow{50, "punch-dual-left"},
    FinishingRow{51, "punch-dual-top"},
    FinishingRow{52, "punch-dual-right"},
    FinishingRow{53, "punch-dual-bottom"},
    FinishingRow{60, "punch-triple-left"},
    FinishingRow{61, "punch-triple-top"},
    FinishingRow{62, "punch-triple-right"},
    FinishingRow{63, "punch-triple-bottom"},
    FinishingRow{70, "punch-quad-left"},
    FinishingRow{71, "punch-quad-top"},
    FinishingRow{72, "punch-quad-right"},
    FinishingRow{73, "punch-quad-bottom"},
    FinishingRow{80, "tavro-fold-booklet"},
    FinishingRow{81, "saddle-stitch"},
    FinishingRow{82, "tavro-fold-half-inside"},
    FinishingRow{83, "tavro-fold-half-outside"},
    FinishingRow{84, "tavro-fold-letter-inside"},
    FinishingRow{85, "tavro-fold-letter-outside"},
    FinishingRow{86, "tavro-fold-z-inside"},
    FinishingRow{87, "tavro-fold-z-outside"},
    FinishingRow{90, "tavro-fold-half-z-left"},
    FinishingRow{91, "tavro-fold-half-z-right"},
};
static_assert(kFinishings.size() == 38);
// clang-format on

// Several together: two decimal digits for each, behind a one.
constexpr int kSeveral = 1'000'000;

bool isWord(std::string_view text) {
    constexpr std::string_view kOthers = "+-._";
    return !text.empty() && std::ranges::all_of(text, [kOthers](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
               kOthers.find(c) != std::string_view::npos;
    });
}

std::string quoted(std::string_view text) {
    std::string value = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            value += '\\';
        }
        value += c;
    }
    return value + '"';
}

}  // namespace

std::string collectionOf(const Instructions& members) {
    std::string text;
    for (const auto& [name, value] : members) {
        const bool isCollection = value.starts_with('{');
        text += (text.empty() ? "" : " ") + name + "=" + (isCollection || isWord(value) ? value : quoted(value));
    }
    return "{" + text + "}";
}

Instructions paperMembers(const Paper& paper, std::string_view prefix) {
    Instructions members;
    const auto addText = [&](const char* start, const char* name, const std::string& value) {
        if (!value.empty()) {
            members.emplace_back(start + std::string(prefix) + name, value);
        }
    };
    const auto addNumber = [&](const char* start, const char* name, int value) {
        addText(start, name, value > 0 ? std::to_string(value) : std::string());
    };
    constexpr const char* kOurs = "tavro-";
    addText("", "media-size", paper.size);
    addText("", "media-color", paper.color);
    addText("", "media-type", paper.type);
    addText("", "media-key", paper.name);
    addNumber("", "media-weight-metric", paper.weight);
    addNumber("", "media-order-count", paper.tabsInBank);
    addText(kOurs, "media-color-name", paper.colorName);
    addText(kOurs, "media-type-name", paper.typeName);
    addText(kOurs, "media-punched", paper.isPunched ? "true" : "");
    addNumber(kOurs, "media-sides-coated", paper.sidesCoated);
    addNumber(kOurs, "media-coating", paper.coating);
    addNumber(kOurs, "media-finish", paper.finish);
    addNumber(kOurs, "media-grain", paper.grain);
    return members;
}

std::string momentText(std::int64_t moment) {
    LongDateRec date{};
    LongSecondsToDate(&moment, &date);
    std::array<char, 64> text;
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d", date.ld.year, date.ld.month, date.ld.day,
                  date.ld.hour, date.ld.minute, date.ld.second);
    return text.data();
}

std::string sidesText(Sides sides) {
    switch (sides) {
        case Sides::longEdge:
            return "two-sided-long-edge";
        case Sides::shortEdge:
            return "two-sided-short-edge";
        case Sides::one:
            break;
    }
    return "one-sided";
}

std::vector<std::string> finishingsOf(int value) {
    std::vector<std::string> names;
    const bool areSeveral = value > kSeveral && value < 2 * kSeveral;
    for (int rest = areSeveral ? value - kSeveral : value; rest > 0; rest /= 100) {
        const int part = areSeveral ? rest % 100 : rest;
        if (const auto* const row = std::ranges::find(kFinishings, part, &FinishingRow::value);
            row != kFinishings.end()) {
            names.emplace_back(row->name);
        }
        if (!areSeveral) {
            break;
        }
    }
    return names;
}

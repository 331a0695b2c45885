#include "driver/job/instruction_values.h"

#include "model/records/finishing.h"
#include "platform/foundation/DateTimeUtils.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace {

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
    for (const Finishing* row : FinishingsOf(value)) {
        names.emplace_back(row->name);
    }
    return names;
}

std::vector<std::pair<std::string, std::string>> finishingOptionsOf(int value) {
    const auto rows = FinishingsOf(value);
    std::vector<std::pair<std::string, std::string>> options;
    for (const char* const mainKeyword : kFinishingMainKeywords) {
        if (!rows.empty()) {
            options.emplace_back(mainKeyword, FinishingOptionOf(rows, mainKeyword));
        }
    }
    return options;
}

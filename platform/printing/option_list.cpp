#include "platform/printing/option_list.h"

#include "platform/printing/cups_library.h"

#include <algorithm>

char lowerCase(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool isSameOption(std::string_view left, std::string_view right) {
    return std::ranges::equal(left, right, {}, lowerCase, lowerCase);
}

bool OptionOrder::operator()(std::string_view left, std::string_view right) const {
    return std::ranges::lexicographical_compare(left, right, {}, lowerCase, lowerCase);
}

const std::string* findOption(const OptionList& options, std::string_view name) {
    const auto found = std::ranges::find_if(options, [&](const auto& each) { return isSameOption(each.first, name); });
    return found == options.end() ? nullptr : &found->second;
}

std::map<std::string_view, std::string_view, OptionOrder> optionsByName(const OptionList& options) {
    return {options.begin(), options.end()};
}

void setOption(OptionList* options, const std::string& name, const std::string& value) {
    const auto found = std::ranges::find_if(*options, [&](const auto& each) { return isSameOption(each.first, name); });
    if (found == options->end()) {
        options->emplace_back(name, value);
    } else {
        *found = {name, value};
    }
}

void setOptions(OptionList* options, const OptionList& others) {
    std::map<std::string, std::size_t, OptionOrder> places;
    std::size_t number = 0;
    for (const auto& [name, value] : *options) {
        places.emplace(name, number++);
    }
    for (const auto& [name, value] : others) {
        const auto [place, isNew] = places.emplace(name, options->size());
        if (isNew) {
            options->emplace_back(name, value);
        } else {
            (*options)[place->second] = {name, value};
        }
    }
}

std::string filterOptionsText(const OptionList& options) {
    std::string text;
    for (const auto& [name, value] : options) {
        if (!text.empty()) {
            text += ' ';
        }
        text.append(name).append("=");
        for (const char c : value) {
            if (std::string_view(" \t\n\\'\"").find(c) != std::string_view::npos) {
                text += '\\';
            }
            text += c;
        }
    }
    return text;
}

OptionList optionsInFilterText(const std::string& text) {
    OptionList options;
    cups_option_t* list = nullptr;
    const int count = cups().cupsParseOptions(text.c_str(), 0, &list);
    OptionList all;
    for (int i = 0; i < count; ++i) {
        all.emplace_back(list[i].name, list[i].value);
    }
    setOptions(&options, all);
    cups().cupsFreeOptions(count, list);
    return options;
}

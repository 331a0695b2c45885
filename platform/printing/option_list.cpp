#include "platform/printing/option_list.h"

#include <algorithm>

#include <cups/cups.h>

char lowerCase(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool isSameOption(std::string_view left, std::string_view right) {
    return std::ranges::equal(left, right, {}, lowerCase, lowerCase);
}

const std::string* findOption(const OptionList& options, std::string_view name) {
    const auto found = std::ranges::find_if(options, [&](const auto& each) { return isSameOption(each.first, name); });
    return found == options.end() ? nullptr : &found->second;
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
    for (const auto& [name, value] : others) {
        setOption(options, name, value);
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
    const int count = cupsParseOptions(text.c_str(), 0, &list);
    for (int i = 0; i < count; ++i) {
        setOption(&options, list[i].name, list[i].value);
    }
    cupsFreeOptions(count, list);
    return options;
}

// Options of a job, by name, as CUPS takes them.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using OptionList = std::vector<std::pair<std::string, std::string>>;

/// The letter in lower case, if it is one of ASCII: the functions of the C library follow the user's locale.
char lowerCase(char letter);
/// Whether names or values are the same to CUPS, which ignores the case of ASCII letters.
bool isSameOption(std::string_view left, std::string_view right);
/// An order in which names that are the same to CUPS are equal.
struct OptionOrder {
    using is_transparent = void;
    bool operator()(std::string_view left, std::string_view right) const;
};

/// The value of an option, lent; null when the list does not have it.
const std::string* findOption(const OptionList& options, std::string_view name);

/// The values by name, lent, for who looks for many.
std::map<std::string_view, std::string_view, OptionOrder> optionsByName(const OptionList& options);

/// Sets an option, in the place of one of the same name. Several are set faster at once.
void setOption(OptionList* options, const std::string& name, const std::string& value);
void setOptions(OptionList* options, const OptionList& others);

/// The options in the one-argument notation that CUPS filters read ("name=value name=value", blanks, quotes and
/// backslashes in values escaped).
std::string filterOptionsText(const OptionList& options);
/// The options in such a text, which anybody may have written; of several of a name the last.
OptionList optionsInFilterText(const std::string& text);

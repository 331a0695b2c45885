// The text of an lpoptions file, in which each user, or the system for all users, keeps options of queues
// (lpoptions(1)): a line "Dest QUEUE OPTIONS" or "Dest QUEUE/INSTANCE OPTIONS" for each, "Default" for "Dest" in that
// of the default destination.
//
// The CUPS library would write the file anew from what the server says, and without a server, or with another one, lose
// what is in it; so the lines of others are kept here as they are.
#pragma once

#include "platform/printing/option_list.h"

#include <string>
#include <string_view>

/// A line of the text: what is kept for a destination ("queue" or "queue/instance").
struct SavedDestination {
    std::string name;
    OptionList options;
    bool isDefault;
};
std::vector<SavedDestination> destinationsInText(const std::string& text);

/// The options of a destination ("queue" or "queue/instance") in the text, by name; later ones replace earlier ones.
OptionList optionsInText(const std::string& text, std::string_view destination);

/// Whether a line can hold the option: not one that has the end of a line in it.
bool fitsIntoLine(const std::pair<std::string, std::string>& option);

/// The text with these options for the destination, in place of those that it has there; those that fit into a line.
std::string textWithOptions(const std::string& text, std::string_view destination, const OptionList& options);
/// Programs read no more of a line, and of several lines of a destination some read the first one only.
inline constexpr std::size_t kMostOfOptionsLine = 8191;
/// How long the destination's line is.
std::size_t lengthOfLine(std::string_view destination, const OptionList& options);

/// The text without the destination.
std::string textWithout(const std::string& text, std::string_view destination);

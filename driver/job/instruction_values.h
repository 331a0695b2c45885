// Values of instructions for the printer's controller.
#pragma once

#include "driver/instructions/job_instructions.h"
#include "driver/job/job_header.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// "{a=1 b="two words"}": several values that belong together. Texts that are more than a word are quoted; quotes and
/// backslashes in them have a backslash in front.
std::string collectionOf(const Instructions& members);

/// All that a paper says, its names with a prefix in front: "media-color", "cover-front-media-color". The names that
/// are our own have "tavro-" before that.
Instructions paperMembers(const Paper& paper, std::string_view prefix = {});

/// "2027-08-01T13:20:00": a moment in seconds since 1904, on the clock that they were counted by.
std::string momentText(std::int64_t moment);

/// "one-sided" and the like.
std::string sidesText(Sides sides);

/// The finishings of a value of the finishing menu: one, or those that are done together. None for the printer's
/// default and for a number that means nothing.
std::vector<std::string> finishingsOf(int value);

/// The PPD's options that go with the value, of each main keyword of finishing; none for the same two.
std::vector<std::pair<std::string, std::string>> finishingOptionsOf(int value);

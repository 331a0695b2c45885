// Choices of the maker's panels in the user's words.
#pragma once

#include "driver/instructions/job_instructions.h"
#include "platform/foundation/CFBundle.h"

#include <string>

/// "4-9", "4".
std::string pagesOf(const PageSpan& pages);

/// What the finisher does with each set ("1 staple, 2 holes"); empty for nothing. `texts` is the program's own bundle.
std::string finishingWords(const FinishingInstruction& finishing, CFBundleRef texts);

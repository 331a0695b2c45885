// Options of CUPS that change pages on their way to the printer: several on a sheet, their order, their size.
#pragma once

#include "platform/printing/option_list.h"

#include <string_view>

bool isPageOption(std::string_view name);

/// What says that nothing of it is done, also where a queue does it by default.
OptionList pagesAsTheyAre();

// The numbers by which the maker's panels count paper, as options of the PPD.
//
// The plug-in has these tables, too; it is known by its factory only, so they stand here a second time, and a test
// holds the two against each other. A number that stands for no option gives an empty text.
#pragma once

#include "platform/foundation/CFBase.h"

#include <string>

/// Of "PageSize".
std::string paperSizeOption(SInt32 size);
/// Of "MediaColor".
std::string paperColorOption(SInt32 color);
/// Of "MediaType".
std::string paperTypeOption(SInt32 type);

// Paper as records have it, in the words of the printer's PPD.
#pragma once

#include "driver/instructions/job_instructions.h"
#include "model/stock.h"

/// A stock's dictionary with all that it says; null says nothing.
Paper readPaper(CFDictionaryRef stock);

/// The option that stands for a number of "PageSize", "MediaColor" or "MediaType"; empty for a number that means none.
std::string paperOption(CFStringRef mainKeyword, SInt32 value);

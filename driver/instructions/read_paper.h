// Paper as records have it, in the words of the printer's PPD.
#pragma once

#include "driver/instructions/job_instructions.h"
#include "model/stock.h"

/// A stock's dictionary with all that it says; null says nothing.
Paper readPaper(CFDictionaryRef stock);

/// The option that stands for a number of "PageSize", "MediaColor" or "MediaType"; the number itself, which no printer
/// offers, where none does, and nothing for a number that is not set.
std::string paperOption(CFStringRef mainKeyword, SInt32 value);

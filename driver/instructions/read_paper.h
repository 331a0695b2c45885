// Paper as records have it, in the words of the printer's PPD.
#pragma once

#include "driver/instructions/job_instructions.h"
#include "model/stock/stock.h"
#include "platform/printing/PMTicket.h"

#include <string>
#include <utility>
#include <vector>

/// A stock's dictionary with all that it says; null says nothing.
Paper readPaper(CFDictionaryRef stock);

/// The option that stands for a number of "PageSize", "MediaColor" or "MediaType"; the number itself, which no printer
/// offers, where none does, and nothing for a number that is not set.
std::string paperOption(CFStringRef mainKeyword, SInt32 value);

/// Each attribute of a paper that the PPD may have an option for: main keyword and option, "Any" for what the paper
/// does not say.
std::vector<std::pair<const char*, std::string>> paperAttributes(const Paper& paper);

/// What the job's options say of its paper's attributes goes before what the paper says itself.
void takePaperAttributes(PMTicketRef printSettings, Paper* paper);

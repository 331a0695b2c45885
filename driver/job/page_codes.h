// The printer's own code where sheets change.
#pragma once

#include "driver/job/postscript_editor.h"
#include "driver/plan/sheet_plan.h"
#include "platform/printing/PMPrinter.h"

#include <string>

/// What a job's pages are printed with where a page has nothing of its own.
struct UsualChoices {
    std::string lightness;    // TRImageQuality; empty for the PPD's default
    std::string tray;         // InputSlot, which other paper does not come from; empty for none
    std::string slipTray;     // InputSlot, which slip sheets come from; empty for where all else does
    bool isNegative = false;  // by the printer, which would make sides black that nothing is printed on
};

/// The option of Duplex.
const char* duplexOption(Sides sides);

/// The code of each page that the plan sends: that of its paper and tray, its sides and its lightness, where they
/// differ from those of the page before; that of the first page is always there.
PageCodes pageCodesOf(const SheetPlan& plan, PMPrinter printer, const UsualChoices& usual);

/// Whether all pages are on one kind of paper, from one tray, with the same sides and lightness: the options of the job
/// say it all.
bool isUniform(const SheetPlan& plan, const UsualChoices& usual);

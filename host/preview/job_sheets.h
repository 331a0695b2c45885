// A job as its sheets are shown: all that their pictures and words are made of.
#pragma once

#include "driver/job/printer_abilities.h"
#include "driver/pages/document.h"
#include "driver/plan/sheet_plan.h"
#include "platform/printing/PMPrinter.h"

#include <memory>
#include <optional>
#include <vector>

struct JobSheets {
    SheetPlan plan;  // with the banner page, where there is one, as its first sheet
    PageLayout layout;
    std::shared_ptr<const std::vector<Size>> pages;  // of the document
    std::vector<PaperShape> papers;                  // of the plan's papers
    FinishingInstruction finishing;
    bool isNegative = false;
    bool isBlackAndWhite = false;
    ColorTones tones;
    JobNotesInstruction notes;                 // what the banner page says
    std::optional<WatermarkInstruction> mark;  // one that can be drawn
    Size faxCover;                             // of the page that is the cover sheet; without one it is empty

    /// Whether the finisher does to the sheet what it does to the set.
    [[nodiscard]] bool isFinished(const Sheet& sheet) const;
    /// Larger than others of the job; where all are of one size, each is.
    [[nodiscard]] bool isHalfSheet(const Sheet& sheet) const;
};

/// What becomes of a document on a printer, as the driver makes it; the plan is that of the instructions for so many
/// pages.
JobSheets sheetsOfJob(const JobInstructions& instructions, SheetPlan plan,
                      std::shared_ptr<const std::vector<Size>> pages, PMPrinter printer);

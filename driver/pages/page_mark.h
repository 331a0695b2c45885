// The watermark of a job's pages.
#pragma once

#include "driver/instructions/job_instructions.h"
#include "driver/pages/stored_mark.h"

/// A drawing for each page. One behind a page that hides what is behind it comes in front.
struct PageMark {
    StoredMark mark;
    bool isOnFirstPageOnly = false;
    bool isBehind = false;
};

/// The watermark that was asked for, if it can be drawn; nothing with the reason.
std::optional<PageMark> readPageMark(const WatermarkInstruction& watermark, std::string* reason);
/// The same of one that came with the job's settings (stored_mark.h).
std::optional<PageMark> readPageMark(const WatermarkInstruction& watermark, CFDictionaryRef travelled,
                                     std::string* reason);

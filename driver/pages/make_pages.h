// The pages that the printer gets: a PDF of a page for each side of each sheet.
#pragma once

#include "driver/pages/sheet_geometry.h"
#include "driver/pages/stored_mark.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

/// A drawing for each page: its watermark. One behind a page that hides what is behind it comes in front.
struct PageMark {
    StoredMark mark;
    bool isOnFirstPageOnly = false;
    bool isBehind = false;
};

struct PagesOrder {
    std::string document;             // the file of the PDF
    const SheetPlan* plan = nullptr;  // of the document's pages
    PageLayout layout;
    std::vector<PaperShape> papers;  // of the plan's papers
    std::string faxCover;            // a PDF of one page; empty for a job without one
    std::optional<PageMark> mark;
};

/// Told how far it is, from 0 to 100; false ends the work.
using PagesProgress = std::function<bool(int percent)>;

/// Writes the pages to a file, which is made or replaced, in the order of the plan: the sides that it sends. False,
/// with the reason, when the document cannot be read or the file cannot be written, or when the work was ended.
bool makePages(const PagesOrder& order, const std::string& output, const PagesProgress& progress, std::string* reason);

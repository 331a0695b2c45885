// The pages that the printer gets: a PDF of a page for each side of each sheet.
#pragma once

#include "driver/pages/page_mark.h"
#include "driver/pages/sheet_geometry.h"
#include "platform/files/byte_sink.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

struct PagesOrder {
    std::string document;             // the file of the PDF
    std::string password;             // of it; empty for none
    const SheetPlan* plan = nullptr;  // of the document's pages
    PageLayout layout;
    std::vector<PaperShape> papers;  // of the plan's papers
    std::string faxCover;            // a PDF of one page; empty for a job without one
    std::optional<PageMark> mark;
};

/// Told how far it is, from 0 to 100; false ends the work.
using PagesProgress = std::function<bool(int percent)>;

/// Writes the pages as a PDF, in the order of the plan: the sides that it sends. False, with the reason, when the
/// document cannot be read or the work was ended; without one when `output` took no more.
bool makePages(const PagesOrder& order, ByteSink& output, const PagesProgress& progress, std::string* reason);

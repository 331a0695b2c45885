#include "host/job/job_mark.h"

#include "host/job/mark_program.h"
#include "host/script/text.h"
#include "host/settings/page_range.h"
#include "host/settings/panel_items.h"
#include "host/settings/ticket_items.h"
#include "platform/printing/CGPDFDocument.h"
#include "platform/printing/PMPrinter.h"

#include <algorithm>
#include <charconv>

namespace {

// The watermark panel's items.
constexpr SInt32 kBehind = 1;

constexpr SInt32 kLandscape = 2;
constexpr SInt32 kReverseLandscape = 3;

/// Whether the chosen paper is wider than tall, as some envelopes are.
bool hasLandscapePaper(PMTicketRef pageFormat) {
    CFArrayRef sides = nullptr;  // top, left, bottom, right
    if (PMTicketGetCFArray(pageFormat, kPMTopLevel, kPMTopLevel, kPMUnadjustedPaperRectKey, &sides) != noErr) {
        return false;
    }
    const auto side = [sides](CFIndex index) {
        double value = 0;
        if (index < CFArrayGetCount(sides)) {
            const void* const number = CFArrayGetValueAtIndex(sides, index);
            if (CFGetTypeID(number) == CFNumberGetTypeID()) {
                CFNumberGetValue(static_cast<CFNumberRef>(number), kCFNumberDoubleType, &value);
            }
        }
        return value;
    };
    return side(3) - side(1) > side(2) - side(0);
}

/// Which way the page is turned on its sheet. Turned jobs turn every page; in others the filters turn what lies
/// across the paper.
PageMark markOf(bool isLandscapePage, SInt32 orientation, bool isLandscapePaper) {
    switch (orientation) {
        case kLandscape:
            return PageMark::turned90;
        case kReverseLandscape:
            return PageMark::turned270;
        default:
            return isLandscapePage == isLandscapePaper ? PageMark::upright : PageMark::turned90;
    }
}

/// The chosen pages of the document, counted from 0. The range is as readPageRange writes it.
std::vector<std::size_t> chosenPages(const std::string& range, std::size_t count) {
    std::vector<std::size_t> pages;
    const char* at = range.data();
    const char* const end = at + range.size();
    const auto readNumber = [&] {
        std::size_t number = 0;
        at = std::from_chars(at, end, number).ptr;
        return number;
    };
    while (at < end) {
        const std::size_t first = readNumber();
        std::size_t last = first;
        if (at < end && *at == '-') {
            ++at;
            last = readNumber();
        }
        for (std::size_t page = std::max<std::size_t>(first, 1); page <= std::min(last, count); ++page) {
            pages.push_back(page - 1);
        }
        ++at;  // the comma
    }
    return pages;
}

MarkPlacement placementIn(const Document& document, const PrintSession& session, bool hasCoverSheet) {
    const auto landscape = CFRef<CFDataRef>::adopt(CGPDFDocumentCopyLandscapePages(document.url.get()));
    const auto count = static_cast<std::size_t>(document.pageCount);
    const auto isLandscape = [&](std::size_t page) {
        return page < static_cast<std::size_t>(CFDataGetLength(landscape.get())) &&
               CFDataGetBytePtr(landscape.get())[page] != 0;
    };
    const std::string range = session.pageRange();
    PageRange pages = readPageRange(range, document.pageCount);
    if (pages.fault != PageRangeFault::none) {
        pages = readPageRange("1-", document.pageCount);
    }

    MarkPlacement placement{numberItem(session.printSettings(), kWatermarkOptionItem, 0) != kBehind, {}};
    const bool isLandscapePaper = hasLandscapePaper(session.pageFormat());
    for (const std::size_t page : chosenPages(pages.pages, count)) {
        placement.pages.push_back(markOf(isLandscape(page), session.orientation(), isLandscapePaper));
    }
    if (numberItem(session.printSettings(), kWatermarkFirstPageOnlyItem, 0) != 0 && !placement.pages.empty()) {
        std::fill(placement.pages.begin() + 1, placement.pages.end(), PageMark::none);
    }
    if (hasCoverSheet) {
        placement.pages.insert(placement.pages.begin(), PageMark::none);
    }
    return placement;
}

/// Whether `/NAME` is one name for an interpreter.
bool isName(const std::string& text) {
    return !text.empty() && std::ranges::all_of(text, [](char c) {
        return c > ' ' && c <= '~' && std::string_view("()<>[]{}/%").find(c) == std::string_view::npos;
    });
}

std::optional<std::string> programOf(const StoredMark& mark, const MarkPlacement& placement, std::string* reason) {
    if (mark.text.empty()) {
        const auto picture = Picture::read(mark.filePath, PictureInk::colors, reason);
        if (!picture) {
            *reason = mark.filePath + ": " + *reason;
            return std::nullopt;
        }
        return pictureMarkProgram(mark, picture->lightened(mark.density / 100), placement);
    }
    const auto font = readStoredFont(kWatermarkStore, mark.fontName, reason);
    if (!font) {
        return std::nullopt;
    }
    if (!isName(mark.fontName) || !font->starts_with("%!PS-TrueTypeFont") || !font->ends_with('\n')) {
        *reason = "its font " + mark.fontName + " is damaged";
        return std::nullopt;
    }
    return textMarkProgram(mark, *font, placement);
}

}  // namespace

JobMark makeJobMark(const Document& document, const PrintSession& session, bool hasCoverSheet) {
    const std::string name = stringItem(session.printSettings(), kWatermarkItem);
    if (name.empty()) {
        return {};
    }
    std::string reason;
    const auto mark = readStoredMark(kWatermarkStore, name, &reason);
    const auto program = mark ? programOf(*mark, placementIn(document, session, hasCoverSheet), &reason) : std::nullopt;
    if (!program) {
        return {{}, name + ": " + reason};
    }
    return {CFRef<CFDataRef>::adopt(CFDataCreate(nullptr, reinterpret_cast<const UInt8*>(program->data()),
                                                 static_cast<CFIndex>(program->size()))),
            std::nullopt};
}

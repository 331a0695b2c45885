// Page lists as users type them: "1, 3-5, 9-".
#pragma once

#include "platform/foundation/CFBase.h"

#include <vector>

struct PageRange {
    SInt32 first;
    SInt32 count;

    bool operator==(const PageRange&) const = default;
};

/// The highest page number that a list may name, and the end of an open range.
inline constexpr SInt32 kPageNumberLimit = 9999999;

/// What is wrong with a page list; the special pages panel has a notice for each.
enum PageRangeError : OSStatus {
    kPageRangeErrTooLarge = 1000,    // a number above the limit
    kPageRangeErrSyntax = 1001,      // no pages at all, or a dash too many
    kPageRangeErrOrder = 1002,       // a range that ends before it starts; it is written to standard error too
    kPageRangeErrPageNumber = 1003,  // page 0 where there is none; for callers, the parser allows it
    kPageRangeErrConflict = 1234,    // kept for its notice
};

/// The page ranges of a text in its order, without sorting or joining; or, unless `asRanges` is set, each of their
/// pages as a range of one, 8 bytes a page.
///
/// Items are parted by commas: "3" is a page, "3-5" a range, "-5" starts at page 1, "7-" ends at the limit. Numbers are
/// ASCII digits; a decimal digit of another script that follows them belongs to the number and does not count. Every
/// other character is passed over and ends a number, so "5 6" are two pages and "3 -5" is one range. A range is
/// complete with its second number: "1-2-3" is "1-2" and "-3".
///
/// Returns 0, a PageRangeError, or paramErr when an argument is null; *ranges is replaced only when it is 0.
OSStatus CreatePageRangesBySeparatingString(CFStringRef text, Boolean asRanges, std::vector<PageRange>* ranges);

/// What is wrong with a text while it is being typed, page 0 included: the same codes, and nothing is written.
OSStatus CheckPageRanges(CFStringRef text);

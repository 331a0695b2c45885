// The pages that are to be printed, as a person writes them: "1-3, 7, 10-".
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

enum class PageRangeFault {
    none,
    syntax,          // not numbers, commas and dashes
    order,           // "7-3"
    beyondDocument,  // a page that the document does not have, page 0 included
};

struct PageRange {
    PageRangeFault fault;
    /// In ascending order, without overlaps and blanks: "1-3,7,10-12". Empty with a fault.
    std::string pages;
    /// How many they are.
    std::int64_t count = 0;
};

/// Reads a range of pages of a document, in UTF-8 and in the digits, commas and dashes of any script (see
/// CFNumberListCreatePlain: blanks part pages, too, and commas too many are passed over). An open end ("10-") means its
/// last page, an open start ("-3") its first one.
PageRange readPageRange(std::string_view written, std::int64_t pageCount);

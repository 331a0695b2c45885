// Which filters make what a printer reads: the way that the print server would go.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

inline constexpr const char* kPDFType = "application/pdf";
/// With pages that are ready for the paper.
inline constexpr const char* kPrintablePDFType = "application/vnd.cups-pdf";
inline constexpr const char* kPostScriptType = "application/postscript";
/// PostScript with the printer's own code, which no filter changes any more.
inline constexpr const char* kReadyType = "application/vnd.cups-postscript";

struct FilterRoute {
    std::vector<std::string> filters;  // programs in their order; none for a document that the printer reads as it is
    std::string finalContentType;      // of what goes to the printer
};

/// The cheapest way from a document of a type and a size in bytes to a printer whose PPD has these filter lines
/// ("application/vnd.cups-raster 0 rastertofoo", or with the type of the result behind the first one), through the
/// conversions that are installed. None, with the reason, when a filter is missing.
std::optional<FilterRoute> findRouteToPrinter(const std::string& contentType, std::uintmax_t size,
                                              const std::vector<std::string>& printerFilters, std::string* reason);

/// The same to a document of another type.
std::optional<FilterRoute> findRoute(const std::string& contentType, const std::string& wanted, std::string* reason);

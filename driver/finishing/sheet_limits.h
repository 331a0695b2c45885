// How many sheets a printer finishes at once, and the jobs that have more.
//
// The device profile of the plug-in says it: keywords of installable options may have "SheetLimits" and "SheetMinimums"
// among their properties, dictionaries of numbers by a main keyword of the PPD ("StapleLocation") or by one and the
// beginning of its options ("TRFoldOptions Booklet"). They are of paper as heavy as "LimitWeight" of the feature of
// paper types says (grams per square metre), whose "Weights" has what heavier types weigh.
#pragma once

#include "driver/plan/sheet_plan.h"
#include "platform/printing/PMTicket.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// Names the file of the device profile, which is read when limits are first asked for. Without it there are none.
void useDeviceProfile(const std::string& file);

struct SheetLimit {
    std::string mainKeyword;
    std::string options;  // how those begin that it is for; empty for all but "None"
    std::int64_t sheets;
};

struct SheetLimits {
    std::vector<SheetLimit> most;
    std::vector<SheetLimit> least;
    double weight = 0;                      // of the paper that they are for; 0 for any
    std::map<std::string, double> weights;  // of MediaTypes that are heavier
};

/// The limits of the printer that a printer info ticket describes, with what is installed.
SheetLimits sheetLimitsOf(PMTicketRef printerInfo);

/// The main keywords that a limit of some printer may be for: where nothing is chosen of them, the profile need not be
/// read.
inline constexpr std::array kLimitedMainKeywords{"StapleLocation", "TRFoldOptions", "TRStaple",
                                                 "TRFold",         "TRBind",        "TRBooklet"};

/// What the sheets of a set are too many, too heavy or too few for.
struct SheetExcess {
    enum class Kind : std::uint8_t { tooMany, tooThick, tooFew } kind;
    std::string mainKeyword;
    std::string option;
    std::int64_t limit;
    std::int64_t sheets;
    std::int64_t thickness;  // in sheets of the paper that the limit is for

    bool operator==(const SheetExcess&) const = default;
};

/// The options, main keywords with what is chosen, that the sheets of a plan do not keep to. Slip sheets lie between
/// sets.
std::vector<SheetExcess> findSheetExcesses(const SheetLimits& limits,
                                           const std::vector<std::pair<std::string, std::string>>& options,
                                           const SheetPlan& plan);

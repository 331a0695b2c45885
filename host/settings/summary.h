// What the settings ask for beside what the printer does by itself.
#pragma once

#include "driver/plan/sheet_plan.h"
#include "host/settings/print_session.h"
#include "platform/foundation/CFBundle.h"

#include <cstdint>
#include <string>
#include <vector>

/// A line in the user's words for each setting that is not the printer's default, nothing twice, in the order in which
/// people read them: pages, paper, finishing, the job, special pages, images; a single line that says so when there is
/// none. The last line tells how many sheets a document of so many pages becomes; it is missing when that is not known
/// (0 pages), and for a fax. No passcode, number or name of a recipient is ever in the lines. `texts` is the program's
/// own bundle. Quick enough to be asked for at each pause of the user.
std::vector<std::string> summarize(const PrintSession& session, std::int64_t pageCount, CFBundleRef texts);

/// "24 pages on 14 sheets", of a plan that has sheets.
std::string pagesOnSheets(const SheetPlan& plan, CFBundleRef texts);
/// The same, or another text of it, with the number of copies behind it when there are several.
std::string ofCopies(const std::string& sheets, int copies, CFBundleRef texts);

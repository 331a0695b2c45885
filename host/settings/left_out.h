// What was chosen, stands in the settings, and is not in the job: nobody shall wait for inserts that never come.
//
// The maker's own driver reads the items that the panels leave in the print settings ticket. This program sends the
// options of the PPD, and adds some of it itself: a watermark, a fax's cover sheet, and, for a queue, a time.
#pragma once

#include "host/settings/print_session.h"
#include "platform/foundation/CFBundle.h"

#include <string>
#include <vector>

/// The PPD's main keyword of folds.
#define kFoldKeyword CFSTR("TRFoldOptions")

/// Where a job goes.
enum class JobWay { queue, file };

/// Whether a booklet's fold must be left out: the pages are not put together, so the stack would be folded across them.
bool leavesOutFold(const PrintSession& session);

/// A sentence in the user's words for each thing that the job leaves out; none when all is in it. `texts` is the
/// program's own bundle.
std::vector<std::string> tellLeftOut(const PrintSession& session, JobWay way, CFBundleRef texts);

// A sheet of a job in words, for who does not see its picture.
#pragma once

#include "driver/worker/page_drawer.h"
#include "host/preview/job_sheets.h"
#include "host/settings/print_session.h"
#include "platform/foundation/CFBundle.h"

#include <string>

struct PictureNeed;

/// "Sheet 3 of 14, front: pages 5 and 6; Yellow, Letter (8.5 x 11 in)". Sheets that are none of the document's say what
/// they are. `texts` is the program's own bundle; the session has the printer's names of its papers.
std::string sheetWords(const JobSheets& job, std::size_t sheet, bool isSide2, const PrintSession& session,
                       CFBundleRef texts);

/// Why a page cannot be shown, in a sentence.
std::string faultWords(const PictureNeed& need, PageFault fault, CFBundleRef texts);

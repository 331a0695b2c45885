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

/// What stands on a job's banner page, one text each, below its title.
std::vector<std::string> bannerWords(const JobSheets& job, CFBundleRef texts);

/// What lies in the output tray: "24 pages on 14 sheets, 3 of them Yellow". Paper other than the job's is told by what
/// it has that the job's has not; a fax has pages only. Empty for a job without sheets.
std::string stackWords(const JobSheets& job, const PrintSession& session, CFBundleRef texts);

/// "of 14, back": what stands behind the number of the sheet.
std::string sideWords(const JobSheets& job, std::size_t sheet, bool isSide2, CFBundleRef texts);

/// Why a page cannot be shown, in a sentence.
std::string faultWords(const PictureNeed& need, PageFault fault, CFBundleRef texts);

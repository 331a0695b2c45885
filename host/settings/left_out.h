// What was chosen and is not in the job: nobody shall wait for inserts that never come.
#pragma once

#include "host/settings/print_session.h"
#include "platform/foundation/CFBundle.h"

#include <cstdint>
#include <string>
#include <vector>

/// Where a job goes: to the printer's queue, ready for the printer into a file, or as pages to read into a PDF file.
enum class JobWay { queue, file, pdf };

/// A sentence in the user's words for each wish that the sheets of a document of so many pages cannot fulfil, or the
/// printer cannot; none when all is in the job. Of a document that is not known (0 pages) only what the printer cannot.
/// `texts` is the program's own bundle.
std::vector<std::string> tellLeftOut(const PrintSession& session, std::int64_t pageCount, JobWay way,
                                     CFBundleRef texts);

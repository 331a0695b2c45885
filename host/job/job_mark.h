// The watermark of a job.
#pragma once

#include "host/job/document.h"
#include "host/settings/print_session.h"

struct JobMark {
    CFRef<CFDataRef> setup;            // PostScript for the job's setup; null for a job without a watermark
    std::optional<std::string> fault;  // in a line: why the chosen one cannot be drawn
};

/// The code that draws the watermark which the panel has left in the settings, as the user keeps it, on the document's
/// chosen pages. A cover sheet has no part in it.
JobMark makeJobMark(const Document& document, const PrintSession& session, bool hasCoverSheet);

// Sending the job.
#pragma once

#include "host/job/document.h"
#include "host/settings/left_out.h"
#include "host/settings/print_session.h"
#include "platform/foundation/CFBundle.h"

#include <string>
#include <vector>

/// What sendJob will not be able to do as the settings say, a sentence in the user's words each: a watermark that
/// cannot be drawn, and, in a queue, a print time that has passed. sendJob itself tells it on standard error, where
/// nobody looks who opened the dialog from a desktop. `texts` is the program's own bundle.
std::vector<std::string> tellJobFaults(const PrintSession& session, JobWay way, CFBundleRef texts);

/// What became of a job.
struct JobOutcome {
    std::string failure;  // why it was not sent or written, in a line that names the file or queue; else empty
    bool isPrinterChanged = false;  // the failure: the settings are to be looked at again, with the printer opened anew
    std::string obstacle;           // why it waits in its queue, in a line; else empty
};

/// Prints the document with the session's settings: to the printer's queue, whose name for the job ("QUEUE-123") then
/// stands on standard output in a line, or, when `jobOut` is not empty, as printer-ready PostScript to that file. The
/// job has its watermark, and its cover sheet in front if it is a fax that has one. A secure print job is held for its
/// passcode by the printer, or not sent; a delayed one by the queue, until its time. `texts` is the program's own
/// bundle. Blocks until it is done.
JobOutcome sendJob(const Document& document, const Printer& printer, const PrintSession& session,
                   const std::string& jobOut, CFBundleRef texts);

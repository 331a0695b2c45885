// Sending the job.
#pragma once

#include "host/document.h"
#include "host/print_session.h"
#include "platform/foundation/CFBundle.h"

/// Prints the document with the session's settings: to the printer's queue, whose name for the job ("QUEUE-123") then
/// stands on standard output in a line, or, when `jobOut` is not empty, as printer-ready PostScript to that file. The
/// job has its watermark, and its cover sheet in front if it is a fax that has one. A secure print job is held for its
/// passcode by the printer, or not sent; a delayed one by the queue, until its time. `texts` is the program's own
/// bundle. Blocks until it is done. Why it could not be done, in a line that names the file or queue.
std::optional<std::string> sendJob(const Document& document, const Printer& printer, const PrintSession& session,
                                   const std::string& jobOut, CFBundleRef texts);

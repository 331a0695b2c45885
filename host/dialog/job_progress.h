// The window that shows how far a job is.
#pragma once

#include "host/job/print_job.h"
#include "platform/foundation/CFBundle.h"

/// Runs a job in a thread of its own. Where that takes more than a moment, a window shows how far it is, with a button
/// that ends it; the rest of the dialog is drawn, but cannot be used. Closing the window, too, ends the job.
JobOutcome runWithProgress(JobWork* work, const Document& document, CFBundleRef bundle);

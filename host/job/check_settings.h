// What is wrong with settings, told without a window.
#pragma once

#include "host/job/job_setup.h"
#include "host/settings/print_session.h"
#include "platform/foundation/CFBundle.h"

/// Prints a line on standard output for each conflict between the settings. unusableInput when there are any, else
/// success, in both cases without a line of its own. Choices that the printer does not offer are told on standard
/// error. `texts` is the program's own bundle.
Failure checkSettings(const JobSetup& setup, CFBundleRef texts);

/// Tells on standard error what a job of so many pages will not be as its settings say: choices that the printer does
/// not offer, and those that cannot go together.
void warnOfSettings(const PrintSession& session, std::int64_t pageCount, CFBundleRef texts);

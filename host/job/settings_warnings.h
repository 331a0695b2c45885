// What a job will not be as its settings say, told without a window.
#pragma once

#include "host/settings/print_session.h"
#include "platform/foundation/CFBundle.h"

#include <cstdint>

/// Tells on standard error, a line each, which choices of the settings the printer does not offer.
void warnOfChoicesNotOffered(const PrintSession& session);

/// The same, and which settings of a job of so many pages cannot go together. `texts` is the program's own bundle.
void warnOfSettings(const PrintSession& session, std::int64_t pageCount, CFBundleRef texts);

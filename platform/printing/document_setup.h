// PostScript of our own in the setup of a document that a filter has written.
#pragma once

#include "platform/foundation/CFBase.h"

#include <string>

/// Copies the document at the path to `output`, with `setup` at the end of its setup section: after everything that
/// chooses the page device, before the first page. False, with the reason, when it has no such place, or a file
/// cannot be read or written.
bool copyWithSetup(const std::string& document, CFDataRef setup, int output, std::string* reason);

// What a print dialog must know of a PDF document.
#pragma once

#include "platform/foundation/CFBase.h"

/// The number of pages of a PDF file. -1 when it cannot be read or is damaged, with the reason, in one line that
/// names the file, in *error (a new string; may be null).
CFIndex CGPDFDocumentCountPages(CFURLRef url, CFStringRef* error);

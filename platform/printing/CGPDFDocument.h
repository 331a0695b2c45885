// What a print dialog must know of a PDF document.
#pragma once

#include "platform/foundation/CFCollections.h"

/// The number of pages of a PDF file. -1 when it cannot be read or is damaged, with the reason, in one line that
/// names the file, in *error (a new string; may be null).
CFIndex CGPDFDocumentCountPages(CFURLRef url, CFStringRef* error);

/// A byte a page, 1 for a page that is wider than tall as it is shown (turned pages are turned first), 0 for another; a
/// new object, null when the file cannot be read.
CFDataRef CGPDFDocumentCopyLandscapePages(CFURLRef url);

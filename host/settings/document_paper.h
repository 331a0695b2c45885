// The paper that a document is made for.
#pragma once

#include "host/settings/print_session.h"

/// The session is for a document whose first page has that size. Where neither its settings nor a queue say which paper
/// there is, the paper becomes the document's own, if the printer has it.
void followDocument(PrintSession* session, const Size& firstPage);

/// The paper that the session's job is on, in points; the usual one where the printer says nothing.
Size paperOf(const PrintSession& session);

/// Whether a page lies on some paper of the printer, upright or on its side, without being shrunk.
bool hasPaperFor(const PrintSession& session, const Size& page);

// The window that asks for the password of a document.
#pragma once

#include "host/job/document.h"
#include "platform/foundation/CFBundle.h"

/// Asks until the document opens or its reason is another one, three times at most. False when the user gave up. The
/// password is kept with the document only.
bool askDocumentPassword(CFBundleRef bundle, OpeningDocument* document);

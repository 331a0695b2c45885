// What the plug-in learns of the session's printer, for all panels: the feature database, the options of the PPD, the
// installed options.
#pragma once

#include "platform/printing/PMSession.h"

/// Fills the process-wide stores from the session's printer. kPMInvalidPDEContext, with a line on standard error, when
/// the session has no usable printer or it is another maker's; the stores may then be half filled.
OSStatus LoadPrinterFeatures(PMPrintSession session);

/// Empties the stores.
void UnloadPrinterFeatures();

// What the plug-in learns of the session's printer, for all panels: the feature database, the options of the PPD, the
// installed options.
#pragma once

#include "platform/foundation/CFBase.h"
#include "platform/printing/PMSession.h"

/// Fills the process-wide stores from the session's printer. kPMInvalidPDEContext, with a line on standard error, when
/// the session has no usable printer or it is another maker's; the stores may then be half filled.
OSStatus LoadPrinterFeatures(PMPrintSession session);

/// Empties the stores.
void UnloadPrinterFeatures();

/// Whether the printer's model has a feature of the database, such as a window of the plug-in that only some models
/// have. The two office models, and one that the database does not know, have none.
bool HasModelFeature(CFStringRef feature);

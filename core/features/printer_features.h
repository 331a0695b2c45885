// What the plug-in learns of the session's printer, for all panels: the feature database, the options of the PPD, the
// installed options.
#pragma once

#include "platform/printing/CompiledPPD.h"
#include "platform/printing/PMSession.h"

#include <string>

/// Fills the process-wide stores from the session's printer. kPMInvalidPDEContext, with a line on standard error, when
/// the session has no usable printer or it is another maker's; the stores may then be half filled.
OSStatus LoadPrinterFeatures(PMPrintSession session);

/// The model's name in a PPD, without the maker's: "ZR840".
std::string ModelOfPrinter(PPDContext context);

/// Empties the stores.
void UnloadPrinterFeatures();

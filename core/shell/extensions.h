// The other extensions of the bundle: panels of their own, which the print dialog puts beside the shell.
#pragma once

#include "core/features/panel_interface.h"
#include "platform/foundation/CFCollections.h"

/// Makes an array of the names of the getters by which the dialog loads the extensions that the printer has, in their
/// order; the caller releases it. The device profile lists them as the "Extensions" of a model. Empty while the shell
/// is not initialized: no printer is known then.
TAVRO_PLUGIN_EXPORT CFArrayRef TavroPDECopyExtensionGetters();

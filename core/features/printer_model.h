// The model of the session's printer, and what the plug-in has for it.
//
// The two office models are in code, so that nothing is read for them. Any other one is looked for in the device
// feature database, and then in a file of its own, "models/NAME.plist" in the product's data folders, of the database's
// form.
#pragma once

#include "core/features/installable_options.h"
#include "platform/foundation/CFBase.h"

#include <string>

/// Finds the model by its name without the maker's, and answers the table of its installed features, which is valid
/// until the model is unloaded. A model that nobody knows gets the office models' table, as the nearest.
const InstalledFeature* LoadPrinterModel(const std::string& name);
void UnloadPrinterModel();

/// The name of a model that nobody knows, lent; null for one that is known.
CFStringRef UnknownModelName();

/// Whether the model has a feature of the database, such as a window of the plug-in that only some models have. The two
/// office models, and one that nobody knows, have none.
bool HasModelFeature(CFStringRef feature);

/// What the database lists of the model under the key, such as the getters of its "Panels"; lent. Null for nothing, so
/// always for the office models and one that nobody knows.
CFArrayRef ListOfModel(CFStringRef key);

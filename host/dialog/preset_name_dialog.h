// The dialog that asks for the name of a preset.
#pragma once

#include "host/settings/presets.h"
#include "platform/foundation/CFBundle.h"

enum class PresetNaming { save, rename };

/// Asks for a name, beginning with `name`, until it may be used: it is not empty, and when there is a preset of that
/// name already, the user wants it replaced. Nothing when the user gives up. `bundle` has the window and its texts.
std::optional<std::string> askPresetName(CFBundleRef bundle, PresetNaming naming, const std::string& name,
                                         const KeptSettings& presets);

// The dialog that asks for the name of a preset.
#pragma once

#include "host/settings/presets.h"
#include "host/settings/printer.h"
#include "platform/foundation/CFBundle.h"

struct PresetAnswer {
    std::string name;
    bool isForAll = false;  // other programs shall have it too
};

/// Asks under which name to save a preset for the printer, beginning with `name`, until it may be used: it is not
/// empty, and when there is a preset of that name already, the user wants it replaced. Nothing when the user gives up.
/// `bundle` has the window and its texts.
std::optional<PresetAnswer> askPresetToSave(CFBundleRef bundle, const std::string& name, const KeptSettings& presets,
                                            const Printer& printer);
/// Asks for another name of a preset in the same way.
std::optional<std::string> askPresetName(CFBundleRef bundle, const std::string& name, const KeptSettings& presets);

// Where the settings that a dialog starts from come from.
#pragma once

#include <string>

struct SettingsOrigin {
    enum class Kind {
        printerDefaults,
        lastUsed,
        preset,
        elsewhere,  // a settings file, another printer, or a preset that is gone
    } kind = Kind::printerDefaults;
    std::string name;  // of the preset, file or printer; empty when there is none

    bool operator==(const SettingsOrigin&) const = default;
};

// Where the dialog shows a setting: its panel and the controls that change it.
#pragma once

#include "platform/foundation/CFBase.h"
#include "platform/foundation/four_char_code.h"

#include <span>
#include <string_view>
#include <vector>

struct SettingPlace {
    std::string_view mainKeyword;
    std::string_view options;  // how the options begin that this place is for; empty for all
    const char* panel;         // of the maker's: key of its title; null for the dialog's left side
    OSType signature;
    SInt32 number;
};

/// All of them; of one setting the place where people look first comes first.
std::span<const SettingPlace> settingPlaces();

/// Those of an option. One that has places of its own has none of those that are for all.
std::vector<SettingPlace> placesOfOption(std::string_view mainKeyword, std::string_view option);

/// The first place of a main keyword, whatever its option is; null for one that the dialog does not show.
const SettingPlace* placeOfSetting(std::string_view mainKeyword);

/// Whether the control is there to change the setting.
bool isChangedBy(std::string_view mainKeyword, OSType signature, SInt32 number);

// What to change so that settings can go together, in the words of buttons and notices.
#pragma once

#include "host/settings/conflicts.h"

#include <string>
#include <vector>

/// What one change is called: "Remove the Staples", "Change Output Tray to Automatic".
std::string nameOfChange(const SettingChange& change, CFBundleRef texts);
/// What all of them together are called; of one, its name. One at least.
std::string nameOfChanges(const std::vector<SettingChange>& changes, CFBundleRef texts);
/// Each change in a line of its own: "Staple: No Staples (Paper and Output)".
std::string listOfChanges(const std::vector<SettingChange>& changes, CFBundleRef texts);

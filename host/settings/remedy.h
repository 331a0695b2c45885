// Changes of settings that the maker's panels show too.
#pragma once

#include "host/settings/conflicts.h"

/// Makes the changes in the session's tickets, in such a way that the maker's panels take them over when they are told
/// to read the tickets: items of their own that say otherwise give way.
void applyRemedy(const std::vector<SettingChange>& changes, PrintSession* session);

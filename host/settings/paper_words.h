// What is known of a paper beyond its size, color and type, in words.
#pragma once

#include "host/settings/print_session.h"
#include "platform/foundation/CFBundle.h"

#include <string>
#include <vector>

/// Its name, or else the names of its color and type; its weight, and what the printer calls its other attributes. What
/// is as it is with `other` paper is left out.
std::vector<std::string> paperDetailWords(const Paper& paper, const Paper& other, const PrintSession& session,
                                          CFBundleRef texts);

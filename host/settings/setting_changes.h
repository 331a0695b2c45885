// What has become of the printer's options between two moments, in words.
#pragma once

#include "host/settings/print_session.h"
#include "platform/foundation/CFBundle.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Main keywords and their options, sorted.
using OptionsThen = std::vector<std::pair<std::string, std::string>>;
OptionsThen optionsNow(const PrintSession& session);

/// The options that the dialog shows and that are others than before, "“Staple” from “2 Staples” to “No Staples”", but
/// for those of main keywords that are the user's own doing; empty for none. `texts` is the program's own bundle.
std::string tellChanges(const PrintSession& session, CFBundleRef texts, const OptionsThen& before,
                        const std::function<bool(std::string_view mainKeyword)>& isOwn);

// Choices of the maker's panels in the user's words.
#pragma once

#include "host/settings/panel_choices.h"
#include "platform/foundation/CFBundle.h"

#include <string>

/// "4-9", "4".
std::string pagesOf(const PanelChoices::Exception& exception);

/// What the finisher does with each set ("1 staple, 2 holes"); empty for nothing. `texts` is the program's own bundle.
std::string finishingWords(const PanelChoices& choices, CFBundleRef texts);

// The places for values in the text of a message.
#pragma once

#include "platform/foundation/message.h"

/// The text with the values in place of "%1", "%2" and so on.
std::string fillMessage(std::string_view text, std::span<const MessageValue> values);

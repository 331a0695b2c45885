// The names of the user who is logged in.
#pragma once

#include "platform/foundation/CFString.h"

#include <string_view>

/// The user's full name, or the short one that is logged in with, as the account has it; the caller's. The short name
/// stands for a full name that the account lacks. Empty when there is no account.
CFStringRef CSCopyUserName(Boolean useShortName);

/// The full name in an account's entry: what stands before the first comma, since room and telephone numbers may
/// follow it, without the blanks around it.
std::string_view fullNameInAccount(std::string_view entry);

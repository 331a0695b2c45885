// What each action of a script does.
#pragma once

#include "host/script/stage.h"

namespace script {

/// Does what the action says, on the same road as a user's mouse and keys. Returns why it could not be done; the reason
/// holds no text of a password field. An action that opens a modal dialog returns when that is closed: the caller runs
/// the next lines from timers. Answer and File are the runner's own business and are
/// ignored here.
std::optional<std::string> perform(const Action& action, const Stage& stage);

/// The same for the forms of `expect`.
std::optional<std::string> check(const Expect& expect, const Stage& stage);
std::optional<std::string> check(const ExpectWindow& expect);
std::optional<std::string> check(const ExpectConflicts& expect, const Stage& stage);

}  // namespace script

// Who the user is to a print server that wants a password.
#pragma once

#include "platform/printing/login_desk.h"

#include <optional>

/// Asks the user: as the program does it (PMServerSetPasswordProc), else on the terminal. Nothing when there is nobody
/// to ask, or nothing is said. What was given stays known until the program ends, or a server refuses it, in memory
/// only; it is given again without asking.
std::optional<ServerLogin> askForLogin(const LoginQuestion& question);

/// What was given last; nothing when nobody was asked.
std::optional<ServerLogin> knownLogin();

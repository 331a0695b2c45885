// Ends a script that hangs.
#pragma once

#include <string>

namespace script {

/// Ends the process with the exit status, after one line on standard error, unless it is started anew or stopped within
/// `seconds`. It needs no event loop: a handler that never returns is what it is for. One at a time.
void startWatchdog(unsigned seconds, const std::string& line, int exitStatus);
/// For work that may take its time, such as making a long job.
void stopWatchdog();

}  // namespace script

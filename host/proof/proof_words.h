// A job that was read back, in words.
#pragma once

#include "host/proof/proof_report.h"

#include <string>
#include <vector>

/// A line for each command and instruction, for each sheet, and for what is done with the sets. What stands in them is
/// the job's and the PPD's, and not safe for a terminal.
std::vector<std::string> proofWords(const ProofReport& report, CFBundleRef texts);

// A job that was read back, in words.
#pragma once

#include "driver/proof/proof.h"
#include "host/settings/printer.h"
#include "platform/foundation/CFBundle.h"

#include <string>
#include <vector>

/// The lines of the proof: without characters that a terminal obeys.
std::vector<std::string> proofWords(const Proof& proof, const Printer& printer, CFBundleRef texts);

// The CUPS server that the user's settings name (CUPS_SERVER, client.conf). The only way to it.
//
// Every call may block, but never without a limit: for the connection, and for each answer that it waits for.
#pragma once

#include "platform/foundation/CFBase.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

using OptionList = std::vector<std::pair<std::string, std::string>>;

inline constexpr int kServerTimeoutMilliseconds = 3000;

/// The names of the server's queues, the user's default one first; empty when there is no answer in time.
std::vector<std::string> listQueues(int timeoutMilliseconds);

/// What a server knows of a queue.
struct QueueDescription {
    std::string ppdPath;  // a copy in a file of its own, which the caller removes
    OptionList defaults;  // the queue's and the user's own (lpoptions), by whatever name
};

/// Fetches a queue's description. kPMNoSuchPrinter, kPMServerNotResponding or kPMUnusableDescription (a queue without
/// PPD) with the reason in PMGetLastErrorText.
OSStatus fetchQueue(const std::string& queue, QueueDescription* description);

/// Sends a document of a content type; the server's number of the job, or none with the reason in *reason.
std::optional<int> sendToQueue(const std::string& queue, const std::string& document, const char* contentType,
                               const std::string& title, const OptionList& options, std::string* reason);

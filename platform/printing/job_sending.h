// Handing a job over to a queue.
#pragma once

#include "platform/printing/option_list.h"

#include <optional>

struct SentDocument {
    std::string file;
    const char* contentType;
    std::string title;  // of the job
    /// Packed (gzip). The server unpacks it, also for a device that is a file, which gets nothing of a job that goes
    /// through no filter at all.
    bool isPacked = false;
};

/// Sends a document; the server's number of the job, or none with the reason in *reason. The time for it grows with the
/// document (ServerPatience), and only while the server takes it. A job that has not all of its document is no job: the
/// server is told to forget it. Where the answer is lost, the server is asked whether it has the job; one that does not
/// say is a failure whose reason tells so.
std::optional<int> sendToQueue(const std::string& queue, const SentDocument& document, const OptionList& options,
                               std::string* reason);

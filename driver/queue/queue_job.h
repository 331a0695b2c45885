// A job of any program that comes with settings, made by the driver on the print server.
#pragma once

#include "platform/files/byte_sink.h"
#include "platform/printing/private_file.h"

#include <functional>
#include <string>

/// What the print server says of the job.
struct QueueJob {
    std::string number;
    std::string user;
    std::string title;
    int copies = 1;       // to kMostCopies
    std::string options;  // as filters get them
    std::string ppd;      // its file
};

/// Told how far it is, from 0 to 100.
using QueueJobProgress = std::function<void(int percent)>;

/// Writes what the printer reads of an open document, a PDF or PostScript. False, with the reason in a sentence, when
/// it cannot be printed as its settings say: it is then not printed at all, even if something was written. Without a
/// reason when `output` took no more.
bool writeQueueJob(const QueueJob& job, const PrivateFile& document, const QueueJobProgress& progress, ByteSink& output,
                   std::string* reason);

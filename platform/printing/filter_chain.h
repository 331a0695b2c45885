// Runs CUPS filters without a server: one process each, joined by pipes, no shell.
//
// Nothing that a filter makes reaches a file but through this program, which sees what can be written and what not: a
// filter may end well with half of its work lost.
#pragma once

#include "platform/files/byte_sink.h"
#include "platform/foundation/CFBase.h"

#include <span>
#include <string>

/// A file for filters to read: by its path, or an open one that has none.
struct FilterFile {
    std::string path;
    int descriptor = -1;
};

struct FilterJob {
    FilterFile ppd;       // none for filters that make a document for any printer
    std::string ppdName;  // for messages; empty for one that is no printer's
    std::string printerName;
    std::string contentType;       // of the job's document
    std::string finalContentType;  // what the last filter writes
    std::string user;
    std::string title;
    int copies = 1;
    std::string options;  // see filterOptionsText
    FilterFile document;  // what the first filter reads
};

/// Where the print server's programs are.
std::string serverPrograms();
/// A filter's program, by its name or its path.
std::string filterProgram(const std::string& filter);

/// Runs the filters until all have ended; the last one's output goes to `output`. kPMFilterFailed with the reason of
/// one that failed, preferably its own last error message; kPMCannotWriteOutput, without a reason when `output` took no
/// more. A signal that asks the program to end stops the filters (interruption.h).
OSStatus runFilters(std::span<const std::string> filters, const FilterJob& job, ByteSink& output, std::string* reason);

// Runs CUPS filters without a server: one process each, joined by pipes, no shell.
#pragma once

#include <span>
#include <string>

struct FilterStep {
    const char* program;      // its name among the server's filters
    const char* contentType;  // of what it reads
};

struct FilterJob {
    std::string ppdPath;
    std::string printerName;
    std::string finalContentType;  // what the last filter writes
    std::string user;
    std::string title;
    int copies;
    std::string options;   // see filterOptionsText
    std::string document;  // the file that the first filter reads
};

/// Runs the filters until all have ended, the last one writing to `output`. False with the reason of the first that
/// failed, preferably its own last error message.
bool runFilters(std::span<const FilterStep> steps, const FilterJob& job, int output, std::string* reason);

// A job's file in its parts: commands for the printer's controller, and what its interpreter gets.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

struct JobFile {
    std::vector<std::string> commands;                              // without "@PJL "
    std::vector<std::pair<std::string, std::string>> instructions;  // names to values
    std::string postScript;
};

/// Takes a job apart. Commands stand in front of PostScript and wherever the interpreter is left for them. Nothing when
/// there is no PostScript in it.
std::optional<JobFile> takeApart(const std::string& job);

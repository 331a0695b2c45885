#include "driver/proof/job_file.h"

#include "driver/job/job_header.h"

#include <string_view>

namespace {

// Ends whatever the printer is doing, so that it reads commands.
constexpr std::string_view kExit = "\x1b%-12345X";
constexpr std::string_view kCommand = "@PJL";
constexpr std::string_view kEnter = "ENTER LANGUAGE";

std::string_view withoutBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r");
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

void addCommand(std::string_view command, JobFile* job) {
    if (const auto instruction = readInstruction(command)) {
        job->instructions.push_back(*instruction);
    } else if (!command.empty()) {
        job->commands.emplace_back(command);
    }
}

}  // namespace

std::optional<JobFile> takeApart(const std::string& text) {
    JobFile job;
    const std::string_view all = text;
    bool isCommanding = true;
    for (std::size_t at = 0; at < all.size();) {
        std::size_t end = all.find('\n', at);
        end = end == std::string_view::npos ? all.size() : end + 1;
        std::string_view line = all.substr(at, end - at);
        at = end;
        if (line.starts_with(kExit)) {
            isCommanding = true;
            line.remove_prefix(kExit.size());
        }
        if (!isCommanding) {
            job.postScript += line;
            continue;
        }
        line = withoutBlanks(line.substr(0, line.find('\n')));
        if (line.starts_with(kCommand)) {
            line = withoutBlanks(line.substr(kCommand.size()));
            isCommanding = !line.starts_with(kEnter);
            addCommand(line, &job);
        } else if (line.starts_with("%!")) {  // a printer that knows the language by its first line
            isCommanding = false;
            job.postScript += std::string(line) + "\n";
        }
    }
    return job.postScript.empty() ? std::nullopt : std::optional(std::move(job));
}

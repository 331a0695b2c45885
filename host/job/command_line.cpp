#include "host/job/command_line.h"

#include "host/settings/texts.h"
#include "platform/foundation/message.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <array>
#include <charconv>

#include <unistd.h>

namespace {

enum class Group { printer, settings, job, script, program };

struct GroupRow {
    Group group;
    const char* title;
};
constexpr std::array kGroups{
    // group, heading in the help
    GroupRow{Group::printer, "The printer"},  GroupRow{Group::settings, "Settings"},
    GroupRow{Group::job, "The job"},          GroupRow{Group::script, "Without a person"},
    GroupRow{Group::program, "This program"},
};

/// Where an option's argument goes.
using Target = std::variant<std::string CommandLine::*, std::vector<std::string> CommandLine::*, bool CommandLine::*>;

struct OptionRow {
    const char* name;
    const char* argument;  // its kind, which shell completions go by: FILE.ppd, DIR, QUEUE...
    Group group;
    Target target;
    const char* help;
};
constexpr std::array kOptions{
    // name, argument, group, target, help
    OptionRow{"--ppd", "FILE.ppd", Group::printer, &CommandLine::ppd, "a PPD file; no CUPS server is needed"},
    OptionRow{"--printer", "QUEUE", Group::printer, &CommandLine::printer,
              "a CUPS queue, or QUEUE/INSTANCE; its PPD and defaults come from the server"},
    OptionRow{"--installed", "OPTION=VALUE", Group::printer, &CommandLine::installed,
              "an installed option, such as Option2=HCSS; may be repeated"},
    OptionRow{"--ticket-in", "FILE.plist", Group::settings, &CommandLine::ticketIn, "start from these settings"},
    OptionRow{"--preset", "NAME", Group::settings, &CommandLine::preset, "start from the preset of that name"},
    OptionRow{"--ticket-out", "FILE.plist", Group::settings, &CommandLine::ticketOut,
              "write the settings when the dialog ends with Print"},
    OptionRow{"--job-out", "FILE", Group::job, &CommandLine::jobOut,
              "write the printer-ready job there instead of sending it"},
    OptionRow{"--pdf-out", "FILE.pdf", Group::job, &CommandLine::pdfOut,
              "write the pages as they will be printed there, as a PDF, instead of sending them"},
    OptionRow{"--current-page", "PAGE", Group::job, &CommandLine::currentPage,
              "the page that the user looks at, which the dialog then offers to print"},
    OptionRow{"--portal", "DIR", Group::program, &CommandLine::portal,
              "answer the request of the desktop's portal in that folder, as tavro-portal does"},
    OptionRow{"--check", nullptr, Group::script, &CommandLine::check,
              "print which settings cannot go together, a line each, then leave"},
    OptionRow{"--proof", "FILE", Group::script, &CommandLine::proof,
              "print what a job's file puts on each sheet, a line each, then leave"},
    OptionRow{"--print", nullptr, Group::script, &CommandLine::print,
              "print at once what the settings say, without a window"},
    OptionRow{"--script", "FILE.tavro-script", Group::script, &CommandLine::script, "drive the dialog from a file"},
    OptionRow{"--shots", "DIR", Group::script, &CommandLine::shots,
              "where the script's pictures go; else the current folder"},
    OptionRow{"--list-printers", nullptr, Group::script, &CommandLine::listPrinters,
              "print the names of the print server's queues, the default one first, then leave"},
    OptionRow{"--list-presets", nullptr, Group::script, &CommandLine::listPresets,
              "print the names of your presets, then leave"},
    OptionRow{"--list-controls", nullptr, Group::script, &CommandLine::listControls,
              "print every panel's controls and menus, then leave"},
    OptionRow{"--format", "text|json", Group::script, &CommandLine::format,
              "how --check, --proof and the lists are printed: as lines, or as one JSON document"},
    OptionRow{"--help", nullptr, Group::program, &CommandLine::help, "print this, then leave"},
    OptionRow{"--version", nullptr, Group::program, &CommandLine::version, "print the version, then leave"},
};

constexpr const char* kUsage = "Usage: tavro-print [options] DOCUMENT...";
constexpr std::size_t kHelpColumn = 30;

struct ExitStatusRow {
    ExitStatus status;
    const char* help;
};
constexpr std::array kExitStatuses{
    // status, help
    ExitStatusRow{ExitStatus::success, "printed, or told what was asked for"},
    ExitStatusRow{ExitStatus::cancelled, "cancelled"},
    ExitStatusRow{ExitStatus::usage, "the command line cannot be understood"},
    ExitStatusRow{ExitStatus::scriptFailed, "a script's line failed"},
    ExitStatusRow{ExitStatus::unusableInput,
                  "unusable input: document, PPD, settings, or the queue; with --check also a conflict"},
    ExitStatusRow{ExitStatus::notSent, "the job, or what was asked for, could not be sent or written"},
};

Failure usage(const std::string& reason) {
    return {ExitStatus::usage, messageText("%1 (tavro-print --help explains the options)", {reason})};
}

/// Reads the arguments one after the other into a command line.
class Reader {
public:
    explicit Reader(const std::vector<std::string>& arguments) : arguments_(arguments) {}

    std::optional<Failure> read(CommandLine* line) {
        bool optionsEnded = false;
        while (next_ < arguments_.size()) {
            const std::string& argument = arguments_[next_++];
            if (!optionsEnded && argument == "--") {
                optionsEnded = true;
            } else if (!optionsEnded && argument.size() > 1 && argument.front() == '-') {
                if (auto failure = readOption(argument, line)) {
                    return failure;
                }
            } else if (argument.empty()) {
                return usage(messageText("the document's name is empty"));
            } else {
                line->documents.push_back(argument);
            }
        }
        return std::nullopt;
    }

private:
    std::optional<Failure> readOption(const std::string& argument, CommandLine* line) {
        const std::size_t equals = argument.find('=');
        const std::string name = argument.substr(0, equals);
        const auto row = std::ranges::find_if(kOptions, [&](const OptionRow& option) { return name == option.name; });
        if (row == kOptions.end()) {
            return usage(name + ": " + messageText("there is no such option"));
        }
        if (const auto* flag = std::get_if<bool CommandLine::*>(&row->target)) {
            if (equals != std::string::npos) {
                return usage(name + ": " + messageText("takes no argument"));
            }
            line->** flag = true;
            return std::nullopt;
        }
        if (equals == std::string::npos && next_ == arguments_.size()) {
            return usage(name + ": " + messageText("%1 is missing", {row->argument}));
        }
        const std::string value = equals == std::string::npos ? arguments_[next_++] : argument.substr(equals + 1);
        if (value.empty()) {
            return usage(name + ": " + messageText("%1 is empty", {row->argument}));
        }
        if (const auto* list = std::get_if<std::vector<std::string> CommandLine::*>(&row->target)) {
            (line->**list).push_back(value);
            return std::nullopt;
        }
        std::string& text = line->*std::get<std::string CommandLine::*>(row->target);
        if (!text.empty()) {
            return usage(name + ": " + messageText("is given twice"));
        }
        text = value;
        return std::nullopt;
    }

    const std::vector<std::string>& arguments_;
    std::size_t next_ = 0;
};

/// What the options mean together.
std::optional<Failure> checkTogether(const CommandLine& line) {
    if (!line.ppd.empty() && !line.printer.empty()) {
        return usage(messageText("--ppd and --printer name two printers"));
    }
    if (!line.ticketIn.empty() && !line.preset.empty()) {
        return usage(messageText("--ticket-in and --preset are two settings to start from"));
    }
    if (!line.jobOut.empty() && !line.pdfOut.empty()) {
        return usage(messageText("--job-out and --pdf-out are two files for one job"));
    }
    if (!line.currentPage.empty() && pageNumber(line.currentPage) == 0) {
        return usage("--current-page " + line.currentPage + ": " + messageText("is not the number of a page"));
    }
    if (!line.currentPage.empty() && (line.documents.size() > 1 || line.print || line.check)) {
        return usage(messageText("--current-page is an offer of the dialog, for one document"));
    }
    if (!line.portal.empty() && (line.check || line.print || line.listControls || !line.documents.empty() ||
                                 !line.printer.empty() || !line.ticketIn.empty() || !line.preset.empty() ||
                                 !line.jobOut.empty() || !line.pdfOut.empty() || !line.proof.empty())) {
        return usage(messageText("--portal takes everything from the request but --script and --shots"));
    }
    if (!line.script.empty() && line.listControls) {
        return usage(messageText("--script and --list-controls do not go together"));
    }
    if (line.check && (line.print || line.isScripted())) {
        return usage(
            messageText("--check does nothing else, so --print, --script and --list-controls do not go with it"));
    }
    if (line.print && line.isScripted()) {
        return usage(messageText("--print opens no window, so --script and --list-controls do not go with it"));
    }
    if (!line.proof.empty() && (line.check || line.print || line.isScripted() || !line.documents.empty())) {
        return usage(messageText(
            "--proof reads a job that was made, so a document, --check, --print, --script and --list-controls "
            "do not go with it"));
    }
    if (line.isListing() && (line.listPrinters == line.listPresets || line.check || line.print || line.isScripted() ||
                             !line.proof.empty() || !line.portal.empty() || !line.documents.empty())) {
        return usage(messageText(
            "--list-printers and --list-presets do nothing else, so a document or another action does not go "
            "with either"));
    }
    if (!line.format.empty() && line.format != "text" && line.format != "json") {
        return usage("--format " + line.format + ": " + messageText("is neither text nor json"));
    }
    if (!line.format.empty() && !line.isTelling()) {
        return usage(messageText("--format is for what is told by --check, --proof or a list"));
    }
    for (const std::string& option : line.installed) {
        const std::size_t equals = option.find('=');
        if (equals == 0 || equals == std::string::npos || equals + 1 == option.size()) {
            return usage("--installed " + option + ": " + messageText("is not of the form OPTION=VALUE"));
        }
    }
    if (line.documents.size() > 1 && (!line.jobOut.empty() || !line.pdfOut.empty())) {
        return usage(
            messageText("--job-out and --pdf-out name the file of one job, and each of the %1 documents becomes one",
                        {line.documents.size()}));
    }
    if (line.documents.size() > 1 && (line.check || line.listControls)) {
        return usage(messageText("--check and --list-controls look at one document only"));
    }
    if (std::ranges::count(line.documents, "-") > 1) {
        return usage("-: " + messageText("standard input is one document only"));
    }
    if (std::ranges::count(line.documents, "-") == 1 && isatty(STDIN_FILENO) != 0) {
        return usage(
            "-: " +
            messageText("is standard input, and it is a terminal; a document comes there from a file or a program"));
    }
    if (line.documents.empty() && !line.isTelling() && line.portal.empty()) {
        return usage(messageText("the document is missing"));
    }
    return std::nullopt;
}

}  // namespace

int pageNumber(const std::string& text) {
    int page = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), page);
    return error == std::errc() && end == text.data() + text.size() && page > 0 ? page : 0;
}

Result<CommandLine> readCommandLine(const std::vector<std::string>& arguments) {
    CommandLine line;
    if (auto failure = Reader(arguments).read(&line)) {
        return *failure;
    }
    if (line.help || line.version) {
        return line;
    }
    if (auto failure = checkTogether(line)) {
        return *failure;
    }
    return line;
}

std::string helpText(CFBundleRef texts) {
    // The English texts are the keys of the others.
    const auto shown = [texts](const char* english) {
        return utf8Text(CFRef<CFStringRef>::adopt(CFBundleCopyLocalizedString(texts, CFStringMakeConstant(english),
                                                                              nullptr, CFSTR("Localizable")))
                            .get());
    };
    std::string text = shown(kUsage) + "\n";
    for (const GroupRow& group : kGroups) {
        text += "\n" + shown(group.title) + ":\n";
        for (const OptionRow& option : kOptions) {
            if (option.group != group.group) {
                continue;
            }
            std::string names = std::string("  ") + option.name;
            if (option.argument != nullptr) {
                names += std::string(" ") + option.argument;
            }
            names.resize(std::max(kHelpColumn, names.size() + 2), ' ');
            text += names + shown(option.help) + "\n";
        }
    }
    text += "\n" + shown("Notes") + ":\n" + utf8Text(localized(texts, CFSTR("Help Notes")).get());
    text += "\n" + shown("Exit status") + ":\n";
    for (const ExitStatusRow& row : kExitStatuses) {
        text += "  " + std::to_string(static_cast<int>(row.status)) + "   " + shown(row.help) + "\n";
    }
    return text;
}

std::string versionText() {
    return "tavro-print " TAVRO_VERSION "\n";
}

// Settings that become the user's own defaults of a queue.
#include "platform/printing/PMPrinter.h"
#include "platform/printing/job_options.h"
#include "platform/printing/last_error.h"
#include "platform/printing/lpoptions_text.h"
#include "platform/printing/pending_file.h"
#include "platform/printing/printer_record.h"
#include "platform/printing/text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;

/// What a landscape job is made of (job_options.cpp). A portrait one has none of them.
constexpr std::array kOrientationOptions{"orientation-requested", "pdfAutorotate", "print-scaling"};

const std::string* find(const OptionList& options, std::string_view name) {
    const auto found = std::ranges::find_if(options, [&](const auto& option) { return option.first == name; });
    return found == options.end() ? nullptr : &found->second;
}

void set(OptionList* options, const std::string& name, const std::string& value) {
    std::erase_if(*options, [&](const auto& option) { return option.first == name; });
    options->emplace_back(name, value);
}

/// Empty for a file that is missing; nothing for one that cannot be read.
std::optional<std::string> readText(const fs::path& path) {
    std::error_code ignored;
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return fs::exists(path, ignored) ? std::nullopt : std::optional(std::string());
    }
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

/// The options of a destination; of an instance with those of its queue below them.
OptionList effectiveOptions(const std::string& text, const std::string& destination) {
    OptionList options = optionsInText(text, destination.substr(0, destination.find('/')));
    if (destination.find('/') != std::string::npos) {
        for (const auto& [name, value] : optionsInText(text, destination)) {
            set(&options, name, value);
        }
    }
    return options;
}

/// What the queue's jobs have as long as the user's own line says nothing else.
OptionList defaultsBelow(const OpaquePMPrinter& printer, const std::string& userText) {
    OptionList options{{"copies", "1"}};
    for (const PPDOption& option : printer.ppd.options) {
        if (const auto marked = std::ranges::find(option.choices, true, &PPDChoice::marked);
            marked != option.choices.end()) {
            set(&options, option.keyword, marked->keyword);
        }
    }
    const char* const serverRoot = std::getenv("CUPS_SERVERROOT");
    const auto systemText = readText(fs::path(serverRoot == nullptr ? "/etc/cups" : serverRoot) / "lpoptions");
    for (const auto& [name, value] : effectiveOptions(systemText.value_or(std::string()), printer.queue)) {
        set(&options, name, value);
    }
    if (const std::size_t slash = printer.queue.find('/'); slash != std::string::npos) {
        for (const auto& [name, value] : optionsInText(userText, printer.queue.substr(0, slash))) {
            set(&options, name, value);
        }
    }
    return options;
}

/// Whether it may be kept for other jobs, and every program could ask for it.
bool isKept(const OpaquePMPrinter& printer, const std::string& name) {
    if (std::ranges::find(kOrientationOptions, name) != kOrientationOptions.end() || name == "copies") {
        return true;
    }
    const PPDOption* const option = printer.ppd.findOption(name);
    return option != nullptr && !option->installable && name != printer.ppd.passcodeKeyword;
}

/// The options of the destination's line once the job's are its defaults. Those that are not kept stay as they are.
OptionList mergedOptions(const OptionList& old, const OptionList& wanted, const OptionList& below,
                         const OpaquePMPrinter& printer) {
    OptionList options = old;
    for (const auto& [name, value] : wanted) {
        if (!isKept(printer, name)) {
            continue;
        }
        const std::string* const already = find(below, name);
        if (already != nullptr && *already == value) {
            std::erase_if(options, [&, &key = name](const auto& option) { return option.first == key; });
        } else {
            set(&options, name, value);
        }
    }
    if (find(wanted, kOrientationOptions[0]) != nullptr) {
        return options;
    }
    if (find(old, kOrientationOptions[0]) != nullptr) {
        std::erase_if(options, [](const auto& option) {
            return std::ranges::find(kOrientationOptions, option.first) != kOrientationOptions.end();
        });
    }
    if (find(below, kOrientationOptions[0]) != nullptr) {
        set(&options, kOrientationOptions[0], "3");  // portrait
    }
    return options;
}

OSStatus replaceFile(const fs::path& path, const std::string& text) {
    std::error_code error;
    if (const fs::path folder = path.parent_path(); fs::create_directory(folder, error)) {
        fs::permissions(folder, fs::perms::owner_all, error);
    }
    PendingFile file(path.string());
    if (!file.isOpen()) {
        return failWith(kPMCannotWriteOutput, path.string(), file.reason());
    }
    for (std::string_view rest = text; !rest.empty();) {
        const ssize_t count = write(file.descriptor(), rest.data(), rest.size());
        if (count < 0 && errno != EINTR) {
            return failWith(kPMCannotWriteOutput, path.string(), systemReason(errno));
        }
        rest.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    return file.commit() ? noErr : failWith(kPMCannotWriteOutput, path.string(), file.reason());
}

}  // namespace

OSStatus PMPrinterSaveDefaultSettings(PMPrinter printer, PMTicketRef printSettings, PMTicketRef pageFormat) {
    clearLastError();
    if (printer == nullptr || printer->queue.empty()) {
        return failWith(kPMNoSuchPrinter, printer == nullptr ? "printer" : utf8Text(printer->name.get()),
                        "only a queue has defaults of its own");
    }
    JobRequest request;
    if (const OSStatus status = readJobRequest(printSettings, pageFormat, printer->ppd.passcodeKeyword, &request);
        status != noErr) {
        return status;
    }
    const char* const home = std::getenv("HOME");
    if (home == nullptr || *home == '\0') {
        return failWith(kPMCannotWriteOutput, printer->queue, "you have no home folder to keep them in");
    }
    request.options.emplace_back("copies", std::to_string(request.copies));
    const fs::path path = fs::path(home) / ".cups/lpoptions";
    const auto text = readText(path);
    if (!text) {
        return failWith(kPMCannotWriteOutput, path.string(), "cannot be read");
    }
    const OptionList options = mergedOptions(optionsInText(*text, printer->queue), request.options,
                                             defaultsBelow(*printer, *text), *printer);
    return replaceFile(path, textWithOptions(*text, printer->queue, options));
}

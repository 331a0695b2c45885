// tavro-print: the print dialog of Tavro printers.

#include "driver/finishing/sheet_limits.h"
#include "host/dialog/dialog_window.h"
#include "host/dialog/notice.h"
#include "host/dialog/print_dialog.h"
#include "host/dialog/server_password.h"
#include "host/dialog/start_marks.h"
#include "host/job/command_line.h"
#include "host/job/job_setup.h"
#include "host/job/open_document.h"
#include "host/job/print_without_window.h"
#include "host/places.h"
#include "host/portal/caller_settings.h"
#include "host/portal/request_keys.h"
#include "host/report/report.h"
#include "host/script/runner.h"
#include "host/script/script_file.h"
#include "host/settings/texts.h"
#include "platform/files/temporary_files.h"
#include "platform/foundation/message.h"
#include "platform/foundation/message_tables.h"
#include "platform/foundation/terminal_text.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/Windows.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <initializer_list>
#include <memory>
#include <optional>
#include <utility>

namespace {

constexpr unsigned kSecondsWithoutProgress = 60;

ExitStatus fail(const Failure& failure) {
    if (!failure.line.empty()) {
        printLine(stderr, "tavro-print: " + readable(failure.line));
    }
    return failure.status;
}

/// Opens those of the three standard streams that are closed, so that no file gets their numbers and, with them, what
/// is written there. To read only: a write fails, and is noticed.
void openStandardStreams() {
    int stream = 0;
    do {
        stream = open("/dev/null", O_RDONLY);  // takes the lowest number that is free
    } while (stream >= 0 && stream <= STDERR_FILENO);
    close(stream);
}

/// The status of a run whose output was written, or was lost. A job that is out stays a success.
ExitStatus afterOutput(const CommandLine& line, ExitStatus status) {
    errno = 0;
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) {
        return status;
    }
    const std::string reason = errno != 0 ? systemMessage(errno) : messageText("not all of it was written");
    const bool isAskedFor = line.help || line.version || line.isTelling();
    return fail({status == ExitStatus::success && isAskedFor ? ExitStatus::notSent : status,
                 messageText("standard output: %1", {reason})});
}

bool hasVariable(std::initializer_list<const char*> names) {
    return std::ranges::any_of(names, [](const char* name) {
        const char* const value = std::getenv(name);
        return value != nullptr && *value != '\0';
    });
}

bool hasDisplay() {
    return hasVariable({"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"});
}

/// Whether a desktop has started the program for its user, who does not see standard error there. It tells by which
/// name it waits for the window (the startup notification of X11 and of Wayland).
bool isStartedByDesktop() {
    return hasVariable({"DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN"});
}

Result<script::Script> openScript(const std::string& path) {
    if (path.empty()) {
        return script::Script{};
    }
    std::string reason;
    auto parsed = script::readScriptFile(path, &reason);
    if (!parsed) {
        return unusable(path, reason);
    }
    if (!parsed->errors.empty()) {
        return Failure{ExitStatus::scriptFailed, {}};
    }
    return *parsed;
}

Result<CFRef<CFBundleRef>> openBundle(const std::string& path) {
    auto bundle = CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, makeFileURL(path, true).get()));
    if (!bundle) {
        return Failure{ExitStatus::unusableInput, utf8Text(CFBundleGetLastError())};
    }
    return bundle;
}

/// The program's own texts, of whose language its windows are.
Result<CFRef<CFBundleRef>> openTexts() {
    auto bundle = openBundle(hostBundlePath());
    if (bundle) {
        SetWindowLanguage(bundle->get());
    }
    return bundle;
}

PrinterChoice choiceOf(const Printer& printer, const CommandLine& line) {
    if (!printer.queue().empty()) {
        return {PrinterChoice::Kind::queue, printer.queue()};
    }
    return line.ppd.empty() ? PrinterChoice{PrinterChoice::Kind::sample, samplePPDPath()}
                            : PrinterChoice{PrinterChoice::Kind::ppd, line.ppd};
}

void openToolbox(char* programName, bool scripted) {
    static bool isOpen = false;
    if (std::exchange(isOpen, true)) {
        return;
    }
    int count = 1;  // Qt would take arguments of its own from the command line
    ToolboxInitialize(&count, &programName, scripted);
}

/// A print server may want a password before there is a window.
void askPasswordsInWindows(char* programName, bool scripted) {
    askServerPasswordsInWindows([programName, scripted]() -> CFBundleRef {
        openToolbox(programName, scripted);
        static auto bundle = openTexts();
        return bundle ? bundle->get() : nullptr;
    });
}

/// Passcodes and passwords are in the memory of this program and of the filters that it starts, and shall not get into
/// a core file. The one protects this program, in whatever way cores are collected; programs that it starts have only
/// the other: with this limit the kernel writes no core file, and starts nobody who collects them.
void writeNoCoreFiles() {
    prctl(PR_SET_DUMPABLE, 0);
    rlimit limit{};
    getrlimit(RLIMIT_CORE, &limit);
    limit.rlim_cur = 1;
    setrlimit(RLIMIT_CORE, &limit);
}

/// Says why the document cannot be printed, in a window too when the user would see nothing else.
ExitStatus failInWindow(const Failure& failure, const CommandLine& line, char* programName) {
    const ExitStatus status = fail(failure);
    const bool isSeen =
        line.portal.empty() ? isStartedByDesktop() && !line.print && !line.check : !failure.line.empty();
    if (isSeen && hasDisplay() && !line.isScripted()) {
        openToolbox(programName, false);
        if (auto bundle = openTexts()) {
            showNotice(kCFUserNotificationStopAlertLevel, localized(bundle->get(), CFSTR("Job Failed Header")),
                       makeString(failure.line));
        }
    }
    return status;
}

ReportForm formOf(const CommandLine& line) {
    return line.tellsJSON() ? ReportForm::json : ReportForm::lines;
}

PrintDialog::Outcome drive(PrintDialog& dialog, const CommandLine& line, const script::Script& parsed) {
    std::unique_ptr<script::Runner> runner;
    return dialog.run([&] {
        if (line.listControls) {
            reportControls(dialog.window(), formOf(line));
            dialog.end({ExitStatus::success, {}});
        } else if (line.isScripted()) {
            runner = std::make_unique<script::Runner>(
                parsed,
                script::Runner::Options{line.script, kSecondsWithoutProgress,
                                        static_cast<int>(ExitStatus::scriptFailed)},
                script::Stage{dialog.window(), line.shots, stdout, [&dialog] { dialog.settle(); }, nullptr,
                              [&dialog] { return dialog.conflicts(); }, [&dialog] { dialog.finishPictures(); }},
                [&dialog](bool failed) {
                    dialog.end({failed ? ExitStatus::scriptFailed : ExitStatus::cancelled, {}});
                });
            runner->start();
        }
    });
}

/// A document that a program has made by settings that were chosen before: what they leave out of it nobody could know.
std::function<bool(const std::vector<std::string>&)> askerOf(const CommandLine& line, CFBundleRef texts) {
    if (line.portal.empty() || line.isScripted() || !hasDisplay()) {
        return {};
    }
    return [texts](const std::vector<std::string>& sentences) {
        return goesOnDespiteNotice(localized(texts, CFSTR("Left Out Header")), makeString(listed(texts, sentences)),
                                   localized(texts, CFSTR("Left Out Cancel")),
                                   localized(texts, CFSTR("Left Out Print")));
    };
}

DocumentPrograms documentPrograms() {
    return {pageReaderPath(), converterPath()};
}

/// Each document is a job of its own. One that fails keeps none of the others from being printed.
ExitStatus printAtOnce(const CommandLine& line, JobSetup setup, OpeningDocument* first, char* programName) {
    // Cover sheets are drawn with its fonts.
    openToolbox(programName, line.portal.empty() || line.isScripted() || !hasDisplay());
    auto bundle = openTexts();
    if (!bundle) {
        return fail(bundle.failure());
    }
    ExitStatus worst = ExitStatus::success;
    for (std::size_t i = 0; i < line.documents.size(); ++i) {
        std::optional<OpeningDocument> next;
        OpeningDocument* const document = i == 0 ? first : &next.emplace(line.documents[i], documentPrograms());
        auto opened = openForJob(setup, document);
        if (opened) {
            setup.document = std::move(*opened);
        }
        const ExitStatus status = failInWindow(
            opened ? printWithoutWindow(setup, bundle->get(), askerOf(line, bundle->get())) : opened.failure(), line,
            programName);
        worst = std::max(worst, status);
    }
    sweepTemporaryFolder();
    return worst;
}

ExitStatus check(const CommandLine& line, const JobSetup& setup) {
    auto bundle = openTexts();
    return fail(bundle ? reportCheck(setup, bundle->get(), formOf(line)) : bundle.failure());
}

/// In the words of the printer that is named, or of the sample, which has all that the maker's printers have.
ExitStatus proof(const CommandLine& line) {
    auto printer =
        line.printer.empty() ? openPPD(line.ppd.empty() ? samplePPDPath() : line.ppd) : openQueue(line.printer);
    if (!printer) {
        return fail(printer.failure());
    }
    auto bundle = openTexts();
    return fail(bundle ? reportProof(line.proof, *printer, bundle->get(), formOf(line)) : bundle.failure());
}

/// The dialog waits for a document that is looked at a moment only, and for one that is made into a PDF not at all.
/// What a script prints is there first.
std::optional<Failure> openFirst(const CommandLine& line, JobSetup* job, OpeningDocument* document) {
    const std::chrono::milliseconds patience(document->isPrepared() ? 0 : 300);
    if (!line.isScripted() && (!document->advance(patience) || document->isLocked())) {
        job->document = document->document();
        return std::nullopt;
    }
    auto opened = openForJob(*job, document);
    if (!opened) {
        return opened.failure();
    }
    job->document = std::move(*opened);
    return std::nullopt;
}

/// What a program asks for, in its own words and in front of its window.
void followCaller(const PortalRequest& request, WindowRef window) {
    if (!request.parentWindow.empty()) {
        SetWindowForeignOwner(window, makeString(request.parentWindow).get());
    }
    if (!request.acceptLabel.empty()) {
        std::string label;
        for (const char character : request.acceptLabel) {
            label += character == '_' ? "&" : character == '&' ? "&&" : std::string(1, character);
        }
        SetControlTitleWithCFString(hostControl(window, kPrint), makeString(label).get());
    }
}

std::optional<PrintDialog::Preparing> preparingOf(const PortalRequest* request) {
    if (request == nullptr || request->kind != PortalRequest::Kind::prepare) {
        return std::nullopt;
    }
    return PrintDialog::Preparing{pagesOfCaller(*request), [request](const PrintSession& session, PagesAsked pages) {
                                      return answerCaller(*request, session, pages);
                                  }};
}

/// What the dialog consists of, whatever it is about.
struct DialogParts {
    CFRef<CFBundleRef> texts;
    std::unique_ptr<PluginHost> plugin;
    DialogWindow window;
};

Result<DialogParts> openDialogParts() {
    auto texts = openTexts();
    if (!texts) {
        return texts.failure();
    }
    auto plugin = PluginHost::load(pluginPath());
    if (!plugin) {
        return plugin.failure();
    }
    markStart("plug-in");
    auto window = openDialogWindow(texts->get());
    if (!window) {
        return window.failure();
    }
    markStart("window");
    return DialogParts{std::move(*texts), std::move(*plugin), std::move(*window)};
}

ExitStatus runDialog(const CommandLine& line, const PortalRequest* request, const script::Script& parsed,
                     DialogParts parts, JobSetup job, std::unique_ptr<OpeningDocument> document, char* programName) {
    if (const auto failure = openFirst(line, &job, document.get())) {
        return failInWindow(*failure, line, programName);
    }
    markStart("document");
    PrinterChoice choice = choiceOf(job.printer, line);
    auto dialog = PrintDialog::make(parts.texts.get(), *parts.plugin, std::move(parts.window),
                                    {std::move(job),
                                     std::move(choice),
                                     pageDrawerPath(),
                                     {line.documents, std::move(document), documentPrograms()},
                                     line.isScripted(),
                                     preparingOf(request)});
    if (!dialog) {
        return failInWindow(dialog.failure(), line, programName);
    }
    if (request != nullptr) {
        followCaller(*request, (*dialog)->window());
    }
    const PrintDialog::Outcome outcome = drive(**dialog, line, parsed);
    return fail({outcome.status, outcome.line});
}

/// A request as a command line that says the same, but for what only the request can say.
CommandLine lineOf(const PortalRequest& request, CommandLine line) {
    if (request.kind != PortalRequest::Kind::prepare) {
        line.documents.push_back(request.document());
    }
    if (request.kind == PortalRequest::Kind::print) {
        line.print = true;
        line.printer = request.queue;
        line.ticketIn = request.file(portal::kSettingsFile);
    }
    return line;
}

Result<JobSetup> openJob(const CommandLine& line, const PortalRequest* request) {
    if (request == nullptr || request->kind == PortalRequest::Kind::print) {
        return openJobSetup(line, samplePPDPath());
    }
    auto printer = printerOfCaller(*request, samplePPDPath());
    if (!printer) {
        return printer.failure();
    }
    JobSetup job{{}, *printer};
    if (request->kind == PortalRequest::Kind::prepare) {
        job.settings = settingsOfCaller(*request, *printer, nullptr);
    }
    return job;
}

ExitStatus run(const CommandLine& line, const PortalRequest* request, char* programName) {
    if (!line.proof.empty()) {
        return proof(line);
    }
    if (line.isListing()) {
        return fail(line.listPrinters ? reportPrinters(formOf(line)) : reportPresets(formOf(line)));
    }
    if (const auto missing = findMissing(line.documents)) {
        return failInWindow(*missing, line, programName);
    }
    auto parsed = openScript(line.script);
    if (!parsed) {
        return fail(parsed.failure());
    }
    const bool hasWindow = !line.print && !line.check;
    if (hasWindow && !line.isScripted() && !hasDisplay()) {
        return fail({ExitStatus::usage, messageText("there is no display; --print and --script do without one")});
    }
    // Goes on while the rest is opened.
    auto document = std::make_unique<OpeningDocument>(line.documents.empty() ? std::string() : line.documents.front(),
                                                      documentPrograms(), request != nullptr ? request->title : "");
    if (hasWindow) {
        if (line.ppd.empty()) {
            askForPrinterAhead(request != nullptr ? request->queue : line.printer);
        }
        openToolbox(programName, line.isScripted());
        markStart("toolbox");
        askPasswordsInWindows(programName, line.isScripted());
    }
    std::optional<DialogParts> parts;
    if (hasWindow) {
        auto opened = openDialogParts();
        if (!opened) {
            return fail(opened.failure());
        }
        parts = std::move(*opened);
    }
    if (line.print && request != nullptr && hasDisplay()) {
        askPasswordsInWindows(programName, line.isScripted());
    }
    auto job = openJob(line, request);
    if (!job) {
        const auto opened = document->isToBePrepared() ? Result<Document>(Document{}) : document->finish();
        return failInWindow(opened ? job.failure() : opened.failure(), line, programName);
    }
    markStart("input");
    useDeviceProfile(deviceProfilePath());
    if (hasWindow) {
        prepareFor(*job, document.get());
        return runDialog(line, request, *parsed, std::move(*parts), std::move(*job), std::move(document), programName);
    }
    if (line.print) {
        return printAtOnce(line, std::move(*job), document.get(), programName);
    }
    auto opened = openForJob(*job, document.get());
    if (!opened) {
        return failInWindow(opened.failure(), line, programName);
    }
    job->document = std::move(*opened);
    return check(line, *job);
}

ExitStatus answerPortal(const CommandLine& line, char* programName) {
    auto request = readPortalRequest(line.portal);
    return request ? run(lineOf(*request, line), &*request, programName) : fail(request.failure());
}

}  // namespace

int main(int argc, char** argv) try {
    openStandardStreams();
    markStart("main");
    writeNoCoreFiles();
    std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow is a fault like others
    showMessagesOf(hostBundlePath() + "/Contents/Resources");
    auto line = readCommandLine({argv + 1, argv + argc});
    if (!line) {
        return static_cast<int>(fail(line.failure()));
    }
    ExitStatus status = ExitStatus::success;
    if (line->help || line->version) {
        auto texts = line->help ? openTexts() : Result<CFRef<CFBundleRef>>(CFRef<CFBundleRef>());
        if (!texts) {
            return static_cast<int>(fail(texts.failure()));
        }
        std::fputs((line->help ? helpText(texts->get()) : versionText()).c_str(), stdout);
    } else {
        const ToolboxEnd toolbox;
        status = line->portal.empty() ? run(*line, nullptr, argv[0]) : answerPortal(*line, argv[0]);
    }
    return static_cast<int>(afterOutput(*line, status));
} catch (const std::exception& error) {
    printLine(stderr, "tavro-print: " + messageText("this went wrong: %1", {error.what()}));  // such as no memory left
    return static_cast<int>(ExitStatus::unusableInput);
}

// tavro-gallery: every panel and dialog by itself, for looking and for scripts.

#include "host/script/quoted.h"
#include "host/script/runner.h"
#include "host/script/script_file.h"
#include "host/settings/installed_options.h"
#include "host/settings/settings_file.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/Windows.h"
#include "tests/support/gallery/accessibility.h"
#include "tests/support/gallery/gallery.h"
#include "tests/support/gallery/render.h"
#include "tests/support/places.h"

#include <getopt.h>
#include <array>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr unsigned kSecondsWithoutProgress = 60;
constexpr std::array<std::string_view, 2> kOwnActions{"open", "audit"};  // beside the script language's

constexpr const char* kHelp =
    "usage: tavro-gallery [options] [NAME]\n"
    "\n"
    "Opens a panel or a dialog by name, alone.\n"
    "  --list                    print the names\n"
    "  --ppd FILE                the printer; else the ZR420 sample\n"
    "  --installed OPTION=VALUE  an installed option; may be repeated\n"
    "  --ticket-in FILE          take the records from these settings\n"
    "  --ticket-out FILE         write the settings when the gallery ends with OK\n"
    "  --script FILE             drive the gallery from a file; it may say: open NAME, audit NAME\n"
    "  --shots DIR               where the script's pictures go\n"
    "  --audit DIR               print what everything lacks for use without a mouse or without seeing it\n"
    "  --render DIR              pictures of everything: light, dark, 2x, long words, large text\n"
    "  --bundle DIR              the plug-in's bundle; else the built one\n";

struct Options {
    bool list = false;
    std::string name, ppd = stagePath("ppd/Tavro-ZR420.ppd"), ticketIn, ticketOut, script, shots, render, audit,
                      bundle = stagePath("plugins/TavroFeatures.plugin");
    std::vector<std::string> installed;
};

std::optional<Options> readOptions(int argc, char** argv) {
    // One letter each, for the switch below only.
    static constexpr option kLong[] = {{"list", no_argument, nullptr, 'l'},
                                       {"ppd", required_argument, nullptr, 'p'},
                                       {"installed", required_argument, nullptr, 'i'},
                                       {"ticket-in", required_argument, nullptr, 'f'},
                                       {"ticket-out", required_argument, nullptr, 't'},
                                       {"script", required_argument, nullptr, 's'},
                                       {"shots", required_argument, nullptr, 'd'},
                                       {"render", required_argument, nullptr, 'r'},
                                       {"audit", required_argument, nullptr, 'a'},
                                       {"bundle", required_argument, nullptr, 'b'},
                                       {nullptr, 0, nullptr, 0}};
    Options options;
    for (int letter = 0; (letter = getopt_long(argc, argv, "", kLong, nullptr)) != -1;) {
        switch (letter) {
            case 'l':
                options.list = true;
                break;
            case 'p':
                options.ppd = optarg;
                break;
            case 'i':
                options.installed.emplace_back(optarg);
                break;
            case 'f':
                options.ticketIn = optarg;
                break;
            case 't':
                options.ticketOut = optarg;
                break;
            case 's':
                options.script = optarg;
                break;
            case 'd':
                options.shots = optarg;
                break;
            case 'r':
                options.render = optarg;
                break;
            case 'a':
                options.audit = optarg;
                break;
            case 'b':
                options.bundle = optarg;
                break;
            default:
                return std::nullopt;
        }
    }
    if (optind < argc) {
        options.name = argv[optind++];
    }
    return optind == argc ? std::optional(options) : std::nullopt;
}

int fail(const std::string& line, ExitStatus status) {
    std::fprintf(stderr, "tavro-gallery: %s\n", line.c_str());
    return static_cast<int>(status);
}

CFRef<CFBundleRef> openBundle(const std::string& path) {
    return CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, makeFileURL(path, true).get()));
}

Result<script::Script> openScript(const Options& options) {
    if (options.script.empty()) {
        return script::parse(options.name.empty() ? "" : "open " + quoted(options.name), kOwnActions);
    }
    std::string reason;
    auto parsed = script::readScriptFile(options.script, &reason, kOwnActions);
    if (!parsed) {
        return unusable(options.script, reason);
    }
    return parsed->errors.empty() ? Result<script::Script>(*parsed) : Failure{ExitStatus::scriptFailed, "not run"};
}

std::optional<std::string> perform(const script::Own& own, Gallery& gallery) {
    if (own.word == "open") {
        return gallery.open(own.argument);
    }
    for (const std::string& line : auditFrontWindow()) {
        std::printf("%s: %s\n", own.argument.c_str(), line.c_str());
    }
    return std::nullopt;
}

int run(const Options& options, Gallery& gallery, const script::Script& parsed) {
    std::unique_ptr<script::Runner> runner;
    bool hasFailed = false;
    const bool accepted = gallery.run([&] {
        runner = std::make_unique<script::Runner>(
            parsed,
            script::Runner::Options{options.script, kSecondsWithoutProgress,
                                    static_cast<int>(ExitStatus::scriptFailed)},
            script::Stage{gallery.window(), options.shots, stdout, nullptr,
                          [&](const script::Own& own) { return perform(own, gallery); }},
            [&](bool failed) {
                hasFailed = failed;
                if (!options.script.empty()) {
                    gallery.end();
                }
            });
        runner->start();
    });
    if (hasFailed) {
        return static_cast<int>(ExitStatus::scriptFailed);
    }
    if (accepted && !options.ticketOut.empty()) {
        if (const auto reason = writeSettingsFile(gallery.copySettings(), options.ticketOut)) {
            return fail(*reason, ExitStatus::unusableInput);
        }
    }
    return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
    const auto options = readOptions(argc, argv);
    if (!options) {
        std::fputs(kHelp, stderr);
        return static_cast<int>(ExitStatus::usage);
    }
    auto parsed = openScript(*options);
    if (!parsed) {
        return fail(parsed.failure().line, parsed.failure().status);
    }
    auto printer = openPPD(options->ppd);
    if (!printer) {
        return fail(printer.failure().line, printer.failure().status);
    }
    auto installed = readInstalledOptions(options->installed, *printer);
    if (!installed) {
        return fail(installed.failure().line, installed.failure().status);
    }
    auto settings =
        options->ticketIn.empty() ? Result<JobSettings>(JobSettings{}) : readSettingsFile(options->ticketIn);
    if (!settings) {
        return fail(settings.failure().line, settings.failure().status);
    }
    const ToolboxEnd toolbox;
    int argumentCount = 1;
    ToolboxInitialize(&argumentCount, argv,
                      !options->script.empty() || !options->render.empty() || !options->audit.empty() || options->list);
    const auto own = openBundle(TAVRO_GALLERY_BUNDLE);
    const auto plugin = openBundle(options->bundle);
    const auto host = openBundle(stagePath("TavroPrint.bundle"));
    if (!own || !plugin || !host) {
        return fail(utf8Text(CFBundleGetLastError()), ExitStatus::unusableInput);
    }
    SetWindowLanguage(host.get());
    auto gallery = Gallery::make({own.get(), plugin.get(), host.get(), *printer, *settings, *installed});
    if (!gallery) {
        return fail(gallery.failure().line, gallery.failure().status);
    }
    if (options->list) {
        for (const std::string& name : (*gallery)->names()) {
            std::puts(name.c_str());
        }
        return EXIT_SUCCESS;
    }
    if (!options->render.empty() || !options->audit.empty()) {
        std::vector<std::string> passedOn{"--ppd", options->ppd};
        for (const std::string& option : options->installed) {
            passedOn.insert(passedOn.end(), {"--installed", option});
        }
        if (!options->ticketIn.empty()) {
            passedOn.insert(passedOn.end(), {"--ticket-in", options->ticketIn});
        }
        return options->audit.empty() ? renderAll(options->render, (*gallery)->names(), options->bundle, passedOn)
                                      : auditAll(options->audit, (*gallery)->names(), passedOn);
    }
    return run(*options, **gallery, *parsed);
}

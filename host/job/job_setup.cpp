#include "host/job/job_setup.h"

#include "host/script/quoted.h"
#include "host/settings/installed_options.h"
#include "host/settings/presets.h"
#include "platform/foundation/message.h"

#include <filesystem>

namespace {

Result<Printer> openChosenPrinter(const CommandLine& line, const std::string& samplePPD) {
    if (!line.ppd.empty()) {
        return openPPD(line.ppd);
    }
    return line.printer.empty() ? openDefaultPrinter(samplePPD) : openQueue(line.printer);
}

SettingsOrigin originOf(const CommandLine& line) {
    if (!line.preset.empty()) {
        return {SettingsOrigin::Kind::preset, line.preset};
    }
    return line.ticketIn.empty() ? SettingsOrigin{}
                                 : SettingsOrigin{SettingsOrigin::Kind::elsewhere,
                                                  std::filesystem::path(line.ticketIn).filename().string()};
}

/// Who names a preset that is not there hears which are.
Result<JobSettings> readPreset(const std::string& name) {
    auto settings = namedPresets().read(name);
    if (settings) {
        return settings;
    }
    std::string kept;
    for (const std::string& each : namedPresets().list().names) {
        kept += (kept.empty() ? "" : ", ") + quoted(each);
    }
    return Failure{settings.failure().status, kept.empty()
                                                  ? messageText("%1; none is kept", {settings.failure().line})
                                                  : messageText("%1; there are %2", {settings.failure().line, kept})};
}

Result<JobSettings> readStartingSettings(const CommandLine& line) {
    if (!line.preset.empty()) {
        return readPreset(line.preset);
    }
    return line.ticketIn.empty() ? Result<JobSettings>(JobSettings{}) : readSettingsFile(line.ticketIn);
}

JobTarget targetOf(const CommandLine& line) {
    return !line.pdfOut.empty()   ? JobTarget{JobWay::pdf, line.pdfOut}
           : !line.jobOut.empty() ? JobTarget{JobWay::file, line.jobOut}
                                  : JobTarget{};
}

}  // namespace

Result<JobSetup> openJobSetup(const CommandLine& line, const std::string& samplePPD) {
    auto printer = openChosenPrinter(line, samplePPD);
    if (!printer) {
        return printer.failure();
    }
    auto installed = readInstalledOptions(line.installed, *printer);
    if (!installed) {
        return installed.failure();
    }
    auto settings = readStartingSettings(line);
    if (!settings) {
        return settings.failure();
    }
    return JobSetup{{},         *printer,       *settings,      originOf(line),
                    *installed, line.ticketOut, targetOf(line), pageNumber(line.currentPage)};
}

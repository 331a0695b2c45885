#include "host/job_setup.h"

#include "host/installed_options.h"

namespace {

Result<Printer> openChosenPrinter(const CommandLine& line, const std::string& samplePPD) {
    if (!line.ppd.empty()) {
        return openPPD(line.ppd);
    }
    return line.printer.empty() ? openDefaultPrinter(samplePPD) : openQueue(line.printer);
}

}  // namespace

Result<JobSetup> openJobSetup(const CommandLine& line, const std::string& samplePPD) {
    auto document = openDocument(line.document);
    if (!document) {
        return document.failure();
    }
    auto printer = openChosenPrinter(line, samplePPD);
    if (!printer) {
        return printer.failure();
    }
    auto installed = readInstalledOptions(line.installed, *printer);
    if (!installed) {
        return installed.failure();
    }
    auto settings = line.ticketIn.empty() ? Result<JobSettings>(JobSettings{}) : readSettingsFile(line.ticketIn);
    if (!settings) {
        return settings.failure();
    }
    return JobSetup{*document, *printer, *settings, *installed, line.ticketOut, line.jobOut};
}

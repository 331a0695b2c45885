#include "host/print_job.h"

#include "host/script/text.h"

std::optional<std::string> sendJob(const Document& document, const Printer& printer, const PrintSession& session,
                                   const std::string& jobOut) {
    SInt32 jobID = 0;
    const OSStatus status =
        jobOut.empty() ? PMPrinterPrintWithFile(printer.get(), session.printSettings(), session.pageFormat(),
                                                document.url.get(), &jobID)
                       : PMPrinterWritePostScriptToURL(printer.get(), session.printSettings(), session.pageFormat(),
                                                       document.url.get(), fileURL(jobOut).get());
    return status == noErr ? std::nullopt : std::optional(utf8(PMGetLastErrorText()));
}

#include "host/print_job.h"

#include "host/cover_sheet.h"
#include "host/page_range.h"
#include "host/script/text.h"

#include <cstdio>

namespace {

/// Null for a job without one. What could not be put on it is told on standard error: the fax goes out all the same.
CFRef<CFDataRef> makeCoverSheet(const Document& document, const PrintSession& session, CFBundleRef texts) {
    const auto content = readCoverSheetContent(session.printSettings());
    if (!content) {
        return {};
    }
    const std::string range = session.pageRange();
    const std::int64_t pages = range.empty() ? document.pageCount : readPageRange(range, document.pageCount).count;
    CoverSheet sheet = drawCoverSheet(*content, pages + 1, texts);
    for (const std::string& fault : sheet.faults) {
        std::fprintf(stderr, "tavro-print: cover sheet: %s\n", fault.c_str());
    }
    return sheet.pdf;
}

}  // namespace

std::optional<std::string> sendJob(const Document& document, const Printer& printer, const PrintSession& session,
                                   const std::string& jobOut, CFBundleRef texts) {
    SInt32 jobID = 0;
    const OSStatus status =
        jobOut.empty() ? PMPrinterPrintWithFile(printer.get(), session.printSettings(), session.pageFormat(),
                                                document.url.get(), &jobID)
                       : PMPrinterWritePostScriptToURL(printer.get(), session.printSettings(), session.pageFormat(),
                                                       makeCoverSheet(document, session, texts).get(),
                                                       document.url.get(), fileURL(jobOut).get());
    return status == noErr ? std::nullopt : std::optional(utf8(PMGetLastErrorText()));
}

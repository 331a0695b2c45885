#include "host/print_job.h"

#include "host/cover_sheet.h"
#include "host/job_mark.h"
#include "host/page_range.h"
#include "host/script/text.h"

#include <cstdio>

namespace {

/// What a job lacks is told on standard error: it is printed all the same.
void tell(const char* part, const std::string& fault) {
    std::fprintf(stderr, "tavro-print: %s: %s\n", part, fault.c_str());
}

/// Null for a job without one.
CFRef<CFDataRef> makeCoverSheet(const Document& document, const PrintSession& session, CFBundleRef texts) {
    const auto content = readCoverSheetContent(session.printSettings());
    if (!content) {
        return {};
    }
    const std::string range = session.pageRange();
    const std::int64_t pages = range.empty() ? document.pageCount : readPageRange(range, document.pageCount).count;
    CoverSheet sheet = drawCoverSheet(*content, pages + 1, texts);
    for (const std::string& fault : sheet.faults) {
        tell("cover sheet", fault);
    }
    return sheet.pdf;
}

}  // namespace

std::optional<std::string> sendJob(const Document& document, const Printer& printer, const PrintSession& session,
                                   const std::string& jobOut, CFBundleRef texts) {
    OSStatus status = noErr;
    if (jobOut.empty()) {
        if (const std::string name = chosenWatermark(session); !name.empty()) {
            tell("watermark", name + ": is drawn in jobs that go to a file only");
        }
        SInt32 jobID = 0;
        status = PMPrinterPrintWithFile(printer.get(), session.printSettings(), session.pageFormat(),
                                        document.url.get(), &jobID);
    } else {
        const auto coverSheet = makeCoverSheet(document, session, texts);
        const JobMark mark = makeJobMark(document, session, coverSheet.get() != nullptr);
        if (mark.fault) {
            tell("watermark", *mark.fault);
        }
        status = PMPrinterWritePostScriptToURL(printer.get(), session.printSettings(), session.pageFormat(),
                                               coverSheet.get(), mark.setup.get(), document.url.get(),
                                               fileURL(jobOut).get());
    }
    return status == noErr ? std::nullopt : std::optional(utf8(PMGetLastErrorText()));
}

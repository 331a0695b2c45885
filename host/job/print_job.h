// Sending the job.
#pragma once

#include "driver/job/prepare_job.h"
#include "host/job/document.h"
#include "host/settings/left_out.h"
#include "host/settings/print_session.h"
#include "platform/foundation/CFBundle.h"

#include <atomic>
#include <optional>
#include <string>
#include <vector>

/// What the job will not be able to do as the settings say, a sentence in the user's words each: a watermark that
/// cannot be drawn, and, in a queue, a print time that has passed. The job itself tells it on standard error, where
/// nobody looks who opened the dialog from a desktop. `texts` is the program's own bundle.
std::vector<std::string> tellJobFaults(const PrintSession& session, JobWay way, CFBundleRef texts);

/// What became of a job.
struct JobOutcome {
    std::string failure;  // why it was not sent or written, in a line that names the file or queue; else empty
    bool isPrinterChanged = false;  // the failure: the settings are to be looked at again, with the printer opened anew
    bool isCancelled = false;       // nothing of it is left
    std::string obstacle;           // why it waits in its queue, in a line; else empty
};

/// Where a job goes, with the file if it goes into one.
struct JobTarget {
    JobWay way = JobWay::queue;
    std::string file;
};

/// The document printed with the session's settings: to the printer's queue, whose name for the job ("QUEUE-123") then
/// stands on standard output in a line, as printer-ready PostScript to a file, or one set of its pages as a PDF. The
/// job has its watermark, and its cover sheet in front if it is a fax that has one. A secure print job is held for its
/// passcode by the printer, or not sent; a delayed one by the queue, until its time. `texts` is the program's own
/// bundle.
class JobWork {
public:
    /// Takes what needs the session; tells on standard error what cannot be drawn. All arguments but the texts must
    /// stay as they are as long as it runs.
    JobWork(const Document& document, const Printer& printer, const PrintSession& session, const JobTarget& target,
            CFBundleRef texts);

    /// Does it, in any thread, and blocks until it is done.
    JobOutcome run();

    // While it runs, from another thread.

    /// Ends it soon: it leaves no file, no job and no process.
    void cancel();
    /// How far the pages are, from 0 to 100. Then they are on their way to the printer, which nobody can measure.
    [[nodiscard]] int percent() const { return percent_; }

private:
    /// A large document is no copy, and may have become another one; in the words of a line then.
    [[nodiscard]] std::string changeOfDocument() const;
    JobOutcome print(const JobSource& source, const PagesProgress& progress);
    JobOutcome send(PreparedJob* job);
    JobOutcome writePDF(const JobSource& source, const PagesProgress& progress);

    const Document& document_;
    const Printer& printer_;
    const PrintSession& session_;
    const JobTarget& target_;
    std::string faxCover_;
    std::optional<PageMark> mark_;
    std::optional<std::int64_t> printTime_;  // that is asked for
    std::atomic<int> percent_ = 0;
    std::atomic<bool> isCancelled_ = false;
};

#include "host/dialog/dialog_printing.h"

#include "host/dialog/job_progress.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

void addLine(std::string* lines, const std::string& line) {
    *lines += (lines->empty() || line.empty() ? "" : "\n") + line;
}

}  // namespace

JobOutcome printShown(const DialogPrinting& printing, const JobTarget& target) {
    JobWork work(printing.shown, printing.session.printer(), printing.session, target, printing.texts);
    // A script's next line shall not meet a window that comes and goes by itself.
    return printing.scripted ? work.run() : runWithProgress(&work, printing.shown, printing.texts);
}

JobOutcome printAll(const DialogPrinting& printing, const JobTarget& target) {
    JobOutcome all;
    std::vector<bool> printed(printing.documents.count());
    for (std::size_t i = 0; i < printed.size() && !all.isCancelled && !all.isPrinterChanged; ++i) {
        std::string fault;
        const auto brought = printing.documents.bring(i, &fault);
        all.isCancelled = brought == DialogDocuments::Brought::cancelled;
        if (brought == DialogDocuments::Brought::ready) {
            fault = printing.general.takePagesOrFault();
            if (!fault.empty()) {
                fault.insert(0, printing.shown.name + ": ");
            }
        }
        if (brought == DialogDocuments::Brought::ready && fault.empty()) {
            const JobOutcome one = printShown(printing, target);
            fault = one.failure;
            all.isPrinterChanged = one.isPrinterChanged;
            all.isCancelled = one.isCancelled;
            addLine(&all.obstacle, one.obstacle);
            printed[i] = fault.empty() && !one.isCancelled;
        }
        addLine(&all.failure, fault);
    }
    if (!printing.scripted && std::ranges::find(printed, false) != printed.end()) {
        printing.documents.drop(printed);
    }
    return all;
}

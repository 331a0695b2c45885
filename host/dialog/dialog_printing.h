// The jobs of a dialog's documents: of the one that is shown, or one of each.
#pragma once

#include "host/dialog/dialog_documents.h"
#include "host/dialog/general_settings.h"
#include "host/job/print_job.h"

/// What jobs are made of, all lent. `shown` becomes another document while all are printed.
struct DialogPrinting {
    DialogDocuments& documents;
    GeneralSettings& general;
    PrintSession& session;
    const Document& shown;
    CFBundleRef texts;
    bool scripted;  // nobody is there to see how it goes on
};

JobOutcome printShown(const DialogPrinting& printing, const JobTarget& target);

/// One that fails keeps none of the others from being printed. Those that are printed leave the dialog's documents:
/// they are not printed by another try. The outcome has the failures of all, a line each.
JobOutcome printAll(const DialogPrinting& printing, const JobTarget& target);

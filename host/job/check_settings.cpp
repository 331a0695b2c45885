#include "host/job/check_settings.h"

#include "host/settings/conflicts.h"
#include "platform/foundation/terminal_text.h"

#include <cstdio>

namespace {

void tellWhatIsNotOffered(const PrintSession& session) {
    for (const std::string& choice : session.choicesNotOffered()) {
        printLine(stderr, "tavro-print: " + choice + ": " + session.printer().name() +
                              " does not offer it; its default is printed");
    }
}

}  // namespace

Failure checkSettings(const JobSetup& setup, CFBundleRef texts) {
    PrintSession session(setup.printer, setup.settings, setup.installedOptions.get(), setup.document.name);
    followDocument(&session, setup.document);
    tellWhatIsNotOffered(session);
    const ConflictReport report = examineConflicts(session, texts, {}, setup.document.pageCount);
    for (const Conflict& conflict : report.conflicts) {
        printLine(stdout, conflict.sentence);
    }
    return {report.conflicts.empty() ? ExitStatus::success : ExitStatus::unusableInput, {}};
}

void warnOfSettings(const PrintSession& session, std::int64_t pageCount, CFBundleRef texts) {
    tellWhatIsNotOffered(session);
    for (const std::string& sentence : examineConflicts(session, texts, {}, pageCount).sentences()) {
        printLine(stderr, "tavro-print: " + sentence);
    }
}

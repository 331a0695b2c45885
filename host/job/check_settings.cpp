#include "host/job/check_settings.h"

#include "host/settings/conflicts.h"

#include <cstdio>

namespace {

void tellWhatIsNotOffered(const PrintSession& session) {
    for (const std::string& choice : session.choicesNotOffered()) {
        std::fprintf(stderr, "tavro-print: %s: %s does not offer it; its default is printed\n", choice.c_str(),
                     session.printer().name().c_str());
    }
}

}  // namespace

Failure checkSettings(const JobSetup& setup, CFBundleRef texts) {
    const PrintSession session(setup.printer, setup.settings, setup.installedOptions.get(), setup.document.name);
    tellWhatIsNotOffered(session);
    const ConflictReport report = examineConflicts(session, texts, {});
    for (const std::string& sentence : report.sentences) {
        std::printf("%s\n", sentence.c_str());
    }
    return {report.sentences.empty() ? ExitStatus::success : ExitStatus::unusableInput, {}};
}

void warnOfSettings(const PrintSession& session, CFBundleRef texts) {
    tellWhatIsNotOffered(session);
    for (const std::string& sentence : examineConflicts(session, texts, {}).sentences) {
        std::fprintf(stderr, "tavro-print: %s\n", sentence.c_str());
    }
}

#include "host/job/settings_warnings.h"

#include "host/settings/conflicts.h"
#include "platform/foundation/message.h"
#include "platform/foundation/terminal_text.h"

#include <cstdio>

void warnOfChoicesNotOffered(const PrintSession& session) {
    for (const std::string& choice : session.choicesNotOffered()) {
        printLine(stderr, "tavro-print: " + choice + ": " +
                              messageText("%1 does not offer it; its default is printed", {session.printer().name()}));
    }
}

void warnOfSettings(const PrintSession& session, std::int64_t pageCount, CFBundleRef texts) {
    warnOfChoicesNotOffered(session);
    for (const std::string& sentence : examineConflicts(session, texts, {}, pageCount).sentences()) {
        printLine(stderr, "tavro-print: " + sentence);
    }
}

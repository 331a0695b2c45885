#include "host/settings/remedy.h"

#include "driver/instructions/panel_items.h"
#include "host/settings/panel_defaults.h"
#include "platform/foundation/text.h"

void applyRemedy(const std::vector<SettingChange>& changes, PrintSession* session) {
    for (const SettingChange& change : changes) {
        session->setChoice(makeString(change.mainKeyword).get(), makeString(change.option).get());
        clearPanelItems(session->printSettings(), change.mainKeyword);
        if (change.mainKeyword == "JCLPasscode") {
            makeNormalJob(session->printSettings());  // without a passcode
        }
    }
    writePanelDefaults(session->choices(), session->printSettings());
    fillOutputColor(session->printSettings());
}

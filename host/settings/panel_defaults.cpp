#include "host/settings/panel_defaults.h"

#include "driver/instructions/panel_items.h"
#include "host/settings/dictionary_values.h"

namespace {

/// A staple is counted behind the options that collate.
void addStaple(const PPDChoices& choices, const std::string& staple, PMTicketRef ticket) {
    const auto behind = choices.countOptions("Collate");
    const auto position = choices.positionOf("StapleLocation", staple);
    if (position && staple != "None") {
        fillSets(ticket, static_cast<SInt32>(behind + *position));
    }
}

}  // namespace

void writePanelDefaults(const PPDChoices& choices, PMTicketRef printSettings) {
    CFMutableDictionaryRef pairs = nullptr;
    if (PMTicketGetPPDDict(printSettings, kPMTopLevel, &pairs) != noErr) {
        return;
    }
    fillPaperAndTray(printSettings);
    if (stringIn(pairs, CFSTR("Collate")) != "False") {  // sets that are not collated are not stapled either
        addStaple(choices, stringIn(pairs, CFSTR("StapleLocation")), printSettings);
    }
}

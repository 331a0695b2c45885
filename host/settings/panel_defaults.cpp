#include "host/settings/panel_defaults.h"

#include "host/settings/dictionary_values.h"
#include "host/settings/panel_items.h"
#include "host/settings/ticket_items.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

// The plug-in is known by its factory only, so its names and numbers stand here a second time.
#define kOutputDestinationItem CFSTR("com.tavro.print.FinishingOutputDestination")
#define kCollateStapleItem CFSTR("com.tavro.print.FinishingCollateStaple")

struct TrayRow {
    std::string_view option;
    SInt32 destination;
};
constexpr TrayRow kTrays[] = {
    // option of "OutputBin", the panel's number
    {"Auto", 1}, {"Top", 2}, {"Side", 3}, {"Stacker", 4}, {"Upper", 5}, {"Lower", 6}, {"Booklet", 7},
};

bool hasItem(PMTicketRef ticket, CFStringRef key) {
    const auto items = CFRef<CFDictionaryRef>::adopt(PMTicketCopyItems(ticket));
    return CFDictionaryGetValue(items.get(), key) != nullptr;
}

void addNumber(PMTicketRef ticket, CFStringRef key, SInt32 value) {
    if (!hasItem(ticket, key)) {
        const auto number = CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, kCFNumberSInt32Type, &value));
        PMTicketSetCFNumber(ticket, kHostClient, key, number.get(), kPMUnlocked);
    }
}

/// An empty record is filled from the PPD dictionary.
void addStock(PMTicketRef ticket) {
    if (!hasItem(ticket, kJobLevelStockItem)) {
        const auto none = CFRef<CFMutableDictionaryRef>::adopt(
            CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
        PMTicketSetCFDictionary(ticket, kHostClient, kJobLevelStockItem, none.get(), kPMUnlocked);
    }
}

void addOutputDestination(const std::string& bin, PMTicketRef ticket) {
    const auto* const row = std::ranges::find(kTrays, std::string_view(bin), &TrayRow::option);
    if (row != std::end(kTrays)) {
        addNumber(ticket, kOutputDestinationItem, row->destination);
    }
}

/// A staple is counted behind the options that collate.
void addStaple(const PPDChoices& choices, const std::string& staple, PMTicketRef ticket) {
    const auto behind = choices.countOptions("Collate");
    const auto position = choices.positionOf("StapleLocation", staple);
    if (position && staple != "None") {
        addNumber(ticket, kCollateStapleItem, static_cast<SInt32>(behind + *position));
    }
}

}  // namespace

void writePanelDefaults(const PPDChoices& choices, PMTicketRef printSettings) {
    CFMutableDictionaryRef pairs = nullptr;
    if (PMTicketGetPPDDict(printSettings, kPMTopLevel, &pairs) != noErr) {
        return;
    }
    addStock(printSettings);
    addOutputDestination(stringIn(pairs, CFSTR("OutputBin")), printSettings);
    if (stringIn(pairs, CFSTR("Collate")) != "False") {  // sets that are not collated are not stapled either
        addStaple(choices, stringIn(pairs, CFSTR("StapleLocation")), printSettings);
    }
}

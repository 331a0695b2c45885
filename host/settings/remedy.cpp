#include "host/settings/remedy.h"

#include "host/script/text.h"
#include "host/settings/output_color.h"
#include "host/settings/panel_defaults.h"
#include "host/settings/panel_items.h"
#include "host/settings/ticket_items.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFNumber.h"

#include <iterator>
#include <string_view>

namespace {

// The plug-in is known by its factory only, so its names and numbers stand here a second time.
constexpr SInt32 kNormalPrint = 1;

struct ItemRow {
    std::string_view mainKeyword;
    const char* item;
};
// clang-format off
constexpr ItemRow kItems[] = {
    // main keyword         item of the print settings ticket that the panels read instead of it
    {"Duplex",              "com.tavro.print.FinishingDuplex"},
    {"Duplex",              "com.apple.print.PrintSettings.PMDuplexing"},
    {"Duplex",              "com.tavro.print.BookletLayout"},  // a booklet is printed on both sides
    {"OutputBin",           "com.tavro.print.FinishingOutputDestination"},
    {"Collate",             "com.tavro.print.FinishingCollateStaple"},
    {"StapleLocation",      "com.tavro.print.FinishingCollateStaple"},
    {"TRFoldOptions",       "com.tavro.print.FinishingCollateStaple"},
    {"JCLColorCorrection",  "com.tavro.print.FinishingOutputColor"},
};
static_assert(std::size(kItems) == 8);
// clang-format on

/// A job without a passcode is a normal one; everything else that the record holds stays.
void makeNormalJob(PMTicketRef printSettings) {
    CFDictionaryRef job = nullptr;
    if (PMTicketGetCFDictionary(printSettings, kPMTopLevel, kPMTopLevel, kJobTypeItem, &job) != noErr) {
        return;
    }
    const auto normal = CFRef<CFMutableDictionaryRef>::adopt(CFDictionaryCreateMutableCopy(nullptr, 0, job));
    const auto type = CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, kCFNumberSInt32Type, &kNormalPrint));
    CFDictionarySetValue(normal.get(), kJobTypeEntry, type.get());
    PMTicketSetCFDictionary(printSettings, kHostClient, kJobTypeItem, normal.get(), kPMUnlocked);
}

}  // namespace

void applyRemedy(const std::vector<SettingChange>& changes, PrintSession* session) {
    for (const SettingChange& change : changes) {
        session->setChoice(cfString(change.mainKeyword).get(), cfString(change.option).get());
        for (const ItemRow& row : kItems) {
            if (row.mainKeyword == change.mainKeyword) {
                PMTicketReleaseItem(session->printSettings(), kPMTopLevel, CFStringMakeConstant(row.item));
            }
        }
        if (change.mainKeyword == "JCLPasscode") {
            makeNormalJob(session->printSettings());
        }
    }
    writePanelDefaults(session->choices(), session->printSettings());
    writeOutputColor(session->printSettings());
}

#include "host/settings/output_color.h"

#include "host/settings/dictionary_values.h"
#include "host/settings/panel_items.h"
#include "host/settings/ticket_items.h"

namespace {

constexpr const char* kBlackAndWhiteCorrection = "BlackWhite";
constexpr const char* kAutomaticCorrection = "Auto";

bool offers(const PPDChoices& choices, const char* correction) {
    return choices.offers(utf8(kColorCorrectionKeyword), correction);
}

}  // namespace

void writeOutputColor(PMTicketRef printSettings) {
    CFMutableDictionaryRef pairs = nullptr;
    if (PMTicketGetPPDDict(printSettings, kPMTopLevel, &pairs) == noErr &&
        stringIn(pairs, kColorCorrectionKeyword) == kBlackAndWhiteCorrection &&
        numberItem(printSettings, kOutputColorItem, 0) == 0) {
        const auto number =
            CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, kCFNumberSInt32Type, &kOutputBlackAndWhite));
        PMTicketSetCFNumber(printSettings, kHostClient, kOutputColorItem, number.get(), kPMUnlocked);
    }
}

bool offersBlackAndWhite(const PPDChoices& choices) {
    return offers(choices, kBlackAndWhiteCorrection);
}

CFStringRef findOutputColorCorrection(const PrintSession& session) {
    const SInt32 color = numberItem(session.printSettings(), kOutputColorItem, 0);
    const std::string correction = session.choice(kColorCorrectionKeyword);
    const PPDChoices& choices = session.choices();
    if (color == kOutputBlackAndWhite && correction != kBlackAndWhiteCorrection && offersBlackAndWhite(choices)) {
        return CFStringMakeConstant(kBlackAndWhiteCorrection);
    }
    if (color == kOutputColor && correction == kBlackAndWhiteCorrection && offers(choices, kAutomaticCorrection)) {
        return CFStringMakeConstant(kAutomaticCorrection);
    }
    return nullptr;
}

#include "panels/advanced/advanced_sync.h"

#include "model/ppd_access.h"
#include "model/ppd_option_maps.h"
#include "model/ppd_ui_dictionary.h"
#include "model/ticket_access.h"
#include "model/ticket_items.h"

namespace {

#define kCreator CFSTR("com.tavro.printingmanager")
#define kOmbrexEmulationKey CFSTR("com.tavro.print.OmbrexEmulation")

constexpr SInt32 kMissingChoice = 1;

/// The ticket counts rotation from 0, the pop-up from 1. Any number that a ticket may hold survives the way to the
/// control and back.
constexpr SInt32 RotateItem(SInt32 ticketValue) {
    return static_cast<SInt32>(CFIndex{ticketValue} + 1);
}
constexpr SInt32 RotateTicketValue(SInt32 item) {
    return static_cast<SInt32>(CFIndex{item} - 1);
}

SInt32 ReadChoice(PMTicketRef ticket, CFStringRef mainKeyword) {
    CFStringRef option = nullptr;
    if (PPDGetMainKeywordValue(ticket, mainKeyword, &option) != noErr) {
        return kMissingChoice;
    }
    return GetTicketValueForPPDOptionKeyword(GetPPDOptionMapForMainKeyword(mainKeyword), option);
}

void WriteChoice(SInt32 value, CFStringRef mainKeyword, PMTicketRef ticket) {
    const CFStringRef option = GetPPDOptionKeywordForTicketValue(GetPPDOptionMapForMainKeyword(mainKeyword), value);
    if (FindPPDKeyPairsMatch(PPDGetGlobalOptions(mainKeyword), mainKeyword, option) >= 0) {
        PPDSetMainKeyword(ticket, mainKeyword, option);
    }
}

}  // namespace

void ReadAdvancedSettings(PMTicketRef ticket, AdvancedSettings* settings) {
    settings->bookletLayoutOrder = GetTicketNumber(ticket, kBookletLayoutOrderItem, 2);
    settings->emitTPIF = GetTicketNumber(ticket, kEmitTPIFItem, 1);
    settings->ombrexEmulation = GetTicketNumber(ticket, kOmbrexEmulationKey, 1);
    settings->rotateImage = RotateItem(GetTicketNumber(ticket, kRotateImage180Item, 0));
    settings->banner = ReadChoice(ticket, kBannerMainKeyword);
    settings->jog = ReadChoice(ticket, kJogMainKeyword);
}

void WriteAdvancedSettings(const AdvancedSettings& settings, PMTicketRef ticket) {
    SetTicketNumber(ticket, kCreator, kBookletLayoutOrderItem, settings.bookletLayoutOrder);
    SetTicketNumber(ticket, kCreator, kRotateImage180Item, RotateTicketValue(settings.rotateImage));
    SetTicketNumber(ticket, kCreator, kEmitTPIFItem, settings.emitTPIF);
    WriteChoice(settings.banner, kBannerMainKeyword, ticket);
    WriteChoice(settings.jog, kJogMainKeyword, ticket);
}

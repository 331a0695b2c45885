#include "panels/advanced/advanced_sync.h"

#include "model/settings/ppd_choice.h"
#include "model/settings/ticket_access.h"
#include "model/settings/ticket_items.h"

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

}  // namespace

void ReadAdvancedSettings(PMTicketRef ticket, AdvancedSettings* settings) {
    settings->bookletLayoutOrder = GetTicketNumber(ticket, kBookletLayoutOrderItem, 2);
    settings->emitTPIF = GetTicketNumber(ticket, kEmitTPIFItem, 1);
    settings->ombrexEmulation = GetTicketNumber(ticket, kOmbrexEmulationKey, 1);
    settings->rotateImage = RotateItem(GetTicketNumber(ticket, kRotateImage180Item, 0));
    settings->banner = ReadPPDChoice(ticket, kBannerMainKeyword, kMissingChoice);
    settings->jog = ReadPPDChoice(ticket, kJogMainKeyword, kMissingChoice);
}

void WriteAdvancedSettings(const AdvancedSettings& settings, PMTicketRef ticket) {
    SetTicketNumber(ticket, kCreator, kBookletLayoutOrderItem, settings.bookletLayoutOrder);
    SetTicketNumber(ticket, kCreator, kRotateImage180Item, RotateTicketValue(settings.rotateImage));
    SetTicketNumber(ticket, kCreator, kEmitTPIFItem, settings.emitTPIF);
    WritePPDChoiceOfMap(settings.banner, kBannerMainKeyword, ticket);
    WritePPDChoiceOfMap(settings.jog, kJogMainKeyword, ticket);
}

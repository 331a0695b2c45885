#include "model/settings/ppd_choice.h"

#include "model/settings/ppd_access.h"
#include "model/settings/ppd_option_maps.h"
#include "model/settings/ppd_ui_dictionary.h"

SInt32 ReadPPDChoice(PMTicketRef ticket, CFStringRef mainKeyword, SInt32 missing) {
    CFStringRef option = nullptr;
    if (PPDGetMainKeywordValue(ticket, mainKeyword, &option) != noErr) {
        return missing;
    }
    return GetTicketValueForPPDOptionKeyword(GetPPDOptionMapForMainKeyword(mainKeyword), option);
}

void WritePPDChoiceOfMap(SInt32 value, CFStringRef mainKeyword, PMTicketRef ticket) {
    PPDSetMainKeyword(ticket, mainKeyword,
                      GetPPDOptionKeywordForTicketValue(GetPPDOptionMapForMainKeyword(mainKeyword), value));
}

void WritePPDChoice(SInt32 value, CFStringRef mainKeyword, PMTicketRef ticket) {
    const CFStringRef option = GetPPDOptionKeywordForTicketValue(GetPPDOptionMapForMainKeyword(mainKeyword), value);
    if (FindPPDKeyPairsMatch(PPDGetGlobalOptions(mainKeyword), mainKeyword, option) >= 0) {
        PPDSetMainKeyword(ticket, mainKeyword, option);
    }
}

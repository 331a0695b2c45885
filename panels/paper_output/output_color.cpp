#include "panels/paper_output/output_color.h"

#include "model/ppd_access.h"
#include "model/ppd_ui_dictionary.h"
#include "model/ticket_access.h"
#include "model/ticket_items.h"

namespace {

#define kCreator CFSTR("com.tavro.printingmanager")
#define kCorrectionMainKeyword CFSTR("JCLColorCorrection")
#define kBlackAndWhiteOption CFSTR("BlackWhite")
#define kAutomaticOption CFSTR("Auto")

bool IsCorrectedToBlackAndWhite(PMTicketRef ticket) {
    CFStringRef correction = nullptr;
    return PPDGetMainKeywordValue(ticket, kCorrectionMainKeyword, &correction) == noErr &&
           CFEqual(correction, kBlackAndWhiteOption);
}

void SetCorrection(PMTicketRef ticket, CFStringRef option) {
    if (FindPPDKeyPairsMatch(PPDGetGlobalOptions(kCorrectionMainKeyword), kCorrectionMainKeyword, option) >= 0) {
        PPDSetMainKeyword(ticket, kCorrectionMainKeyword, option);
    }
}

}  // namespace

SInt32 ReadOutputColor(PMTicketRef ticket) {
    const SInt32 color = GetTicketNumber(ticket, kFinishingOutputColorItem, kOutputInColor);
    return color == kOutputInBlackAndWhite || IsCorrectedToBlackAndWhite(ticket) ? kOutputInBlackAndWhite
                                                                                 : kOutputInColor;
}

void WriteOutputColor(SInt32 color, PMTicketRef ticket) {
    SetTicketNumber(ticket, kCreator, kFinishingOutputColorItem, color);
    if (color == kOutputInBlackAndWhite) {
        SetCorrection(ticket, kBlackAndWhiteOption);
    } else if (IsCorrectedToBlackAndWhite(ticket)) {
        SetCorrection(ticket, kAutomaticOption);
    }
}

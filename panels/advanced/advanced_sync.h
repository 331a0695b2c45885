// The settings of the Advanced panel and their items in the print settings ticket.
#pragma once

#include "platform/printing/PMTicket.h"

#define kBannerMainKeyword CFSTR("JCLBanner")
#define kJogMainKeyword CFSTR("Jog")

/// The settings as the panel's controls count them.
struct AdvancedSettings {
    SInt32 bookletLayoutOrder;  // item of the pop-up
    SInt32 rotateImage;         // item of the pop-up: 1 off, 2 by 180 degrees
    SInt32 emitTPIF;            // 1 when the job carries the printer's job instructions
    SInt32 banner;              // ticket value of the JCLBanner option; -1 for an option that has none
    SInt32 jog;                 // ticket value of the Jog option; -1 for an option that has none
    // Controls that other editions of the panel have. Their values go nowhere; the first is the ticket's.
    SInt32 ombrexEmulation;
    SInt32 other625;
    SInt32 other627;
    SInt32 other629;
};

/// Reads all settings that the ticket holds. What is missing or of another type is: layout order 2, rotation off, job
/// instructions 1, emulation 1, banner and jog 1.
void ReadAdvancedSettings(PMTicketRef ticket, AdvancedSettings* settings);

/// Writes the three numbers, and of the two PPD choices those that the PPD offers.
void WriteAdvancedSettings(const AdvancedSettings& settings, PMTicketRef ticket);

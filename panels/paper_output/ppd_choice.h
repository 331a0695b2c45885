// The ticket values of PPD options in a print settings ticket.
#pragma once

#include "platform/printing/PMTicket.h"

/// The ticket value of the option that the ticket asks for; `missing` when it asks for none, or for one without a
/// value.
SInt32 ReadPPDChoice(PMTicketRef ticket, CFStringRef mainKeyword, SInt32 missing);

/// Asks for the option with that ticket value. Nothing happens when the printer's PPD has none.
void WritePPDChoice(SInt32 value, CFStringRef mainKeyword, PMTicketRef ticket);

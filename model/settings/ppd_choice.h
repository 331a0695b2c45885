// The ticket values of PPD options in a print settings ticket.
#pragma once

#include "platform/printing/PMTicket.h"

/// The ticket value of the option that the ticket asks for, kNoTicketValue for one without a value; `missing` when it
/// asks for none.
SInt32 ReadPPDChoice(PMTicketRef ticket, CFStringRef mainKeyword, SInt32 missing);

/// Asks for the option with that ticket value in the option map, whether the printer has it or not.
void WritePPDChoiceOfMap(SInt32 value, CFStringRef mainKeyword, PMTicketRef ticket);

/// Asks for the option with that ticket value. Nothing happens when the printer's PPD has none, so what was asked for
/// without a value stays until the user chooses something else.
void WritePPDChoice(SInt32 value, CFStringRef mainKeyword, PMTicketRef ticket);

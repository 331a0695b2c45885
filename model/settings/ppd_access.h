// PPD main keywords in a print settings ticket: which option of each the job asks for.
//
// They lie in the ticket's PPD dictionary, main keyword to option keyword. An options list (see ppd_ui_dictionary.h)
// lets an option be named by its position.
#pragma once

#include "platform/foundation/CFCollections.h"
#include "platform/printing/PMTicket.h"

/// Asks for an option of a main keyword. paramErr for a null argument or ticket 0, else the ticket's status.
OSStatus PPDSetMainKeyword(PMTicketRef ticket, CFStringRef mainKeyword, CFStringRef optionKeyword);

/// Asks for the option at a position of the list; paramErr outside of it.
OSStatus PPDSetMainKeywordIndex(PMTicketRef ticket, CFArrayRef options, CFIndex index);

/// The option keyword that is asked for, lent, in *optionKeyword. paramErr, and null there, for a null argument and
/// when the ticket holds no string for the main keyword.
OSStatus PPDGetMainKeywordValue(PMTicketRef ticket, CFStringRef mainKeyword, CFStringRef* optionKeyword);

/// The position of the option that is asked for; -1 when the ticket holds no string for the main keyword or the list
/// lacks the option. Returns the ticket's status.
OSStatus PPDGetMainKeywordValueIndex(PMTicketRef ticket, CFStringRef mainKeyword, CFArrayRef options, CFIndex* index);

/// The position of the first row with both keywords; -1 when there is none.
CFIndex FindPPDKeyPairsMatch(CFArrayRef options, CFStringRef mainKeyword, CFStringRef optionKeyword);

// Tickets: the settings of a print job as keyed items.
//
// A ticket reference is a handle that fits in 32 bits, because sessions keep it as a number. 0 is no ticket. A
// ticket holds copies of what it is given, as deep as it goes; what it hands out is lent and stays valid until the
// item is replaced or released. The client's name (the creator) is metadata and never selects an item. The node
// arguments of the platform's calls must be kPMTopLevel.
#pragma once

#include "platform/foundation/CFBase.h"

using PMTicketRef = SInt32;

inline constexpr UInt32 kPMTopLevel = 0;
inline constexpr Boolean kPMUnlocked = false;

inline constexpr OSStatus kPMInvalidTicket = -30896;
inline constexpr OSStatus kPMKeyNotFound = -9589;
inline constexpr OSStatus kPMItemTypeMismatch = -9590;

// The kinds of ticket; also the keys under which a session keeps them.
#define kPDE_PMPrintSettingsKey CFSTR("PMPrintSettingsTicket")
#define kPDE_PMPageFormatKey CFSTR("PMPageFormatTicket")
#define kPDE_PMPrinterInfoKey CFSTR("PMPrinterInfoTicket")

/// A new empty ticket, owned by the caller.
OSStatus PMTicketCreate(CFAllocatorRef allocator, CFStringRef kind, PMTicketRef* ticket);
/// Ends the ticket and sets the variable to 0.
OSStatus PMTicketReleaseAndClear(PMTicketRef* ticket);

// Setters: copy the value under the key. paramErr for a null key or value, kPMInvalidTicket for no such ticket.
OSStatus PMTicketSetCFNumber(PMTicketRef ticket, CFStringRef client, CFStringRef key, CFNumberRef value,
                             Boolean locked);
OSStatus PMTicketSetCFString(PMTicketRef ticket, CFStringRef client, CFStringRef key, CFStringRef value,
                             Boolean locked);
OSStatus PMTicketSetCFBoolean(PMTicketRef ticket, CFStringRef client, CFStringRef key, CFBooleanRef value,
                              Boolean locked);
OSStatus PMTicketSetCFArray(PMTicketRef ticket, CFStringRef client, CFStringRef key, CFArrayRef value, Boolean locked);
OSStatus PMTicketSetCFDictionary(PMTicketRef ticket, CFStringRef client, CFStringRef key, CFDictionaryRef value,
                                 Boolean locked);

// Getters: the item, lent. kPMKeyNotFound when it is absent and kPMItemTypeMismatch when it is of another kind; the
// out variable is then untouched.
OSStatus PMTicketGetCFNumber(PMTicketRef ticket, UInt32 node1, UInt32 node2, CFStringRef key, CFNumberRef* value);
OSStatus PMTicketGetCFString(PMTicketRef ticket, UInt32 node1, UInt32 node2, CFStringRef key, CFStringRef* value);
OSStatus PMTicketGetCFBoolean(PMTicketRef ticket, UInt32 node1, UInt32 node2, CFStringRef key, CFBooleanRef* value);
OSStatus PMTicketGetCFArray(PMTicketRef ticket, UInt32 node1, UInt32 node2, CFStringRef key, CFArrayRef* value);
OSStatus PMTicketGetCFDictionary(PMTicketRef ticket, UInt32 node1, UInt32 node2, CFStringRef key,
                                 CFDictionaryRef* value);

/// Removes an item; kPMKeyNotFound when there is none.
OSStatus PMTicketReleaseItem(PMTicketRef ticket, UInt32 node1, CFStringRef key);

/// The ticket's PPD dictionary (PPD main keyword to option keyword), lent and mutable, made when there is none.
OSStatus PMTicketGetPPDDict(PMTicketRef ticket, UInt32 node1, CFMutableDictionaryRef* dictionary);

/// A new dictionary of all items, the PPD dictionary under "PPDDict" when it is not empty: what a settings file holds.
/// Nothing in it changes with the ticket; long lists cost nothing.
CFMutableDictionaryRef PMTicketCopyItems(PMTicketRef ticket);
/// Replaces all items by copies of a dictionary's, "PPDDict" becoming the PPD dictionary. Entries of that dictionary
/// that are not strings are left out.
OSStatus PMTicketSetItems(PMTicketRef ticket, CFDictionaryRef items);

// Tickets of a session, and numbers in tickets and dictionaries.
//
// Tickets and the records inside them hold numbers of the platform's index width, 64 bits; every setting has 32. A
// stored number that does not fit its setting, or has a fraction, is read as if it were missing.
#pragma once

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFNumber.h"
#include "platform/foundation/CFString.h"
#include "platform/printing/PMSession.h"

#include <limits>

/// The creator under which the shell and the functions of this floor write. A creator is metadata: it never selects
/// an item. Panels name their own.
#define kTicketCreator CFSTR("T")

/// "Not set" in every numeric setting: the job's or the printer's own value holds. Sign-extended where it is stored
/// wider.
inline constexpr SInt32 kTicketValueUnset = std::numeric_limits<SInt32>::min();

/// Finds a ticket of the session by its key (kPDE_PMPrintSettingsKey and its kin). Returns the session's status, or
/// kPMItemTypeMismatch for data that is no 32-bit number; *ticket is then untouched.
OSStatus GetTicketFromSession(PMPrintSession session, CFStringRef key, PMTicketRef* ticket);

/// The ticket's number under the key; the default when it is absent, no number or not a 32-bit integer.
SInt32 GetTicketNumber(PMTicketRef ticket, CFStringRef key, SInt32 defaultValue);
/// Writes the number, index-sized, under the key in the creator's name. Returns the ticket's status.
OSStatus SetTicketNumber(PMTicketRef ticket, CFStringRef creator, CFStringRef key, SInt32 value);

// In dictionaries. A null dictionary, key or value is as good as an absent one: getters answer false and leave the
// out variable alone, setters do nothing.

/// Reads an integer. False when there is none.
Boolean GetCFIndexFromCFDictionary(CFDictionaryRef dictionary, CFStringRef key, CFIndex* value);
/// Sets the key to an index-sized number.
void WriteTicketValue(CFMutableDictionaryRef dictionary, CFStringRef key, CFIndex value);
/// Sets the key to the number that `value` points at, which has the C type that `type` names.
void CFDictionarySetNumber(CFMutableDictionaryRef dictionary, CFStringRef key, const void* value, CFNumberType type);
/// Reads a number into a variable of the C type that `type` names. False when the key holds no number, or one that the
/// type cannot hold exactly.
Boolean CFDictionaryGetNumber(CFDictionaryRef dictionary, CFStringRef key, void* value, CFNumberType type);
/// Sets the key to a string of zero-terminated bytes; nothing happens for bytes that are not of the encoding.
void CFDictionarySetCString(CFMutableDictionaryRef dictionary, CFStringRef key, const char* bytes,
                            CFStringEncoding encoding);
/// The dictionary under the key, lent by the outer one; its maker must have made it mutable. When there is none, or a
/// value of another kind, an empty one takes its place. Null for a null argument.
CFMutableDictionaryRef CFDictionaryGetDictionaryOrCreate(CFMutableDictionaryRef dictionary, CFStringRef key);

// Print sessions: what a print dialog and its extensions share.
#pragma once

#include "platform/printing/PMPrinter.h"
#include "platform/printing/PMTicket.h"

using PMPrintSession = struct OpaquePMPrintSession*;

/// A new session without tickets or printer.
OSStatus PMCreateSession(PMPrintSession* session);
/// Ends a session and releases what it holds.
OSStatus PMReleaseSession(PMPrintSession session);

/// Keeps a counted object under the key. Tickets are kept as 32-bit numbers (CFNumber) of their references.
OSStatus PMSessionSetDataInSession(PMPrintSession session, CFStringRef key, CFTypeRef data);
/// The object under the key, retained for the caller; kPMKeyNotFound when there is none.
OSStatus PMSessionGetDataFromSession(PMPrintSession session, CFStringRef key, CFTypeRef* data);

/// Makes the printer the session's own; the session retains it.
OSStatus PMSessionSetCurrentPMPrinter(PMPrintSession session, PMPrinter printer);
/// The session's printer, lent; kPMNoDefaultPrinter when there is none.
OSStatus PMSessionGetCurrentPrinter(PMPrintSession session, PMPrinter* printer);

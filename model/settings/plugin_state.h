// What the whole plug-in knows while a dialog is up: its bundle, the print session, and the way back to the shell.
#pragma once

#include "platform/printing/PMSession.h"

/// The plug-in's own bundle, lent; null before the shell's Prologue and after its Terminate.
CFBundleRef GetPDEBundle();
/// Called by the shell, which keeps the bundle alive as long as it is set here.
void SetPDEBundle(CFBundleRef bundle);

/// The session that the shell was initialised with, lent; null outside of that.
PMPrintSession GetCurrentPrintSession();
void SetCurrentPrintSession(PMPrintSession session);

/// Whether the printer's panels show and keep all of a paper, and the user's library of papers: a production printer's.
/// False until the printer's features are loaded.
bool ShowsStockDetails();
void SetShowsStockDetails(bool shows);

/// Lets a modal dialog pull all panels' settings from the tickets (true) or push them there (false). The session is
/// always the current one, whatever is passed. Returns the shell's status; kPMInvalidPrintSession without a shell.
OSStatus PDESync(PMPrintSession session, Boolean ticketsToControls);

/// What PDESync calls: the shell's Sync on its own context. Set by the shell, null when it goes.
using PDESyncProc = OSStatus (*)(PMPrintSession session, Boolean ticketsToControls);
void SetPDESyncProc(PDESyncProc proc);

/// No usable print session, or no context to sync.
inline constexpr OSStatus kPMInvalidPrintSession = -30879;

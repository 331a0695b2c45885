// The dialog in which the user chooses what job notes follow.
#pragma once

#include "model/settings/job_context.h"
#include "model/stock_dialogs/dialog_mode.h"
#include "panels/job_notes/job_notes_preferences.h"

inline constexpr SInt16 kJobNotesPreferencesOK = 1;
inline constexpr SInt16 kJobNotesPreferencesCancel = 2;

/// Shows the stored preferences (nib "JobNotes", window "JobNotesPrefs") until the user ends the dialog. After OK they
/// are stored, *preferences is what was chosen and *result kJobNotesPreferencesOK; else nothing has changed and
/// *result is kJobNotesPreferencesCancel. Mode and context make no difference to it. paramErr for a null pointer, else
/// the status of loading the nib.
OSStatus RunModalJobNotesPreferencesDialog(CFBundleRef bundle, DialogMode mode, JobContext context,
                                           JobNotesPreferencesOptions* preferences, SInt16* result);

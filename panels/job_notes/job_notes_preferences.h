// What the user wants job notes to follow by themselves, for all jobs.
#pragma once

#include "platform/foundation/CFBase.h"

/// Flags: not 0 when set.
struct JobNotesPreferencesOptions {
    SInt32 useDocumentNameAsJobName;
    SInt32 useLoginNameAsSenderName;
    SInt32 useLoginNameAsRecipientName;
};

inline constexpr OSStatus kNoJobNotesPreferences = -1;

/// Reads the user's file "com.tavro.print.jobnotes.plist". A flag that it lacks stays as it was. Returns
/// kNoJobNotesPreferences, and nothing read, when there is no file or it cannot be read.
OSStatus RetrieveJobNotesPreferences(JobNotesPreferencesOptions* preferences);

/// The same for a user without a file: all flags are set.
JobNotesPreferencesOptions JobNotesPreferencesOrDefaults();

/// Writes all flags. A line on standard error tells when it fails.
void StoreJobNotesPreferences(const JobNotesPreferencesOptions& preferences);

#include "panels/job_notes/job_notes_preferences.h"

#include "model/settings/preference_files.h"
#include "model/settings/record_ticket.h"

#include <iterator>

namespace {

#define kJobNotesPreferencesFile CFSTR("com.tavro.print.jobnotes.plist")

struct Flag {
    const char* key;
    SInt32 JobNotesPreferencesOptions::*field;
};

constexpr Flag kFlags[] = {
    // key, field
    {"useDocumentNameAsJobName", &JobNotesPreferencesOptions::useDocumentNameAsJobName},
    {"useLoginNameAsSenderName", &JobNotesPreferencesOptions::useLoginNameAsSenderName},
    {"useLoginNameAsRecipientName", &JobNotesPreferencesOptions::useLoginNameAsRecipientName},
};
static_assert(std::size(kFlags) == 3);

}  // namespace

OSStatus RetrieveJobNotesPreferences(JobNotesPreferencesOptions* preferences) {
    const auto stored = CFRef<CFMutableDictionaryRef>::adopt(CopyUserPreferences(kJobNotesPreferencesFile));
    if (!stored) {
        return kNoJobNotesPreferences;
    }
    for (const Flag& flag : kFlags) {
        ReadTicketValue(stored.get(), CFStringMakeConstant(flag.key), &(preferences->*flag.field));
    }
    return noErr;
}

JobNotesPreferencesOptions JobNotesPreferencesOrDefaults() {
    JobNotesPreferencesOptions preferences{};
    return RetrieveJobNotesPreferences(&preferences) == noErr ? preferences : JobNotesPreferencesOptions{1, 1, 1};
}

void StoreJobNotesPreferences(const JobNotesPreferencesOptions& preferences) {
    const auto stored = CreateRecordDictionary();
    for (const Flag& flag : kFlags) {
        WriteTicketValue(stored.get(), CFStringMakeConstant(flag.key), preferences.*flag.field);
    }
    WriteUserPreferences(kJobNotesPreferencesFile, stored.get());
}

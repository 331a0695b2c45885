// The five texts of a job's notes, between a ticket and the panel.
#pragma once

#include "model/settings/ticket_items.h"
#include "panels/job_notes/job_notes_preferences.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/printing/PMTicket.h"

#include <array>

/// Never null once they have been read.
struct JobNotesTexts {
    CFRef<CFStringRef> jobName;
    CFRef<CFStringRef> senderName;
    CFRef<CFStringRef> recipientName;
    CFRef<CFStringRef> sheetMessage;  // for the banner sheet
    CFRef<CFStringRef> message;       // special instructions
};

struct JobNote {
    const char* ticketKey;
    CFRef<CFStringRef> JobNotesTexts::*text;
    SInt32 field;  // number of its control
    SInt32 limit;  // UTF-16 code units that the user may type
};

inline constexpr std::array kJobNotes{
    // ticket key, text, field, limit; in the order in which they are read and written
    JobNote{kJobNotesMessageName, &JobNotesTexts::message, 2005, 1000},
    JobNote{kJobNotesSheetMessageName, &JobNotesTexts::sheetMessage, 2004, 1000},
    JobNote{kJobNotesJobNameName, &JobNotesTexts::jobName, 2001, 255},
    JobNote{kJobNotesSenderNameName, &JobNotesTexts::senderName, 2002, 255},
    JobNote{kJobNotesRecipientName, &JobNotesTexts::recipientName, 2003, 255},
};
static_assert(kJobNotes.size() == 5);

/// What texts are when nobody has typed any, and what they follow by a preference.
struct JobNotesSources {
    CFRef<CFStringRef> documentName;
    CFRef<CFStringRef> userName;
};

/// The job's name as the print dialog gave it, else the localised "Unknown", and the login's full name.
JobNotesSources CopyJobNotesSources(CFBundleRef bundle, PMTicketRef ticket);

/// The ticket's texts; what it lacks is the document's name, the user's name for sender and recipient, or empty.
JobNotesTexts ReadJobNotes(PMTicketRef ticket, const JobNotesSources& sources);

/// A text that is not empty goes into the ticket; any other, or null, is taken out of it.
void WriteJobNotes(const JobNotesTexts& texts, PMTicketRef ticket);

/// Gives the texts that follow something by a preference that was just turned on that text, whatever they were.
void FollowNewPreferences(const JobNotesPreferencesOptions& before, const JobNotesPreferencesOptions& now,
                          const JobNotesSources& sources, JobNotesTexts* texts);

/// The recipient follows the sender by its preference, also a sender whose name was typed.
void FollowSender(const JobNotesPreferencesOptions& preferences, JobNotesTexts* texts);

/// Whether the user may type into a field.
bool IsJobNoteFieldEnabled(SInt32 field, const JobNotesPreferencesOptions& preferences);

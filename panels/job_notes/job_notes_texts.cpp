#include "panels/job_notes/job_notes_texts.h"

#include "platform/files/user_names.h"
#include "platform/foundation/CFBundle.h"
#include "platform/printing/PMPrinter.h"

namespace {

#define kJobNotesCreator CFSTR("com.tavro.printingmanager")

/// The ticket's text under the key, else `missing`.
CFRef<CFStringRef> CopyTextOr(PMTicketRef ticket, CFStringRef key, CFStringRef missing) {
    CFStringRef text = missing;
    PMTicketGetCFString(ticket, kPMTopLevel, kPMTopLevel, key, &text);
    return CFRef<CFStringRef>::retain(text);
}

}  // namespace

JobNotesSources CopyJobNotesSources(CFBundleRef bundle, PMTicketRef ticket) {
    const auto unknown = CFRef<CFStringRef>::adopt(
        CFBundleCopyLocalizedString(bundle, CFSTR("Unknown"), CFSTR("Unknown"), CFSTR("Localizable")));
    return {CopyTextOr(ticket, kPMJobNameKey, unknown.get()), CFRef<CFStringRef>::adopt(CSCopyUserName(false))};
}

JobNotesTexts ReadJobNotes(PMTicketRef ticket, const JobNotesSources& sources) {
    JobNotesTexts texts{sources.documentName, sources.userName, sources.userName, CFRef<CFStringRef>::retain(CFSTR("")),
                        CFRef<CFStringRef>::retain(CFSTR(""))};
    for (const JobNote& note : kJobNotes) {
        texts.*note.text = CopyTextOr(ticket, CFStringMakeConstant(note.ticketKey), (texts.*note.text).get());
    }
    return texts;
}

void WriteJobNotes(const JobNotesTexts& texts, PMTicketRef ticket) {
    for (const JobNote& note : kJobNotes) {
        const CFStringRef text = (texts.*note.text).get();
        const CFStringRef key = CFStringMakeConstant(note.ticketKey);
        if (CFStringGetLength(text) > 0) {
            PMTicketSetCFString(ticket, kJobNotesCreator, key, text, kPMUnlocked);
        } else {
            PMTicketReleaseItem(ticket, kPMTopLevel, key);
        }
    }
}

void FollowNewPreferences(const JobNotesPreferencesOptions& before, const JobNotesPreferencesOptions& now,
                          const JobNotesSources& sources, JobNotesTexts* texts) {
    if (before.useDocumentNameAsJobName == 0 && now.useDocumentNameAsJobName != 0) {
        texts->jobName = sources.documentName;
    }
    if (before.useLoginNameAsSenderName == 0 && now.useLoginNameAsSenderName != 0) {
        texts->senderName = sources.userName;
    }
}

void FollowSender(const JobNotesPreferencesOptions& preferences, JobNotesTexts* texts) {
    if (preferences.useLoginNameAsRecipientName != 0) {
        texts->recipientName = texts->senderName;
    }
}

bool IsJobNoteFieldEnabled(SInt32 field, const JobNotesPreferencesOptions& preferences) {
    switch (field) {
        case 2001:
            return preferences.useDocumentNameAsJobName == 0;
        case 2002:
            return preferences.useLoginNameAsSenderName == 0;
        case 2003:
            return preferences.useLoginNameAsRecipientName == 0;
        default:
            return true;
    }
}

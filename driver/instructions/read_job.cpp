#include "driver/instructions/read_job.h"

#include "driver/instructions/read_instructions.h"
#include "driver/instructions/read_paper.h"
#include "driver/instructions/ticket_values.h"
#include "jobtypes/records/fax_cover_options.h"
#include "jobtypes/records/fax_numbers.h"
#include "jobtypes/records/fax_options.h"
#include "jobtypes/records/fax_recipient_list.h"
#include "jobtypes/records/job_type.h"
#include "model/settings/setting_map.h"
#include "model/settings/ticket_items.h"

namespace {

JobKind kindOf(SInt32 jobType) {
    switch (jobType) {
        case kJobTypeSave:
            return JobKind::save;
        case kJobTypePrintAndSave:
            return JobKind::printAndSave;
        case kJobTypeFax:
            return JobKind::fax;
        case kJobTypeSecurePrint:
            return JobKind::secure;
        case kJobTypeDelayedPrint:
            return JobKind::delayed;
        case kJobTypeSampleSet:
            return JobKind::sampleSet;
        default:  // a kind of another edition is printed
            return JobKind::print;
    }
}

std::optional<std::int64_t> momentIn(CFDictionaryRef dictionary, CFStringRef key) {
    std::int64_t moment = 0;
    return CFDictionaryGetNumber(dictionary, key, &moment, kCFNumberSInt64Type) ? std::optional(moment) : std::nullopt;
}

std::string nameOf(const FaxRecipient& recipient) {
    const std::string first = utf8Text(recipient.firstName());
    const std::string last = utf8Text(recipient.lastName());
    return first + (first.empty() || last.empty() ? "" : " ") + last;
}

FaxCoverInstruction readFaxCover(CFDictionaryRef dictionary) {
    const FaxCoverOptions options = FaxCoverOptions::fromDictionary(dictionary);
    const auto text = [](const FaxCoverOptions::Text& value) { return utf8Text(value.get()); };
    FaxCoverInstruction cover;
    cover.paperSize = paperOption(CFSTR("PageSize"), UIToTicket(FaxCoverSizeMap, static_cast<SInt32>(options.size)));
    cover.labels = {textIn(dictionary, kFaxCoverLocalizedToLabel), textIn(dictionary, kFaxCoverLocalizedFromLabel),
                    textIn(dictionary, kFaxCoverLocalizedPhoneLabel), textIn(dictionary, kFaxCoverLocalizedFaxLabel),
                    textIn(dictionary, kFaxCoverLocalizedNotesLabel)};
    if (options.showSender) {
        cover.sender = {text(options.senderName), text(options.senderOrganization), text(options.senderPhoneNumber),
                        text(options.senderFaxNumber), text(options.senderEmailAddress)};
    }
    cover.hasRecipients = options.showRecipients == kFaxCoverRecipientList;
    if (options.showRecipients == kFaxCoverRecipientText) {
        cover.recipientText = text(options.customRecipientText);
    }
    cover.notes = text(options.notes);
    cover.watermark = text(options.watermarkName);
    cover.image = text(options.imageName);
    return cover;
}

FaxInstruction readFax(PMTicketRef ticket) {
    const CFDictionaryRef options = dictionaryOf(ticket, kFaxOptionsTicketKey);
    FaxInstruction fax;
    if (flagIn(options, kFaxPrintCoverSheetProperty, kFaxDefaultCoverSheet)) {
        fax.coverSheet = readFaxCover(options);
    }
    fax.hasConfirmation = flagIn(options, kFaxPrintConfirmationSheetProperty, kFaxDefaultConfirmationSheet);
    fax.speed = numberIn(options, kFaxSendSpeedProperty, kFaxDefaultSendSpeed);
    fax.resolution = numberIn(options, kFaxResolutionProperty, kFaxDefaultResolution);
    fax.sendTime = momentIn(options, kFaxSendTimeProperty);
    return fax;
}

std::optional<JobNotesInstruction> readNotes(PMTicketRef ticket) {
    const JobNotesInstruction notes{textOf(ticket, kJobNotesJobNameItem), textOf(ticket, kJobNotesSenderNameItem),
                                    textOf(ticket, kJobNotesRecipientItem), textOf(ticket, kJobNotesSheetMessageItem),
                                    textOf(ticket, kJobNotesMessageItem)};
    return notes == JobNotesInstruction() ? std::nullopt : std::optional(notes);
}

}  // namespace

std::vector<FaxRecipientInstruction> readFaxRecipients(CFArrayRef ticket) {
    const FaxRecipientList list(ticket);
    std::vector<FaxRecipientInstruction> recipients;
    for (CFIndex i = 0; i < list.count(); ++i) {
        const FaxRecipient& recipient = *list.recipientAtIndex(i);
        recipients.push_back({nameOf(recipient), utf8Text(CopyDialingStringFromFaxNumber(recipient.faxNumber()).get()),
                              utf8Text(recipient.organization()), utf8Text(recipient.mailbox()),
                              utf8Text(recipient.faxNumber())});
    }
    return recipients;
}

JobKind readJobKind(PMTicketRef printSettings) {
    return kindOf(numberIn(dictionaryOf(printSettings, kJobTypeTicketKey), kJobTypeKey, kJobTypeNormal));
}

void readJob(PMTicketRef ticket, JobInstructions* job) {
    job->kind = readJobKind(ticket);
    if (job->kind == JobKind::fax) {
        job->fax = readFax(ticket);
    } else if (job->kind == JobKind::delayed) {
        job->printTime = momentIn(dictionaryOf(ticket, kJobTypeTicketKey), kDelayedPrintTimeKey).value_or(0);
    }
    job->notes = readNotes(ticket);
    job->hasJobInstructions = GetTicketNumber(ticket, kEmitTPIFItem, 1) != 0;
}

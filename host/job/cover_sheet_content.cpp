#include "host/job/cover_sheet_content.h"

#include "host/settings/dictionary_values.h"
#include "host/settings/panel_choices.h"
#include "host/settings/panel_items.h"
#include "host/settings/ticket_items.h"

namespace {

// The items of the ticket, and their keys. The plug-in writes them; it is known by its factory only, so they stand
// here a second time, and a test holds the two against each other.

constexpr double kSizeA4 = 2;

// The choices of "ShowRecipients".
constexpr double kNoRecipients = 1;
constexpr double kRecipientList = 2;
constexpr double kOwnText = 3;

CoverSheetContent::Recipient readRecipient(CFDictionaryRef fields) {
    std::string name = stringIn(fields, CFSTR("FirstName"));
    const std::string lastName = stringIn(fields, CFSTR("LastName"));
    if (!name.empty() && !lastName.empty()) {
        name += ' ';
    }
    return {name + lastName, stringIn(fields, CFSTR("Organization")), stringIn(fields, CFSTR("FaxNumber"))};
}

std::vector<CoverSheetContent::Recipient> readRecipients(PMTicketRef ticket) {
    const CFArrayRef list = arrayItem(ticket, kFaxRecipientsItem);
    std::vector<CoverSheetContent::Recipient> recipients;
    for (CFIndex i = 0; i < CFArrayGetCount(list); ++i) {
        const void* const fields = CFArrayGetValueAtIndex(list, i);
        if (CFGetTypeID(fields) == CFDictionaryGetTypeID()) {
            recipients.push_back(readRecipient(static_cast<CFDictionaryRef>(fields)));
        }
    }
    return recipients;
}

double chosenRecipients(CFDictionaryRef options) {
    const double chosen = numberIn(options, CFSTR("ShowRecipients")).value_or(kRecipientList);
    return chosen == kNoRecipients || chosen == kOwnText ? chosen : kRecipientList;
}

}  // namespace

std::optional<CoverSheetContent> readCoverSheetContent(PMTicketRef printSettings) {
    const CFDictionaryRef options = dictionaryItem(printSettings, kFaxOptionsItem);
    if (numberIn(dictionaryItem(printSettings, kJobTypeItem), kJobTypeEntry) != PanelChoices::faxJob ||
        !booleanIn(options, CFSTR("CoverSheet")).value_or(false)) {
        return std::nullopt;
    }
    CoverSheetContent content;
    content.isA4 = numberIn(options, CFSTR("Size")) == kSizeA4;
    content.labels = {stringIn(options, CFSTR("LocalizedToLabel")), stringIn(options, CFSTR("LocalizedFromLabel")),
                      stringIn(options, CFSTR("LocalizedPhoneLabel")), stringIn(options, CFSTR("LocalizedFaxLabel")),
                      stringIn(options, CFSTR("LocalizedNotesLabel"))};
    if (booleanIn(options, CFSTR("ShowSender")).value_or(true)) {
        content.sender = {stringIn(options, CFSTR("SenderName")), stringIn(options, CFSTR("SenderOrganization")),
                          stringIn(options, CFSTR("SenderPhoneNumber")), stringIn(options, CFSTR("SenderFaxNumber")),
                          stringIn(options, CFSTR("SenderEmailAddress"))};
    }
    if (const double chosen = chosenRecipients(options); chosen == kRecipientList) {
        content.recipients = readRecipients(printSettings);
    } else if (chosen == kOwnText) {
        content.recipientText = stringIn(options, CFSTR("CustomRecipientText"));
    }
    content.notes = stringIn(options, CFSTR("CoverSheetNotes"));
    if (booleanIn(options, CFSTR("ShowWatermark")).value_or(false)) {
        content.watermark = stringIn(options, CFSTR("WatermarkName"));
    }
    content.image = stringIn(options, CFSTR("ImageName"));
    return content;
}

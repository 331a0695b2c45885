#include "jobtypes/dialogs/lan_fax_options.h"

#include "jobtypes/records/fax_options.h"
#include "jobtypes/records/job_type.h"
#include "model/settings/record_ticket.h"

namespace {

bool ReadBoolean(CFDictionaryRef dictionary, CFStringRef key, bool defaultValue) {
    const void* value = CFDictionaryGetValue(dictionary, key);
    return CFGetTypeID(value) == CFBooleanGetTypeID() ? CFBooleanGetValue(static_cast<CFBooleanRef>(value))
                                                      : defaultValue;
}

CFIndex ReadNumber(CFDictionaryRef dictionary, CFStringRef key, CFIndex defaultValue) {
    CFIndex value = defaultValue;
    GetCFIndexFromCFDictionary(dictionary, key, &value);
    return value;
}

CFRef<CFStringRef> ReadText(CFDictionaryRef dictionary, CFStringRef key) {
    const CFStringRef text = GetRecordString(dictionary, key);
    return CFStringGetLength(text) > 0 ? CFRef<CFStringRef>::retain(text) : nullptr;
}

void WriteBoolean(CFMutableDictionaryRef dictionary, CFStringRef key, bool value) {
    CFDictionarySetValue(dictionary, key, value ? kCFBooleanTrue : kCFBooleanFalse);
}

void WriteText(CFMutableDictionaryRef dictionary, CFStringRef key, CFStringRef text) {
    if (text != nullptr) {
        CFDictionarySetValue(dictionary, key, text);
    }
}

}  // namespace

LANFaxOptions LANFaxOptions::fromDictionary(CFDictionaryRef dictionary) {
    LANFaxOptions options{
        .confirmationSheet = ReadBoolean(dictionary, kFaxPrintConfirmationSheetProperty, kFaxDefaultConfirmationSheet),
        .sendSpeed = ReadNumber(dictionary, kFaxSendSpeedProperty, kFaxDefaultSendSpeed),
        .resolution = ReadNumber(dictionary, kFaxResolutionProperty, kFaxDefaultResolution),
        .sendTime = {},
        .dialingPrefix = ReadText(dictionary, kFaxDialingPrefixProperty),
        .creditCard = ReadText(dictionary, kFaxCreditCardProperty),
        .coverSheet = ReadBoolean(dictionary, kFaxPrintCoverSheetProperty, kFaxDefaultCoverSheet),
        .coverSheetNotes = ReadText(dictionary, kFaxCoverSheetNotesProperty),
        .promptDuplicate = ReadBoolean(dictionary, kFaxPromptDuplicateProperty, kFaxDefaultPrompt),
        .promptRemove = ReadBoolean(dictionary, kFaxPromptRemoveProperty, kFaxDefaultPrompt),
    };
    LongDateTime sendTime = 0;
    if (CFDictionaryGetNumber(dictionary, kFaxSendTimeProperty, &sendTime, kCFNumberSInt64Type)) {
        options.sendTime = sendTime;
    }
    return options;
}

void LANFaxOptions::toDictionary(CFMutableDictionaryRef dictionary, CFStringRef notesLabel) const {
    WriteBoolean(dictionary, kFaxPrintConfirmationSheetProperty, confirmationSheet);
    WriteTicketValue(dictionary, kFaxSendSpeedProperty, sendSpeed);
    WriteTicketValue(dictionary, kFaxResolutionProperty, resolution);
    if (sendTime) {
        CFDictionarySetNumber(dictionary, kFaxSendTimeProperty, &*sendTime, kCFNumberSInt64Type);
    }
    WriteText(dictionary, kFaxDialingPrefixProperty, dialingPrefix.get());
    WriteText(dictionary, kFaxCreditCardProperty, creditCard.get());
    WriteBoolean(dictionary, kFaxPrintCoverSheetProperty, coverSheet);
    if (coverSheet && CFStringGetLength(coverSheetNotes.get()) > 0) {
        CFDictionarySetValue(dictionary, kFaxCoverSheetNotesProperty, coverSheetNotes.get());
        CFDictionarySetValue(dictionary, kFaxCoverLocalizedNotesLabel, notesLabel);
    } else if (coverSheet) {
        CFDictionaryRemoveValue(dictionary, kFaxCoverLocalizedNotesLabel);
    }
    WriteBoolean(dictionary, kFaxPromptDuplicateProperty, promptDuplicate);
    WriteBoolean(dictionary, kFaxPromptRemoveProperty, promptRemove);
}

void RevertLANFaxOptions(CFMutableDictionaryRef dictionary, LANFaxTab tab) {
    if (tab == LANFaxTab::options) {
        for (CFStringRef key : {kFaxPrintConfirmationSheetProperty, kFaxSendSpeedProperty, kFaxResolutionProperty,
                                kFaxSendTimeProperty, kFaxDialingPrefixProperty, kFaxCreditCardProperty,
                                kFaxPrintCoverSheetProperty, kFaxCoverSheetNotesProperty}) {
            CFDictionaryRemoveValue(dictionary, key);
        }
    } else if (tab == LANFaxTab::preferences) {
        CFDictionaryRemoveValue(dictionary, kFaxPromptRemoveProperty);
        CFDictionaryRemoveValue(dictionary, kFaxPromptDuplicateProperty);
    }
}

LongDateTime SendTimeOfClock(const LongDateRec& clock, LongDateTime now) {
    LongDateTime moment = 0;
    LongDateToSeconds(&clock, &moment);
    return moment < now ? NextTimeOfDay(clock, now) : moment;
}

LongDateRec ClockOfSendTime(std::optional<LongDateTime> sendTime, LongDateTime now) {
    LongDateRec clock{};
    LongSecondsToDate(sendTime ? &*sendTime : &now, &clock);
    if (!sendTime) {
        clock.ld.hour = clock.ld.minute = clock.ld.second = 0;
    }
    return clock;
}

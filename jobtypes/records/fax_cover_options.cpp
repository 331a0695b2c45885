#include "jobtypes/records/fax_cover_options.h"

#include "jobtypes/records/fax_options.h"
#include "model/settings/record_ticket.h"
#include "model/settings/setting_map.h"

#include <string>

namespace {

using Text = FaxCoverOptions::Text;

struct TextRow {
    CFStringRef key;
    Text FaxCoverOptions::*text;
};
/// Texts that are simply there or not.
const TextRow kTexts[] = {
    // key, text
    {kFaxSenderNameProperty, &FaxCoverOptions::senderName},
    {kFaxSenderOrganizationProperty, &FaxCoverOptions::senderOrganization},
    {kFaxSenderEmailAddressProperty, &FaxCoverOptions::senderEmailAddress},
    {kFaxSenderPhoneNumberProperty, &FaxCoverOptions::senderPhoneNumber},
    {kFaxSenderFaxNumberProperty, &FaxCoverOptions::senderFaxNumber},
    {kFaxCoverCustomRecipientTextProperty, &FaxCoverOptions::customRecipientText},
    {kFaxCoverSheetNotesProperty, &FaxCoverOptions::notes},
    {kFaxCoverWatermarkNameProperty, &FaxCoverOptions::watermarkName},
    {kFaxCoverImageNameProperty, &FaxCoverOptions::imageName},
};

bool ReadBoolean(CFDictionaryRef dictionary, CFStringRef key, bool absent) {
    const void* value = CFDictionaryGetValue(dictionary, key);
    return CFGetTypeID(value) == CFBooleanGetTypeID() ? CFBooleanGetValue(static_cast<CFBooleanRef>(value)) != 0
                                                      : absent;
}

void WriteBoolean(CFMutableDictionaryRef dictionary, CFStringRef key, bool value) {
    CFDictionarySetValue(dictionary, key, value ? kCFBooleanTrue : kCFBooleanFalse);
}

/// An item of a menu with so many of them.
CFIndex ReadItem(CFDictionaryRef dictionary, CFStringRef key, CFIndex count, CFIndex absent) {
    CFIndex item = 0;
    CFDictionaryGetNumber(dictionary, key, &item, kCFNumberCFIndexType);
    return item >= 1 && item <= count ? item : absent;
}

void WriteItem(CFMutableDictionaryRef dictionary, CFStringRef key, CFIndex item) {
    CFDictionarySetNumber(dictionary, key, &item, kCFNumberCFIndexType);
}

void WriteOrRemove(CFMutableDictionaryRef dictionary, CFStringRef key, CFStringRef text) {
    CFDictionaryRemoveValue(dictionary, key);
    WriteIfNotEmpty(dictionary, key, text);
}

void AppendText(std::u16string& lines, CFStringRef text) {
    const std::size_t length = lines.size();
    lines.resize(length + static_cast<std::size_t>(CFStringGetLength(text)));
    CFStringGetCharacters(text, CFRangeMake(0, CFStringGetLength(text)), lines.data() + length);
}

}  // namespace

FaxCoverOptions FaxCoverOptions::fromDictionary(CFDictionaryRef dictionary) {
    FaxCoverOptions options;
    for (const TextRow& row : kTexts) {
        options.*row.text = Text::retain(GetRecordString(dictionary, row.key));
    }
    if (!ReadBoolean(dictionary, kFaxCoverShowWatermarkProperty, false)) {
        options.watermarkName = nullptr;
    }
    options.showSender = ReadBoolean(dictionary, kFaxCoverShowSenderProperty, options.showSender);
    options.showRecipients =
        ReadItem(dictionary, kFaxCoverShowRecipientsProperty, kFaxCoverRecipientText, options.showRecipients);
    options.size = ReadItem(dictionary, kFaxCoverSizeProperty, CountMaps(FaxCoverSizeMap), options.size);
    return options;
}

void FaxCoverOptions::toDictionary(CFMutableDictionaryRef dictionary, const FaxCoverLabels& labels) const {
    for (const TextRow& row : kTexts) {
        WriteOrRemove(dictionary, row.key, (this->*row.text).get());
    }
    WriteBoolean(dictionary, kFaxCoverShowSenderProperty, showSender);
    WriteBoolean(dictionary, kFaxCoverShowWatermarkProperty, CFStringGetLength(watermarkName.get()) > 0);
    WriteItem(dictionary, kFaxCoverShowRecipientsProperty, showRecipients);
    WriteItem(dictionary, kFaxCoverSizeProperty, size);

    CFDictionarySetValue(dictionary, kFaxCoverLocalizedFromLabel, labels.from.get());
    CFDictionarySetValue(dictionary, kFaxCoverLocalizedPhoneLabel, labels.phone.get());
    CFDictionarySetValue(dictionary, kFaxCoverLocalizedFaxLabel, labels.fax.get());
    CFDictionarySetValue(dictionary, kFaxCoverLocalizedToLabel, labels.to.get());
    const bool hasNotes = CFStringGetLength(notes.get()) > 0;
    WriteOrRemove(dictionary, kFaxCoverLocalizedNotesLabel, hasNotes ? labels.notes.get() : nullptr);
}

CFRef<CFStringRef> CreateLANFaxSenderInformation(CFStringRef name, CFStringRef organization, CFStringRef email,
                                                 CFStringRef phoneLabel, CFStringRef phone, CFStringRef faxLabel,
                                                 CFStringRef fax) {
    struct Line {
        CFStringRef label;
        CFStringRef text;
    };
    const Line lines[] = {
        {nullptr, name}, {nullptr, organization}, {nullptr, email}, {phoneLabel, phone}, {faxLabel, fax}};
    std::u16string information;
    for (const Line& line : lines) {
        if (CFStringGetLength(line.text) > 0) {
            if (line.label != nullptr) {
                AppendText(information, line.label);
                information += u" : ";
            }
            AppendText(information, line.text);
            information += u'\n';
        }
    }
    return CFRef<CFStringRef>::adopt(CFStringCreateWithCharacters(kCFAllocatorDefault, information.data(),
                                                                  static_cast<CFIndex>(information.size())));
}

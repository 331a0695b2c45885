// The options of a cover sheet and the dictionary that holds them.

#include "jobtypes/records/fax_cover_options.h"

#include "jobtypes/records/fax_options.h"
#include "model/settings/record_ticket.h"
#include "tests/support/cf_values.h"

#include <gtest/gtest.h>

namespace {

const FaxCoverLabels kLabels{.from = makeCFString("F"),
                             .phone = makeCFString("P"),
                             .fax = makeCFString("X"),
                             .to = makeCFString("T"),
                             .notes = makeCFString("N")};

std::string information(const char* name, const char* organization, const char* email, const char* phone,
                        const char* fax) {
    const auto text = [](const char* utf8) { return utf8 != nullptr ? makeCFString(utf8) : nullptr; };
    return textOfCF(CreateLANFaxSenderInformation(text(name).get(), text(organization).get(), text(email).get(),
                                                  CFSTR("Phone"), text(phone).get(), CFSTR("Fax"), text(fax).get())
                        .get());
}

TEST(LANFaxSenderInformation, HasALineForEachTextThatIsThere) {
    EXPECT_EQ(information("Ada", "Acme", "a@b", "1", "2"), "Ada\nAcme\na@b\nPhone : 1\nFax : 2\n");
    EXPECT_EQ(information("", "Acme", nullptr, "", "2"), "Acme\nFax : 2\n");
    EXPECT_EQ(information(nullptr, nullptr, nullptr, nullptr, nullptr), "");
}

TEST(FaxCoverOptions, ComeBackFromADictionaryThatKeepsTheRest) {
    const auto dictionary = makeCFDictionary();
    CFDictionarySetValue(dictionary.get(), kFaxDialingPrefixProperty, CFSTR("9"));
    FaxCoverOptions options;
    options.showSender = false;
    options.senderName = makeCFString("Ada");
    options.senderFaxNumber = makeCFString("5");
    options.showRecipients = kFaxCoverRecipientText;
    options.customRecipientText = makeCFString("All\nof them");
    options.notes = makeCFString("Call");
    options.size = 2;
    options.watermarkName = makeCFString("Draft");
    options.imageName = makeCFString("logo.png");
    options.toDictionary(dictionary.get(), kLabels);

    EXPECT_EQ(CFDictionaryGetValue(dictionary.get(), kFaxCoverShowWatermarkProperty), kCFBooleanTrue);
    SInt32 size = 0;
    EXPECT_TRUE(ReadTicketValue(dictionary.get(), kFaxCoverSizeProperty, &size));
    EXPECT_EQ(size, 2);  // the item, not the size's ticket value
    EXPECT_EQ(textOfCF(GetRecordString(dictionary.get(), kFaxCoverLocalizedNotesLabel)), "N");
    EXPECT_EQ(textOfCF(GetRecordString(dictionary.get(), kFaxCoverLocalizedToLabel)), "T");
    EXPECT_EQ(textOfCF(GetRecordString(dictionary.get(), kFaxDialingPrefixProperty)), "9");
    EXPECT_EQ(CFDictionaryGetValue(dictionary.get(), kFaxSenderPhoneNumberProperty), nullptr);

    const auto read = FaxCoverOptions::fromDictionary(dictionary.get());
    EXPECT_FALSE(read.showSender);
    EXPECT_EQ(textOfCF(read.senderName.get()), "Ada");
    EXPECT_EQ(textOfCF(read.senderFaxNumber.get()), "5");
    EXPECT_EQ(read.showRecipients, kFaxCoverRecipientText);
    EXPECT_EQ(textOfCF(read.customRecipientText.get()), "All\nof them");
    EXPECT_EQ(textOfCF(read.watermarkName.get()), "Draft");
    EXPECT_EQ(textOfCF(read.imageName.get()), "logo.png");
    EXPECT_EQ(read.size, 2);
}

TEST(FaxCoverOptions, WhatWasEmptiedIsRemoved) {
    const auto dictionary = makeCFDictionary();
    FaxCoverOptions options;
    options.senderName = makeCFString("Ada");
    options.notes = makeCFString("Call");
    options.watermarkName = makeCFString("Draft");
    options.toDictionary(dictionary.get(), kLabels);
    options.senderName = makeCFString("");
    options.notes = nullptr;
    options.watermarkName = nullptr;
    options.toDictionary(dictionary.get(), kLabels);
    for (CFStringRef key : {kFaxSenderNameProperty, kFaxCoverSheetNotesProperty, kFaxCoverLocalizedNotesLabel,
                            kFaxCoverWatermarkNameProperty}) {
        EXPECT_EQ(CFDictionaryGetValue(dictionary.get(), key), nullptr) << textOfCF(key);
    }
    EXPECT_EQ(CFDictionaryGetValue(dictionary.get(), kFaxCoverShowWatermarkProperty), kCFBooleanFalse);
}

TEST(FaxCoverOptions, WhatIsAbsentOrWrongHasItsDefault) {
    const auto dictionary = makeCFDictionary();
    CFDictionarySetValue(dictionary.get(), kFaxCoverSizeProperty, makeCFNumber(std::int64_t{3}).get());
    CFDictionarySetValue(dictionary.get(), kFaxCoverShowRecipientsProperty, CFSTR("3"));
    CFDictionarySetValue(dictionary.get(), kFaxCoverShowSenderProperty, makeCFNumber(std::int64_t{0}).get());
    CFDictionarySetValue(dictionary.get(), kFaxSenderNameProperty, kCFBooleanTrue);
    // A name without the choice to show it.
    CFDictionarySetValue(dictionary.get(), kFaxCoverWatermarkNameProperty, CFSTR("Draft"));
    const auto read = FaxCoverOptions::fromDictionary(dictionary.get());
    EXPECT_EQ(read.size, 1);
    EXPECT_EQ(read.showRecipients, kFaxCoverRecipientList);
    EXPECT_TRUE(read.showSender);
    EXPECT_EQ(read.senderName.get(), nullptr);
    EXPECT_EQ(read.watermarkName.get(), nullptr);
}

}  // namespace

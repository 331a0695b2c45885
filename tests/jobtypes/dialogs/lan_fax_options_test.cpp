// What is decided without a window: options and times, long numbers, the order of recipients, messages.

#include "jobtypes/dialogs/lan_fax_options.h"
#include "jobtypes/dialogs/fax_dialing_length.h"
#include "jobtypes/dialogs/fax_recipient_browser.h"
#include "jobtypes/dialogs/fax_texts.h"
#include "jobtypes/records/fax_options.h"
#include "model/settings/record_ticket.h"
#include "tests/support/cf_values.h"
#include "tests/support/test_bundle.h"

#include <gtest/gtest.h>

namespace {

CFRef<CFMutableDictionaryRef> fullDictionary() {
    auto dictionary = makeCFDictionary();
    for (CFStringRef key :
         {kFaxPrintConfirmationSheetProperty, kFaxPromptDuplicateProperty, kFaxPromptRemoveProperty}) {
        CFDictionarySetValue(dictionary.get(), key, kCFBooleanFalse);
    }
    CFDictionarySetValue(dictionary.get(), kFaxPrintCoverSheetProperty, kCFBooleanTrue);
    for (CFStringRef key : {kFaxSendSpeedProperty, kFaxResolutionProperty, kFaxSendTimeProperty}) {
        CFDictionarySetValue(dictionary.get(), key, makeCFNumber(std::int64_t{1}).get());
    }
    for (CFStringRef key : {kFaxDialingPrefixProperty, kFaxCreditCardProperty, kFaxCoverSheetNotesProperty,
                            kFaxCoverLocalizedNotesLabel, kFaxSenderNameProperty}) {
        CFDictionarySetValue(dictionary.get(), key, CFSTR("1"));
    }
    return dictionary;
}

void expectDefaults(const LANFaxOptions& options) {
    EXPECT_TRUE(options.confirmationSheet);
    EXPECT_EQ(options.sendSpeed, 3);
    EXPECT_EQ(options.resolution, 2);
    EXPECT_FALSE(options.sendTime || options.dialingPrefix || options.creditCard || options.coverSheetNotes);
    EXPECT_FALSE(options.coverSheet);
    EXPECT_TRUE(options.promptDuplicate);
    EXPECT_TRUE(options.promptRemove);
}

TEST(LANFaxOptionsTest, WhatIsAbsentOrOfAnotherKindIsTheDefault) {
    expectDefaults(LANFaxOptions::fromDictionary(makeCFDictionary().get()));
    expectDefaults(LANFaxOptions::fromDictionary(nullptr));
    const auto strange = fullDictionary();
    std::vector<const void*> keys(std::size_t(CFDictionaryGetCount(strange.get())));
    CFDictionaryGetKeysAndValues(strange.get(), keys.data(), nullptr);
    for (const void* key : keys) {
        CFDictionarySetValue(strange.get(), key, makeCFNumber(0.5).get());
    }
    expectDefaults(LANFaxOptions::fromDictionary(strange.get()));
}

TEST(LANFaxOptionsTest, WhatIsTurnedOffStaysInTheDictionary) {
    const auto dictionary = fullDictionary();
    LANFaxOptions options = LANFaxOptions::fromDictionary(dictionary.get());
    EXPECT_EQ(options.sendTime, 1);
    options.sendTime.reset();
    options.dialingPrefix = nullptr;
    options.creditCard = nullptr;
    options.coverSheetNotes = CFRef<CFStringRef>::retain(CFSTR(""));
    options.toDictionary(dictionary.get(), CFSTR("Notes:"));
    for (CFStringRef key : {kFaxSendTimeProperty, kFaxDialingPrefixProperty, kFaxCreditCardProperty,
                            kFaxCoverSheetNotesProperty, kFaxSenderNameProperty}) {
        EXPECT_TRUE(CFDictionaryContainsKey(dictionary.get(), key)) << textOfCF(key);
    }
    EXPECT_FALSE(CFDictionaryContainsKey(dictionary.get(), kFaxCoverLocalizedNotesLabel)) << "a label of nothing";

    options.coverSheetNotes = CFRef<CFStringRef>::retain(CFSTR("Hello"));
    options.toDictionary(dictionary.get(), CFSTR("Notes:"));
    EXPECT_EQ(textOfCF(GetRecordString(dictionary.get(), kFaxCoverLocalizedNotesLabel)), "Notes:");
    options.coverSheet = false;
    options.coverSheetNotes = CFRef<CFStringRef>::retain(CFSTR("Other"));
    options.toDictionary(dictionary.get(), CFSTR("N:"));
    EXPECT_EQ(textOfCF(GetRecordString(dictionary.get(), kFaxCoverSheetNotesProperty)), "Hello");
    EXPECT_EQ(textOfCF(GetRecordString(dictionary.get(), kFaxCoverLocalizedNotesLabel)), "Notes:");
}

TEST(LANFaxOptionsTest, DefaultsAreThoseOfTheTab) {
    const auto dictionary = fullDictionary();
    const CFIndex all = CFDictionaryGetCount(dictionary.get());
    RevertLANFaxOptions(dictionary.get(), LANFaxTab::recipients);
    EXPECT_EQ(CFDictionaryGetCount(dictionary.get()), all);
    RevertLANFaxOptions(dictionary.get(), LANFaxTab::preferences);
    EXPECT_EQ(CFDictionaryGetCount(dictionary.get()), all - 2);
    RevertLANFaxOptions(dictionary.get(), LANFaxTab::options);
    EXPECT_EQ(CFDictionaryGetCount(dictionary.get()), 2) << "the notes' label and the sender are no options of the tab";
    expectDefaults(LANFaxOptions::fromDictionary(dictionary.get()));
}

TEST(LANFaxOptionsTest, AClockThatIsOverMeansTomorrow) {
    struct Day {
        LongDateRec noon;
        const char* what;
    };
    for (const Day& day :
         {Day{{{2026, 3, 29, 12, 0, 0}}, "clocks go forward"}, Day{{{2026, 10, 25, 12, 0, 0}}, "clocks go back"},
          Day{{{2041, 12, 31, 12, 0, 0}}, "beyond 32 bits of seconds since 1904"}}) {
        LongDateTime now = 0;
        LongDateToSeconds(&day.noon, &now);
        const auto clock = [&](SInt16 hour) {
            LongDateRec date = day.noon;
            date.ld.hour = hour;
            return date;
        };
        EXPECT_EQ(SendTimeOfClock(clock(12), now), now) << day.what;
        EXPECT_EQ(SendTimeOfClock(clock(18), now), now + 6 * 3600) << day.what;
        const LongDateTime tomorrow = SendTimeOfClock(clock(8), now);
        EXPECT_EQ(tomorrow, now + 20 * 3600) << day.what;

        EXPECT_EQ(SendTimeOfClock(ClockOfSendTime(tomorrow, now), now), tomorrow) << "shown again, it stays";
        const LongDateRec late = ClockOfSendTime(tomorrow - 10 * 86400, now);
        LongDateTime shown = 0;
        LongDateToSeconds(&late, &shown);
        EXPECT_EQ(shown, tomorrow - 10 * 86400) << "what is stored is shown";
        EXPECT_EQ(SendTimeOfClock(late, now), tomorrow) << "and goes at the next eight o'clock";
        const LongDateRec none = ClockOfSendTime(std::nullopt, now);
        EXPECT_EQ(none.ld.hour, 0);
        EXPECT_EQ(SendTimeOfClock(none, now), now + 12 * 3600);
    }
}

TEST(FaxDialingLengthTest, CountsWhatIsDialed) {
    FaxRecipientList list;
    const auto add = [&list](const std::string& number) {
        list.append(FaxRecipientOwner(new FaxRecipient(CFSTR("A"), nullptr, makeCFString(number).get())).get());
    };
    add(std::string(49, '1'));
    add(std::string(50, '1'));
    add("+" + std::string(47, '1') + " (22)");
    add(std::string(10000, 'x'));
    list.append(FaxRecipientOwner(new FaxRecipient).get());
    const auto found = [&](CFIndex prefix, CFIndex card) {
        std::string indices;
        for (const FaxRecipient* recipient : RecipientsBeyondDialingLength(list, prefix, card)) {
            for (CFIndex i = 0; i < list.count(); ++i) {
                indices += list.recipientAtIndex(i) == recipient ? std::to_string(i) : "";
            }
        }
        return indices;
    };
    EXPECT_EQ(found(0, 0), "");
    EXPECT_EQ(found(1, 0), "1");
    EXPECT_EQ(found(1, 1), "012");
    EXPECT_EQ(found(50, 1), "01234");
}

TEST(FaxRecipientBrowserTest, ColumnsAndTheirOrder) {
    FaxRecipient ada(CFSTR("Ada"), CFSTR("L"), nullptr);
    FaxRecipient bo(CFSTR("bo"), nullptr, CFSTR("1"));
    ada.setMailbox(CFSTR("7"));
    EXPECT_EQ(textOfCF(CopyFaxRecipientColumn(&ada, FourCharCode("NAME")).get()), "Ada L");
    EXPECT_EQ(textOfCF(CopyFaxRecipientColumn(&ada, FourCharCode("MBOX")).get()), "7");
    EXPECT_FALSE(CopyFaxRecipientColumn(&ada, FourCharCode("FAX ")));
    EXPECT_FALSE(CopyFaxRecipientColumn(&ada, FourCharCode("????")));
    const auto isBefore = [&](DataBrowserPropertyID column) { return FaxRecipientComesBefore(&ada, &bo, column); };
    EXPECT_TRUE(isBefore(FourCharCode("NAME"))) << "capitals first";
    EXPECT_TRUE(isBefore(FourCharCode("????"))) << "names in any other column";
    EXPECT_TRUE(isBefore(FourCharCode("FAX "))) << "no number is the smallest";
    EXPECT_FALSE(isBefore(FourCharCode("MBOX")));
    EXPECT_FALSE(isBefore(FourCharCode("ORG "))) << "two that are alike";
}

TEST(FaxTextsTest, MessagesTakeOtherPeoplesTextsAsTheyAre) {
    TestBundle bundle;
    bundle.add("Resources/en.lproj/LANFax.strings", R"("Key" = "%2$@, not %1$@ (100%, %9$@, %1$";)");
    const auto message = [&](const std::string& one, const std::string& two) {
        return textOfCF(
            CopyFaxMessage(bundle.bundle(), CFSTR("Key"), {makeCFString(one).get(), makeCFString(two).get()}).get());
    };
    EXPECT_EQ(message("1", "%1$@"), "%1$@, not 1 (100%, %9$@, %1$");
    EXPECT_EQ(message("a\nb\tc", ""), ", not a b c (100%, %9$@, %1$");
    EXPECT_EQ(message("", std::string(79, 'x') + "😀y"), std::string(79, 'x') + "…, not  (100%, %9$@, %1$")
        << "not cut in the middle of a character";
    EXPECT_EQ(message("\u202Eeman", "می\u200Cخواهم"), "می\u200Cخواهم, not  eman (100%, %9$@, %1$") << "joins letters";
    EXPECT_EQ(textOfCF(CopyFaxMessage(bundle.bundle(), CFSTR("Key"), {nullptr, nullptr}).get()),
              ", not  (100%, %9$@, %1$");
}

}  // namespace

// The job type's record: what tickets say, what is written, and times of day.
#include "jobtypes/records/job_type.h"
#include "model/settings/plugin_state.h"
#include "platform/printing/PMTicket.h"
#include "tests/support/cf_values.h"

#include <gtest/gtest.h>

namespace {

class JobTypeTest : public testing::Test {
protected:
    JobTypeTest() { PMTicketCreate(nullptr, kPDE_PMPrintSettingsKey, &ticket); }
    ~JobTypeTest() override { PMTicketReleaseAndClear(&ticket); }

    void store(CFDictionaryRef dictionary) const {
        PMTicketSetCFDictionary(ticket, kTicketCreator, kJobTypeTicketKey, dictionary, kPMUnlocked);
    }
    std::string text(CFDictionaryRef dictionary, CFStringRef key) const {
        return textOfCF(GetRecordString(dictionary, key));
    }

    PMTicketRef ticket = 0;
};

TEST_F(JobTypeTest, FreshTicketIsANormalJobUnderItsOwnName) {
    JobType job;
    job.jobType = kJobTypeFax;
    const auto dictionary = job.read(ticket);
    EXPECT_EQ(job.jobType, kJobTypeNormal);
    EXPECT_TRUE(job.useJobName);
    job.write(dictionary.get(), ticket);
    EXPECT_EQ(text(dictionary.get(), CFSTR("SavedJobName")), "Unknown");  // no bundle, no text for the key
    EXPECT_EQ(CFDictionaryGetCount(dictionary.get()), 5) << "neither passcode nor location was given";

    PMTicketSetCFString(ticket, kTicketCreator, kJobNameTicketKey, CFSTR("Report"), kPMUnlocked);
    job.write(dictionary.get(), ticket);
    EXPECT_EQ(text(dictionary.get(), CFSTR("SavedJobName")), "Report");
}

TEST_F(JobTypeTest, KeepsWhatItDoesNotKnowAndWhatTheTicketDoesNotSay) {
    const auto stored = makeCFDictionary();
    CFDictionarySetValue(stored.get(), CFSTR("JobType"), makeCFNumber(std::int64_t{7}).get());
    CFDictionarySetValue(stored.get(), CFSTR("UseJobName"), kCFBooleanFalse);
    CFDictionarySetValue(stored.get(), CFSTR("Future"), CFSTR("kept"));
    store(stored.get());
    JobType job;
    job.passcode = makeCFString("1234");
    job.delayedPrintTime = 4'000'000'000;
    const auto dictionary = job.read(ticket);
    EXPECT_EQ(job.jobType, kJobTypeDelayedPrint);
    EXPECT_EQ(job.delayedPrintTime, 4'000'000'000);
    job.write(dictionary.get(), ticket);
    EXPECT_EQ(text(dictionary.get(), CFSTR("Future")), "kept");
    EXPECT_EQ(text(dictionary.get(), CFSTR("SecurePrintPassword")), "1234");
    EXPECT_EQ(CFDictionaryGetValue(dictionary.get(), CFSTR("SavedJobName")), nullptr);

    store(dictionary.get());
    JobType again;
    EXPECT_TRUE(again.read(ticket));
    EXPECT_EQ(textOfCF(again.passcode.get()), "1234");
    EXPECT_EQ(again.delayedPrintTime, 4'000'000'000);
    again.passcode = makeCFString("");
    again.write(dictionary.get(), ticket);
    EXPECT_FALSE(CFDictionaryContainsKey(dictionary.get(), CFSTR("SecurePrintPassword"))) << "none is none";
}

TEST_F(JobTypeTest, ReadsValuesOfWrongKindsAsMissing) {
    const auto stored = makeCFDictionary();
    for (CFStringRef key : {CFSTR("JobType"), CFSTR("MediaType"), CFSTR("UseJobName"), CFSTR("DelayedPrintTime")}) {
        CFDictionarySetValue(stored.get(), key, CFSTR("text"));
    }
    for (CFStringRef key : {CFSTR("SavedJobName"), CFSTR("SavedJobLocation"), CFSTR("SecurePrintPassword")}) {
        CFDictionarySetValue(stored.get(), key, kCFBooleanTrue);
    }
    store(stored.get());
    JobType job;
    const auto dictionary = job.read(ticket);
    EXPECT_EQ(job.jobType, kJobTypeNormal);
    EXPECT_EQ(job.mediaType, 1);
    EXPECT_TRUE(job.useJobName);
    EXPECT_FALSE(job.passcode);
    EXPECT_EQ(job.delayedPrintTime, 0);
}

TEST(TimeOfDay, IsTodayUnlessItIsOver) {
    LongDateRec date{{2026, 10, 25, 15, 0, 0}};  // clocks are changed this day; civil days stay as long
    LongDateTime now = 0;
    LongDateToSeconds(&date, &now);
    const auto next = [&](SInt16 hour, SInt16 minute) {
        return NextTimeOfDay(LongDateRec{{1999, 1, 1, hour, minute, 0}}, now) - now;
    };
    EXPECT_EQ(next(18, 0), 3 * 3600);
    EXPECT_EQ(next(15, 0), 0);
    EXPECT_EQ(next(9, 0), 18 * 3600);
    EXPECT_EQ(next(14, 59), 86400 - 60);
}

TEST(Digits, OfEveryScriptBecomeASCII) {
    const auto ascii = [](const char* text) { return textOfCF(CopyASCIIDigits(makeCFString(text).get()).get()); };
    EXPECT_EQ(ascii("1234"), "1234");
    EXPECT_EQ(ascii("١٢٣٤"), "1234");
    EXPECT_EQ(ascii("१२ ३x४"), "1234");
    EXPECT_EQ(ascii("𝟙𝟚𝟬"), "120") << "beyond the first plane";
    EXPECT_EQ(ascii(""), "");
}

}  // namespace

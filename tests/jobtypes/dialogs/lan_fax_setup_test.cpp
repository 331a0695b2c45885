// The setup and its dialogs, used as a user would while their modal loops run.

#include "jobtypes/dialogs/lan_fax_setup.h"

#include "jobtypes/dialogs/fax_list_editing.h"
#include "jobtypes/dialogs/fax_window.h"
#include "jobtypes/records/fax_options.h"
#include "platform/foundation/wall_clock.h"
#include "platform/toolbox/DataBrowser.h"
#include "platform/toolbox/Notices.h"
#include "tests/jobtypes/dialogs/fax_dialog_fixture.h"

namespace {

class LANFaxSetupTest : public FaxDialogTest {
protected:
    ~LANFaxSetupTest() override { setWallClock(nullptr); }

    SInt16 run(std::deque<Step> steps) {
        return runDialog(std::move(steps),
                         [this] { return RunModalLANFaxSetup(plugin.bundle(), options.get(), &list); });
    }
    using FaxDialogTest::select;
    static Step select(std::vector<UInt32> rows, SInt32 browser = kList) { return select(browser, std::move(rows)); }
    static void answer(CFOptionFlags response) { AutomationQueueAnswer(response); }
    /// Paints the front window, and the one behind it.
    void paint() { AutomationSnapshot(FrontNonFloatingWindow(), makeCFURL(folder() / "window.png").get()); }

    static constexpr SInt32 kList = 1111;
};

TEST_F(LANFaxSetupTest, CancelPutsEverythingBack) {
    const FaxRecipientOwner ada(FaxRecipientRetain(add("Ada", "1")));
    add("Bo", nullptr);
    CFDictionarySetValue(options.get(), kFaxSenderNameProperty, CFSTR("Me"));
    CFDictionarySetValue(options.get(), kFaxDialingPrefixProperty, CFSTR("9"));
    CFDictionarySetValue(options.get(), kFaxSendSpeedProperty, makeCFNumber(std::int64_t{1}).get());
    const auto before = CFRef<CFMutableDictionaryRef>::adopt(CFDictionaryCreateMutableCopy(nullptr, 0, options.get()));
    const auto listBefore = list.toTicket();

    EXPECT_EQ(run({select({1}), click(1122), click(1102), type(1000, "New"), type(1001, "22"), ok, set(1000, 2),
                   [] {
                       HICommand revert{kHICommandFromControl, FourCharCode("rvrt"), nullptr, 0, control(1000)};
                       EventRef event = nullptr;
                       CreateEvent(nullptr, kEventClassCommand, kEventCommandProcess, 0, 0, &event);
                       SetEventParameter(event, kEventParamDirectObject, typeHICommand, sizeof revert, &revert);
                       EXPECT_EQ(SendEventToEventTarget(event, GetControlEventTarget(control(1000))), noErr);
                       ReleaseEvent(event);
                   },
                   set(1208, 2), cancel}),
              kFaxDialogCancel);
    EXPECT_TRUE(CFEqual(list.toTicket().get(), listBefore.get()));
    EXPECT_TRUE(CFEqual(options.get(), before.get()));
    std::vector<const void*> keys(3);
    CFDictionaryGetKeysAndValues(options.get(), keys.data(), nullptr);
    EXPECT_EQ(textOfCF(static_cast<CFStringRef>(keys[0])), "SenderName") << "the order is the same";
    EXPECT_EQ(ada->retain(), 2) << "nobody else holds the recipient that was removed";
    ada->release();
}

TEST_F(LANFaxSetupTest, TheCardNumberAndTheTimeAreStored) {
    setWallClock([]() -> std::time_t { return 1'800'001'830; });
    LongDateTime now = 0;
    GetDateTime(&now);
    LongDateRec date{};
    LongSecondsToDate(&now, &date);
    const std::string past = std::to_string(date.ld.hour) + ":00";
    EXPECT_EQ(run({set(1000, 2), click(1213), type(1214, "٤١١١x11111111111112"), set(1208, 2), type(1209, past.c_str()),
                   [] { EXPECT_TRUE(shown(1227).starts_with("This is over")); }, ok}),
              kFaxDialogOK);
    EXPECT_EQ(option(kFaxCreditCardProperty), "4111111111111111") << "a device dials digits of one script";
    const auto sendTime = [this] {
        LongDateTime stored = 0;
        EXPECT_TRUE(CFDictionaryGetNumber(options.get(), kFaxSendTimeProperty, &stored, kCFNumberSInt64Type));
        return stored;
    };
    EXPECT_EQ(sendTime(), now + 86400 - date.ld.minute * 60 - date.ld.second);

    LongDateTime onClock = 0;
    EXPECT_EQ(run({set(1000, 2), type(1209, "23:30"),
                   [&] {
                       LongDateRec clock{};
                       GetControlData(control(1209), 0, kControlClockLongDateTag, sizeof clock, &clock, nullptr);
                       LongDateToSeconds(&clock, &onClock);
                       EXPECT_NE(shown(1209).find(std::to_string(clock.ld.day)), std::string::npos) << shown(1209);
                       EXPECT_EQ(shown(1227), "");
                   },
                   ok}),
              kFaxDialogOK);
    EXPECT_EQ(sendTime(), onClock) << "the day that it shows";

    EXPECT_EQ(run({set(1000, 2), set(1208, 1), click(1213), ok}), kFaxDialogOK);
    EXPECT_TRUE(CFDictionaryContainsKey(options.get(), kFaxSendTimeProperty)) << "only the defaults remove it";
    EXPECT_TRUE(CFDictionaryContainsKey(options.get(), kFaxCreditCardProperty));
}

TEST_F(LANFaxSetupTest, EditedRecipientsMoveToTheEnd) {
    const FaxRecipientOwner ada(FaxRecipientRetain(add("Ada", "1")));
    ada->setLastName(CFSTR("L"));
    ada->setOrganization(CFSTR("Engines"));
    add("Bo", "2")->setLastName(CFSTR("L"));
    answer(kCFUserNotificationAlternateResponse);
    run({select({1}), click(1120), type(1000, "Bo"), type(1001, "2"), type(1002, ""), ok,
         [&] {
             EXPECT_EQ(names(), "Bo Ada ") << "the declined duplicate moved, and is itself again";
             EXPECT_EQ(textOfCF(list.recipientAtIndex(1)->organization()), "Engines");
             EXPECT_EQ(list.recipientAtIndex(1), ada.get());
         },
         cancel, click(1120),
         [] {
             CFStringRef shown = nullptr;
             CopyControlTitleAsCFString(control(1000), &shown);
             EXPECT_EQ(textOfCF(CFRef<CFStringRef>::adopt(shown).get()), "Ada L") << "selected all the while";
         },
         type(1000, "Zoe"), type(1002, ""), type(1005, "1x2345"), ok, [this] { paint(); }, ok});
    EXPECT_EQ(names(), "Bo Zoe ");
    EXPECT_EQ(textOfCF(ada->lastName()), "L");
    EXPECT_EQ(ada->organization(), nullptr);
    EXPECT_EQ(textOfCF(ada->mailbox()), "1234");
    EXPECT_EQ(notices,
              std::vector<std::string>{"This recipient is in the list already.|Do you want to add Bo L (2) once "
                                       "more?"});
}

TEST_F(LANFaxSetupTest, OKIsRefusedWhileNumbersAreTooLong) {
    add("Ada", "1");
    add("Bo", std::string(50, '2').c_str());
    add("Cy", std::string(49, '3').c_str());
    add("Di", std::string(60, '4').c_str());
    const auto rows = [](CFIndex count) { return [=] { EXPECT_EQ(AutomationCountRows(control(1001)), count); }; };
    run({set(1000, 2), rows(1), click(1004), click(1211), type(1212, "9"), set(1000, 1), rows(2), click(1004), ok,
         rows(2), click(1004), set(1000, 2), select({1, 2}, 1001), click(1003), set(1000, 1),
         [this] { paint(); },  // the setup's rows of them are gone too
         [] { EXPECT_EQ(AutomationCountRows(control(kList)), 2); }, ok});
    EXPECT_EQ(names(), "Ada Cy ");
}

TEST_F(LANFaxSetupTest, OffendersCanBeEdited) {
    add("Bo", std::string(51, '2').c_str());
    EXPECT_EQ(run({ok, select({1}, 1001), click(1002), type(1001, "77"), ok}), kFaxDialogOK);
    EXPECT_EQ(textOfCF(list.recipientAtIndex(0)->faxNumber()), "77");
}

TEST_F(LANFaxSetupTest, ThereIsRoomForAThousand) {
    CFDictionarySetValue(options.get(), kFaxPromptRemoveProperty, kCFBooleanFalse);
    for (int i = 0; i < 1000; ++i) {
        add(std::to_string(i).c_str(), "1");
    }
    run({click(1102), type(1000, "One more"), type(1001, "5"), ok, cancel, select({1}), click(1122), click(1102),
         type(1000, "One more"), type(1001, "5"), ok, [] { EXPECT_EQ(AutomationCountRows(control(kList)), 1000); },
         ok});
    EXPECT_EQ(textOfCF(list.recipientAtIndex(999)->firstName()), "One more");
    ASSERT_EQ(notices.size(), 1U);
    EXPECT_EQ(notices[0],
              "That did not work.|A fax goes to 1000 recipients at most. You chose 1, and there is room for "
              "0 more.");
}

TEST_F(LANFaxSetupTest, AnAnswerForAllHoldsUntilItIsForgotten) {
    FaxRecipient* ada = add("Ada", "1");
    run({[&] {
             const FaxRecipientOwner copy(new FaxRecipient(*ada));
             answer(kCFUserNotificationAlternateResponse | CFUserNotificationCheckBoxChecked(0));
             EXPECT_FALSE(AddRecipient(&list, copy.get(), true));
             EXPECT_FALSE(AddRecipient(&list, copy.get(), true));
             EXPECT_EQ(notices.size(), 1U) << "the second one is not asked about";
             EXPECT_TRUE(AddRecipient(&list, copy.get(), false));
             EXPECT_EQ(notices.size(), 2U) << "one that comes alone is";
             ForgetAnswerForDuplicates();
             const FaxRecipientOwner another(new FaxRecipient(*ada));
             EXPECT_TRUE(AddRecipient(&list, another.get(), true));
             EXPECT_EQ(notices.size(), 3U);
             EXPECT_EQ(AutomationCountRows(control(kList)), 3);
         },
         ok});
}

TEST_F(LANFaxSetupTest, StrangeRecipientsAreShown) {
    const std::string full = "\x01\n\t\u202E" + std::string(10000, 'W') + "٣";
    FaxRecipient* strange = add(full.c_str(), full.c_str());
    for (auto setter : {&FaxRecipient::setLastName, &FaxRecipient::setOrganization, &FaxRecipient::setPhoneNumber,
                        &FaxRecipient::setEmailAddress, &FaxRecipient::setMailbox, &FaxRecipient::setUID}) {
        (strange->*setter)(makeCFString(full).get());
    }
    list.append(FaxRecipientOwner(new FaxRecipient).get());
    run({[this] {
             for (const OSType column : {FourCharCode("NAME"), FourCharCode("FAX "), FourCharCode("MBOX")}) {
                 SetDataBrowserSortProperty(control(kList), column);
                 paint();
             }
         },
         select({2}), click(1120), [this] { paint(); }, cancel, click(1122), select({1}), click(1122), ok});
    EXPECT_EQ(list.count(), 0);
    ASSERT_EQ(notices.size(), 2U);
    EXPECT_LT(notices[0].size(), 300U) << "a notice stays a notice";
    EXPECT_EQ(notices[0].find('\n'), std::string::npos);
}

TEST_F(LANFaxSetupTest, SaysWhenTheAddressBookCannotBeSaved) {
    std::filesystem::create_directory(file());
    run({click(1102), type(1000, "Ada"), type(1001, "1"), click(1006), ok,
         [&] { EXPECT_EQ(names(), "Ada ") << "the fax goes to her all the same"; }, click(1123), type(1000, "Board"),
         ok, cancel, ok});
    EXPECT_EQ(notices.size(), 2U);
    EXPECT_EQ(list.recipientAtIndex(0)->uid(), nullptr);
}

TEST_F(LANFaxSetupTest, AMissingWindowChangesNothing) {
    TestBundle empty("com.example.empty");
    CFDictionarySetValue(options.get(), kFaxDialingPrefixProperty, CFSTR("9"));
    add("Ada", "1");
    EXPECT_EQ(RunModalLANFaxSetup(empty.bundle(), options.get(), &list), kFaxDialogOK);
    EXPECT_EQ(option(kFaxDialingPrefixProperty), "9");
    EXPECT_EQ(names(), "Ada ");
}

}  // namespace

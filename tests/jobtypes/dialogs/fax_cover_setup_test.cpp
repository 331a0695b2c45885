// The setup of the cover sheet.

#include "jobtypes/dialogs/fax_cover_setup.h"

#include "jobtypes/dialogs/fax_cover_picture.h"
#include "jobtypes/dialogs/fax_window.h"
#include "jobtypes/records/fax_options.h"
#include "tests/jobtypes/dialogs/fax_dialog_fixture.h"
#include "watermark/records/watermark_storage.h"

namespace {

class FaxCoverSetupTest : public FaxDialogTest {
protected:
    SInt16 run(std::deque<Step> steps) {
        return runDialog(std::move(steps),
                         [this] { return RunModalFaxCoverSheetSetup(plugin.bundle(), options.get(), &list); });
    }
    CFIndex item(CFStringRef key) const {
        SInt32 value = 0;
        ReadTicketValue(options.get(), key, &value);
        return value;
    }
};

TEST_F(FaxCoverSetupTest, OKWritesWhatWasTypedAndChosen) {
    WatermarkRecord draft{};
    draft.kind = kTextWatermark;
    std::snprintf(draft.text, sizeof draft.text, "Draft");
    saveWatermarkData(kWatermarkStore, &draft);
    const auto watermarks =
        CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(kCFAllocatorDefault, 0, &kCFTypeArrayCallBacks));
    CFArrayAppendValue(watermarks.get(), CFSTR("Secret"));
    CFArrayAppendValue(watermarks.get(), CFSTR("Draft"));
    saveWatermarkList(kWatermarkStore, watermarks.get());

    EXPECT_EQ(run({[] { EXPECT_FALSE(IsControlEnabled(control(1011))); }, type(1001, "Ada"), type(1004, "12"),
                   [] { EXPECT_EQ(shown(1006), "Ada\nPhone : 12\n"); }, set(1010, 3), type(1011, "You"),
                   type(1020, "Call me"), set(1030, 2), set(1031, 3), ok}),
              kFaxDialogOK);
    EXPECT_EQ(option(kFaxSenderNameProperty), "Ada");
    EXPECT_EQ(option(kFaxSenderPhoneNumberProperty), "12");
    EXPECT_EQ(item(kFaxCoverShowRecipientsProperty), 3);
    EXPECT_EQ(option(kFaxCoverCustomRecipientTextProperty), "You");
    EXPECT_EQ(option(kFaxCoverSheetNotesProperty), "Call me");
    EXPECT_EQ(option(kFaxCoverLocalizedNotesLabel), "Notes:");
    EXPECT_EQ(item(kFaxCoverSizeProperty), 2);
    EXPECT_EQ(option(kFaxCoverWatermarkNameProperty), "Draft");
}

TEST_F(FaxCoverSetupTest, CancelLeavesTheOptionsAsTheyAre) {
    CFDictionarySetValue(options.get(), kFaxSenderNameProperty, CFSTR("Me"));
    const auto before = CFRef<CFMutableDictionaryRef>::adopt(CFDictionaryCreateMutableCopy(nullptr, 0, options.get()));
    EXPECT_EQ(run({[] { EXPECT_EQ(shown(1001), "Me"); }, type(1001, "You"), click(1000), cancel}), kFaxDialogCancel);
    EXPECT_TRUE(CFEqual(options.get(), before.get()));
}

TEST_F(FaxCoverSetupTest, WithoutASenderThereIsNothingToFillIn) {
    run({type(1001, "Ada"), click(1000),
         [] {
             EXPECT_FALSE(IsControlEnabled(control(1001)));
             EXPECT_EQ(shown(1006), "");
         },
         ok});
    EXPECT_EQ(CFDictionaryGetValue(options.get(), kFaxCoverShowSenderProperty), kCFBooleanFalse);
    EXPECT_EQ(option(kFaxSenderNameProperty), "Ada");  // for the next time
}

TEST_F(FaxCoverSetupTest, AStoredNameThatIsGoneStaysChosen) {
    CFDictionarySetValue(options.get(), kFaxCoverShowWatermarkProperty, kCFBooleanTrue);
    CFDictionarySetValue(options.get(), kFaxCoverWatermarkNameProperty, CFSTR("Gone"));
    run({[] { EXPECT_EQ(GetControl32BitValue(control(1031)), 2); }, ok});
    EXPECT_EQ(option(kFaxCoverWatermarkNameProperty), "Gone");
}

TEST_F(FaxCoverSetupTest, AnAddedPictureIsStoredAndChosen) {
    const std::string picture = kStagedResources / "PBEntry.gif";
    const auto text = folder() / "text.png";
    std::ofstream(text) << "no picture";
    run({chooseFile(text), click(1033), [] { EXPECT_EQ(GetControl32BitValue(control(1032)), 1); }, chooseFile(picture),
         click(1033), chooseFile(picture), click(1033), [] { EXPECT_EQ(GetControl32BitValue(control(1032)), 2); }, ok});
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_NE(notices[0].find("“text.png” is no picture"), std::string::npos);
    EXPECT_EQ(option(kFaxCoverImageNameProperty), "PBEntry.gif");
    WatermarkRecord record{};
    ASSERT_TRUE(loadWatermarkData(kFaxImageStore, CFSTR("PBEntry.gif"), &record));
    EXPECT_EQ(record.filePath, picture);
    CFMutableArrayRef names = nullptr;
    ASSERT_TRUE(loadWatermarkList(kFaxImageStore, &names));
    EXPECT_EQ(CFArrayGetCount(CFRef<CFMutableArrayRef>::adopt(names).get()), 1);
}

}  // namespace

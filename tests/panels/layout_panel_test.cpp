// The Layout panel between its controls and the tickets, and the dialog that it opens.

#include "core/features/installable_options.h"
#include "model/records/special_page.h"
#include "model/settings/ppd_access.h"
#include "panels/layout/booklet_finishing_dialog.h"
#include "panels/layout/layout_sync.h"
#include "platform/toolbox/Windows.h"
#include "tests/panels/panel_fixture.h"

#include <optional>

extern "C" OSStatus GetLayoutPanelInterface(PlugInIntf** interface);

namespace {

#define kBookletKey CFSTR("com.tavro.print.BookletLayout")
#define kOutlinesKey CFSTR("com.tavro.print.BookletDrawOutlines")
#define kPMDuplexingKey CFSTR("com.apple.print.PrintSettings.PMDuplexing")
#define kFinishingDuplexKey CFSTR("com.tavro.print.FinishingDuplex")
#define kFrontCoverKey CFSTR("com.tavro.print.SpecialPages.FrontCover")
#define kBackCoverKey CFSTR("com.tavro.print.SpecialPages.BackCover")

enum : SInt32 { kBooklet = 6004, kPreview = 6005, kOutlines = 6011, kFinishing = 6013 };

class LayoutPanelTest : public PanelTest {
protected:
    LayoutPanelTest() : PanelTest(GetLayoutPanelInterface) {}
    ~LayoutPanelTest() override { UnloadInstallableOptions(); }

    void openWithFolder() {
        ASSERT_TRUE(LoadInstallableOptions(printer.info, printer.context, InstalledFeatures));
        openPanel();
    }
    void setBooklet(bool booklet) const {
        PMTicketSetCFBoolean(printer.settings, CFSTR("test"), kBookletKey, booklet ? kCFBooleanTrue : kCFBooleanFalse,
                             kPMUnlocked);
    }
    std::optional<bool> booklet() const {
        CFBooleanRef booklet = nullptr;
        const OSStatus status = PMTicketGetCFBoolean(printer.settings, kPMTopLevel, kPMTopLevel, kBookletKey, &booklet);
        return status == noErr ? std::optional(booklet == kCFBooleanTrue) : std::nullopt;
    }
    void setNumber(CFStringRef key, SInt32 number) const {
        EXPECT_EQ(SetTicketNumber(printer.settings, CFSTR("test"), key, number), noErr);
    }
    SInt32 number(CFStringRef key) const { return GetTicketNumber(printer.settings, key, -99); }

    /// Both numbers of the sides and the option that goes with them.
    void expectSides(SInt32 sides, const char* option) const {
        EXPECT_EQ(number(kPMDuplexingKey), sides);
        EXPECT_EQ(number(kFinishingDuplexKey), sides);
        EXPECT_EQ(choice(CFSTR("Duplex")), option);
    }

    void setCover(CFStringRef key, SInt32 sides, SInt32 color) const {
        Cover cover;
        cover.setSidesImaged(sides);
        cover.stock().setColor(color);
        PMTicketSetCFDictionary(printer.settings, CFSTR("test"), key, cover.asTicket().get(), kPMUnlocked);
    }
    bool hasCover(CFStringRef key) const {
        CFDictionaryRef cover = nullptr;
        return PMTicketGetCFDictionary(printer.settings, kPMTopLevel, kPMTopLevel, key, &cover) == noErr;
    }

    /// Picks an item in the dialog that the button opens, and ends the dialog by its button with that command.
    void finish(SInt32 item, SInt32 shownAtFirst, OSStatus (*buttonOf)(WindowRef, ControlRef*)) {
        pick_ = [=, this] {
            const WindowRef dialog = FrontNonFloatingWindow();
            if (dialog == window) {
                return;
            }
            const ControlID id{FourCharCode("Tshl"), 1000};
            ControlRef group = nullptr;
            EXPECT_EQ(GetControlByID(dialog, &id, &group), noErr);
            EXPECT_EQ(GetControl32BitValue(group), shownAtFirst);
            EXPECT_EQ(AutomationSetValue(group, item), noErr);
            ControlRef button = nullptr;
            EXPECT_EQ(buttonOf(dialog, &button), noErr);
            EXPECT_EQ(AutomationClick(button), noErr);
        };
        EventLoopTimerRef timer = nullptr;
        InstallEventLoopTimer(
            0.01, 0, [](EventLoopTimerRef, void* self) { static_cast<LayoutPanelTest*>(self)->pick_(); }, this, &timer);
        EXPECT_EQ(AutomationClick(shell(kFinishing)), noErr);
        RemoveEventLoopTimer(timer);
    }

private:
    std::function<void()> pick_;
};

TEST(LayoutDecisions, BookletsTurnOverTheShortEdgeAndOtherJobsNever) {
    for (const SInt32 sides : {1, 2, 3}) {
        EXPECT_EQ(SidesForLayout(true, sides), 3);
    }
    EXPECT_EQ(SidesForLayout(false, 1), 1);
    EXPECT_EQ(SidesForLayout(false, 2), 2);
    EXPECT_EQ(SidesForLayout(false, 3), 2);
}

TEST(LayoutDecisions, PicturesFollowTheSettings) {
    const auto picture = [](SInt32 booklet, SInt32 fold, SInt32 outlines) {
        return Text(LayoutPicture({booklet, outlines, true, fold}));
    };
    EXPECT_EQ(picture(0, kFoldBooklet, 1), "Booklet Creation/None.gif");
    EXPECT_EQ(picture(1, kFoldBooklet, 1), "Layout/Booklet-Fold-Outlines-Portrait.gif");
    EXPECT_EQ(picture(1, kFoldBooklet, 0), "Layout/Booklet-Fold-Portrait.gif");
    EXPECT_EQ(picture(1, kFoldAndStapleBooklet, 1), "Layout/Booklet-Fold-Staple-Outlines-Portrait.gif");
    EXPECT_EQ(picture(1, kFoldAndStapleBooklet, 0), "Layout/Booklet-Fold-Staple-Portrait.gif");
    for (const SInt32 other : {-1, 1, 2, 6, 9}) {
        EXPECT_EQ(picture(1, other, 1), "Layout/Booklet-Outlines-Portrait.gif") << other;
        EXPECT_EQ(picture(1, other, 0), "Layout/Booklet-Portrait.gif") << other;
    }
    EXPECT_EQ(Text(BookletFinishingPicture(0, false)), "Booklet Creation/Booklet.gif");
    EXPECT_EQ(Text(BookletFinishingPicture(1, true)), "Booklet Creation/Booklet-Outlines.gif");
    EXPECT_EQ(Text(BookletFinishingPicture(2, false)), "Booklet Creation/Booklet-Fold.gif");
    EXPECT_EQ(Text(BookletFinishingPicture(2, true)), "Booklet Creation/Booklet-Fold-Outlines.gif");
    EXPECT_EQ(Text(BookletFinishingPicture(3, false)), "Booklet Creation/Booklet-Fold-Staple.gif");
    EXPECT_EQ(Text(BookletFinishingPicture(3, true)), "Booklet Creation/Booklet-Fold-Staple-Outlines.gif");
}

TEST_F(LayoutPanelTest, RefusesCallsWithoutContextOrSession) {
    EXPECT_EQ(panelTitle, "Layout");
    expectRefusals(true);
    EXPECT_EQ(RunModalBookletFinishingDialog(plugin.bundle(), false, nullptr), paramErr);
}

TEST_F(LayoutPanelTest, AFreshTicketIsNoBooklet) {
    openWithFolder();
    EXPECT_EQ(value(kBooklet), 1);
    EXPECT_EQ(value(kOutlines), 0);
    EXPECT_FALSE(IsControlEnabled(shell(kOutlines)));
    EXPECT_FALSE(IsControlVisible(shell(kFinishing)));
    const UInt16 built = CountSubControls(control(1));
    EXPECT_EQ(panel.Open(context), noErr);
    EXPECT_EQ(CountSubControls(control(1)), built);
    for (const SInt32 removed : {6009, 6010}) {
        const ControlID id{FourCharCode("Tshl"), removed};
        ControlRef found = nullptr;
        EXPECT_NE(GetControlByID(window, &id, &found), noErr) << removed;
    }

    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(booklet(), false);
    EXPECT_EQ(number(kOutlinesKey), 0);
    EXPECT_EQ(choice(CFSTR("TRFoldOptions")), "None");
    expectSides(1, "None");
}

TEST_F(LayoutPanelTest, WhatTheUserChoosesReachesTheTicketAndComesBack) {
    openWithFolder();
    setChoice(CFSTR("StapleLocation"), CFSTR("2Staples"));
    EXPECT_EQ(AutomationSetValue(shell(kBooklet), 2), noErr);
    EXPECT_TRUE(IsControlVisible(shell(kFinishing)));
    EXPECT_EQ(AutomationClick(shell(kOutlines)), noErr);
    finish(3, 1, GetWindowDefaultButton);
    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(booklet(), true);
    EXPECT_EQ(number(kOutlinesKey), 1);
    EXPECT_EQ(choice(CFSTR("TRFoldOptions")), "BookletFoldStapleOpt");
    EXPECT_EQ(choice(CFSTR("StapleLocation")), "2Staples") << "the dialog's conflict";
    expectSides(3, "DuplexTumble");

    SetControl32BitValue(shell(kBooklet), 1);
    SetControl32BitValue(shell(kOutlines), 0);
    setChoice(CFSTR("TRFoldOptions"), CFSTR("BookletFoldOpt"));
    EXPECT_EQ(sync(true), noErr);
    EXPECT_EQ(value(kBooklet), 2);
    EXPECT_EQ(value(kOutlines), 1);
    finish(3, 2, GetWindowCancelButton);
    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(choice(CFSTR("TRFoldOptions")), "BookletFoldOpt") << "cancelled";
    finish(1, 2, GetWindowDefaultButton);

    EXPECT_EQ(AutomationSetValue(shell(kBooklet), 1), noErr);
    EXPECT_FALSE(IsControlVisible(shell(kFinishing)));
    EXPECT_FALSE(IsControlEnabled(shell(kOutlines)));
    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(booklet(), false);
    EXPECT_EQ(number(kOutlinesKey), 1) << "kept for the next booklet";
    EXPECT_EQ(choice(CFSTR("TRFoldOptions")), "None");
    expectSides(2, "DuplexNoTumble");
}

TEST_F(LayoutPanelTest, ThePreviewShowsWhatIsChosen) {
    openWithFolder();
    std::vector<QImage> shown{drawn(kPreview)};
    const auto shownAnew = [&] {
        shown.push_back(drawn(kPreview));
        return std::count(shown.begin(), shown.end(), shown.back()) == 1;
    };
    AutomationSetValue(shell(kBooklet), 2);
    EXPECT_TRUE(shownAnew());
    AutomationClick(shell(kOutlines));
    EXPECT_TRUE(shownAnew());
    finish(2, 1, GetWindowDefaultButton);
    EXPECT_TRUE(shownAnew());
    finish(3, 2, GetWindowDefaultButton);
    EXPECT_TRUE(shownAnew());
}

TEST_F(LayoutPanelTest, TheSidesAreThoseOfTheOptionElseOfEitherNumber) {
    openPanel();
    setNumber(kFinishingDuplexKey, 2);
    EXPECT_EQ(sync(false), noErr);
    expectSides(2, "DuplexNoTumble");
    setNumber(kPMDuplexingKey, 3);
    setChoice(CFSTR("Duplex"), CFSTR("None"));
    EXPECT_EQ(sync(false), noErr);
    expectSides(1, "None");
    setChoice(CFSTR("Duplex"), CFSTR("NoSuchOption"));
    EXPECT_EQ(sync(false), noErr);
    expectSides(-1, "NoSuchOption");
}

TEST_F(LayoutPanelTest, WritesOnlyWhileItIsActive) {
    setBooklet(true);
    setCover(kFrontCoverKey, kCoverBothSides, 2);
    setCover(kBackCoverKey, kCoverBothSides, 2);
    ASSERT_EQ(initialize(), noErr);
    EXPECT_EQ(sync(false), noErr);
    expectSides(-99, "");
    ASSERT_EQ(panel.Open(context), noErr);
    DeactivateControl(control(1));
    EXPECT_EQ(sync(false), noErr);
    expectSides(-99, "");
    EXPECT_TRUE(hasCover(kBackCoverKey));
    ActivateControl(control(1));
    EXPECT_EQ(sync(false), noErr);
    expectSides(3, "DuplexTumble");
    EXPECT_FALSE(hasCover(kBackCoverKey));
    EXPECT_TRUE(hasCover(kFrontCoverKey));
}

TEST_F(LayoutPanelTest, CoversThatDifferBothStay) {
    openPanel();
    setCover(kFrontCoverKey, kCoverBothSides, 2);
    setCover(kBackCoverKey, kCoverBothSides, 3);
    EXPECT_EQ(sync(false), noErr);
    EXPECT_TRUE(hasCover(kBackCoverKey));
    setCover(kBackCoverKey, kCoverBlank, 2);
    EXPECT_EQ(sync(false), noErr);
    EXPECT_TRUE(hasCover(kBackCoverKey));
    PMTicketReleaseItem(printer.settings, kPMTopLevel, kFrontCoverKey);
    EXPECT_EQ(sync(false), noErr);
    EXPECT_TRUE(hasCover(kBackCoverKey));
}

TEST_F(LayoutPanelTest, WithoutAFolderNothingIsAskedOfIt) {
    setChoice(CFSTR("TRFoldOptions"), CFSTR("2HolePunch"));
    setBooklet(true);
    openPanel();
    const ControlID id{FourCharCode("Tshl"), kFinishing};
    ControlRef button = nullptr;
    EXPECT_NE(GetControlByID(window, &id, &button), noErr);
    EXPECT_EQ(AutomationSetValue(shell(kBooklet), 1), noErr);
    EXPECT_EQ(AutomationSetValue(shell(kBooklet), 2), noErr);
    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(choice(CFSTR("TRFoldOptions")), "2HolePunch");
    EXPECT_EQ(booklet(), true);
}

TEST_F(LayoutPanelTest, OtherFoldOptionsAreKeptUntilTheDialogChangesThem) {
    setBooklet(true);
    openWithFolder();
    for (const CFStringRef other : {CFSTR("CTriFoldOpt"), CFSTR("NoSuchOption")}) {
        setChoice(CFSTR("TRFoldOptions"), other);
        EXPECT_EQ(sync(true), noErr);
        finish(2, 1, GetWindowCancelButton);
        EXPECT_EQ(sync(false), noErr);
        EXPECT_EQ(choice(CFSTR("TRFoldOptions")), Text(other));
    }
    finish(2, 1, GetWindowDefaultButton);
    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(choice(CFSTR("TRFoldOptions")), "BookletFoldOpt");
}

TEST_F(LayoutPanelTest, ItemsOfWrongTypesReadAsMissing) {
    setNumber(kBookletKey, 1);
    PMTicketSetCFString(printer.settings, CFSTR("test"), kPMDuplexingKey, CFSTR("3"), kPMUnlocked);
    PMTicketSetCFString(printer.settings, CFSTR("test"), kFrontCoverKey, CFSTR("front"), kPMUnlocked);
    PMTicketSetCFString(printer.settings, CFSTR("test"), kBackCoverKey, CFSTR("back"), kPMUnlocked);
    openPanel();
    EXPECT_EQ(value(kBooklet), 1);
    EXPECT_EQ(sync(false), noErr);
    expectSides(1, "None");
}

TEST_F(LayoutPanelTest, WithoutItsNibThePanelStaysEmpty) {
    expectEmptyWithoutNib();
    SInt32 fold = kFoldBooklet;
    EXPECT_EQ(RunModalBookletFinishingDialog(plugin.bundle(), false, &fold), kNibNotFoundErr);
    EXPECT_EQ(fold, kFoldBooklet);
}

}  // namespace

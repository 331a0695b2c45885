// The Advanced panel between its controls and the tickets.

#include "model/settings/ppd_access.h"
#include "tests/panels/panel_fixture.h"

extern "C" OSStatus GetAdvancedPanelInterface(PlugInIntf** interface);

namespace {

#define kRotateKey CFSTR("com.tavro.print.AdvancedRotateImage180")
#define kOrderKey CFSTR("com.tavro.print.AdvancedBookletLayoutOrderStr")
#define kEmitKey CFSTR("com.tavro.print.EmitTPIF")
#define kOmbrexKey CFSTR("com.tavro.print.OmbrexEmulation")

class AdvancedPanelTest : public PanelTest {
protected:
    AdvancedPanelTest() : PanelTest(GetAdvancedPanelInterface) {}

    SInt32 ticketNumber(CFStringRef key) const { return GetTicketNumber(printer.settings, key, -99); }
    void setTicketNumber(CFStringRef key, SInt32 number) const {
        EXPECT_EQ(SetTicketNumber(printer.settings, CFSTR("test"), key, number), noErr);
    }
    MenuRefCon chosenValue(SInt32 number) const {
        return Items(shell(number)).at(static_cast<std::size_t>(value(number)) - 1).refCon;
    }
};

TEST_F(AdvancedPanelTest, RefusesCallsWithoutContextOrSession) {
    EXPECT_EQ(panelTitle, "Advanced");
    expectRefusals(true);
}

TEST_F(AdvancedPanelTest, AFreshTicketShowsTheDefaultsAtOnce) {
    openPanel();
    EXPECT_EQ(value(611), 2);
    EXPECT_EQ(value(621), 1);
    EXPECT_EQ(value(630), 1);
    EXPECT_EQ(chosenValue(632), 1);
    EXPECT_EQ(chosenValue(634), 1);

    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(ticketNumber(kOrderKey), 2);
    EXPECT_EQ(ticketNumber(kRotateKey), 0);
    EXPECT_EQ(ticketNumber(kEmitKey), 1);
    EXPECT_EQ(choice(CFSTR("JCLBanner")), "True");
    EXPECT_EQ(choice(CFSTR("Jog")), "EndOfSet");
}

TEST_F(AdvancedPanelTest, WhatTheUserChoosesReachesTheTicketAndComesBack) {
    setTicketNumber(kOmbrexKey, 5);
    openPanel();
    EXPECT_EQ(AutomationSetValue(shell(611), 1), noErr);
    EXPECT_EQ(AutomationSetValue(shell(621), 2), noErr);
    EXPECT_EQ(AutomationClick(shell(630)), noErr);
    for (const SInt32 number : {632, 634}) {
        EXPECT_EQ(AutomationSetValue(shell(number), value(number) == 1 ? 2 : 1), noErr);
    }
    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(ticketNumber(kOrderKey), 1);
    EXPECT_EQ(ticketNumber(kRotateKey), 1);
    EXPECT_EQ(ticketNumber(kEmitKey), 0);
    EXPECT_EQ(choice(CFSTR("JCLBanner")), "False");
    EXPECT_EQ(choice(CFSTR("Jog")), "None");
    EXPECT_EQ(ticketNumber(kOmbrexKey), 5);

    for (const SInt32 number : {611, 621}) {
        SetControl32BitValue(shell(number), 3 - value(number));
    }
    EXPECT_EQ(sync(true), noErr);
    EXPECT_EQ(value(611), 1);
    EXPECT_EQ(value(621), 2);
    EXPECT_EQ(value(630), 0);
    EXPECT_EQ(chosenValue(632), 0);
    EXPECT_EQ(chosenValue(634), 0);
}

TEST_F(AdvancedPanelTest, OpensOnce) {
    openPanel();
    const UInt16 built = CountSubControls(control(1));
    EXPECT_EQ(panel.Open(context), kPMInvalidPDEContext);
    EXPECT_EQ(CountSubControls(control(1)), built);
}

TEST_F(AdvancedPanelTest, ItemsOfWrongTypesReadAsMissing) {
    const double half = 1.5;
    const auto fraction = CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, kCFNumberDoubleType, &half));
    PMTicketSetCFNumber(printer.settings, CFSTR("test"), kOrderKey, fraction.get(), kPMUnlocked);
    PMTicketSetCFString(printer.settings, CFSTR("test"), kRotateKey, CFSTR("1"), kPMUnlocked);
    PMTicketSetCFBoolean(printer.settings, CFSTR("test"), kEmitKey, kCFBooleanFalse, kPMUnlocked);
    CFMutableDictionaryRef choices = nullptr;
    ASSERT_EQ(PMTicketGetPPDDict(printer.settings, kPMTopLevel, &choices), noErr);
    CFDictionarySetValue(choices, CFSTR("JCLBanner"), kCFBooleanFalse);
    openPanel();
    EXPECT_EQ(value(611), 2);
    EXPECT_EQ(value(621), 1);
    EXPECT_EQ(value(630), 1);
    EXPECT_EQ(chosenValue(632), 1);
}

TEST_F(AdvancedPanelTest, AnyRotationSurvivesTheWayThroughThePanel) {
    for (const SInt32 rotation : {-1, 7, std::numeric_limits<SInt32>::max(), std::numeric_limits<SInt32>::min()}) {
        setTicketNumber(kRotateKey, rotation);
        ASSERT_EQ(initialize(), noErr);
        EXPECT_EQ(sync(false), noErr);
        EXPECT_EQ(ticketNumber(kRotateKey), rotation);
    }
}

TEST_F(AdvancedPanelTest, AChoiceThatThePrinterDoesNotOfferIsLeftAlone) {
    EXPECT_EQ(PPDSetMainKeyword(printer.settings, CFSTR("JCLBanner"), CFSTR("Sometimes")), noErr);
    openPanel();
    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(choice(CFSTR("JCLBanner")), "Sometimes");
    EXPECT_EQ(choice(CFSTR("Jog")), "EndOfSet");
}

TEST_F(AdvancedPanelTest, APrinterWithoutBannerOrOffsetIsAskedForThemInVain) {
    PPDReleaseGlobalUIDictionary();
    openPanel();
    for (const SInt32 number : {632, 634}) {
        EXPECT_TRUE(Items(shell(number)).empty());
        EXPECT_FALSE(IsControlEnabled(shell(number)));
    }
    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(sync(true), noErr);
    EXPECT_EQ(choice(CFSTR("JCLBanner")), "True");
    EXPECT_EQ(choice(CFSTR("Jog")), "EndOfSet");
}

TEST_F(AdvancedPanelTest, WithoutItsNibThePanelStaysEmpty) {
    expectEmptyWithoutNib();
}

}  // namespace

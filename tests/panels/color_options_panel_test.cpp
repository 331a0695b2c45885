// The color options panel between its controls, the tickets and the PPD's options.

#include "model/records/full_color_options.h"
#include "model/settings/ppd_access.h"
#include "model/settings/record_ticket.h"
#include "model/settings/ticket_items.h"
#include "platform/toolbox/Menus.h"
#include "tests/panels/panel_fixture.h"

extern "C" OSStatus GetColorOptionsPanelInterface(PlugInIntf** interface);

namespace {

class ColorOptionsPanelTest : public PanelTest {
protected:
    ColorOptionsPanelTest() : PanelTest(GetColorOptionsPanelInterface) {}

    void setRecord(CFDictionaryRef record) const {
        PMTicketSetCFDictionary(printer.settings, CFSTR("test"), kFullColorOptionsItem, record, kPMUnlocked);
    }
    /// What the panel writes; null when it writes none.
    CFDictionaryRef written() {
        EXPECT_EQ(sync(false), noErr);
        CFDictionaryRef record = nullptr;
        PMTicketGetCFDictionary(printer.settings, kPMTopLevel, kPMTopLevel, kFullColorOptionsItem, &record);
        return record;
    }
    SInt32 number(CFStringRef key) {
        SInt32 value = kTicketValueUnset;
        ReadTicketValue(written(), key, &value);
        return value;
    }
    void showPage(SInt32 page) const { EXPECT_EQ(AutomationSetValue(shell(7001), page), noErr); }
    void choose(SInt32 popUp, MenuItemIndex item) const {
        EXPECT_EQ(AutomationChooseMenuItem(shell(popUp), GetControlPopupMenuHandle(shell(popUp)), item), noErr);
    }
    void type(SInt32 field, const char* text) const {
        EXPECT_EQ(AutomationType(shell(field), String(text).get()), noErr) << field;
    }
};

TEST_F(ColorOptionsPanelTest, WritesTheOptionsOfThePPDAndNothingElseUnasked) {
    expectRefusals(true);
    openPanel();
    EXPECT_EQ(written(), nullptr) << "the printer's own";
    EXPECT_EQ(choice(CFSTR("JCLRGBColorSpace")), "");
    choose(7010, 4);
    choose(7015, 2);
    written();
    EXPECT_EQ(choice(CFSTR("JCLColorCorrection")), "PressMatch");
    EXPECT_EQ(choice(CFSTR("JCLTrueGrayImages")), "True");

    PPDSetMainKeyword(printer.settings, CFSTR("JCLRGBColorSpace"), CFSTR("OfTomorrow"));
    EXPECT_EQ(sync(true), noErr);
    EXPECT_EQ(GetControl32BitValue(shell(7011)), 0);
    written();
    EXPECT_EQ(choice(CFSTR("JCLRGBColorSpace")), "OfTomorrow");
}

TEST_F(ColorOptionsPanelTest, AdjustsColors) {
    openPanel();
    showPage(2);
    type(7020, "-40");
    EXPECT_EQ(GetControl32BitValue(shell(7022)), -40) << "the slider follows";
    EXPECT_EQ(AutomationSetValue(shell(7032), 12), noErr);
    EXPECT_EQ(number(CFSTR("FCLightness")), -40);
    EXPECT_EQ(number(CFSTR("FCContrast")), kTicketValueUnset);
    SInt32 magenta = -1;
    EXPECT_TRUE(
        ReadTicketValue(GetRecordDictionary(written(), CFSTR("FCColorCast")), CFSTR("FCMagentaGreen"), &magenta));
    EXPECT_EQ(magenta, 0) << "of the axes all or none are written";
    type(7020, "0");
    EXPECT_EQ(AutomationSetValue(shell(7032), 0), noErr);
    EXPECT_EQ(written(), nullptr);

    showPage(4);
    EXPECT_FALSE(IsControlEnabled(shell(7081)));
    choose(7080, 4);
    type(7081, "7");
    choose(7085, 3);
    EXPECT_EQ(number(CFSTR("FCTrapping")), 1);
    EXPECT_EQ(number(CFSTR("FCTrappingFastDirection")), 7);
    EXPECT_EQ(number(CFSTR("FCBlackOverprint")), 1);
    choose(7080, 3);
    EXPECT_EQ(number(CFSTR("FCTrappingFastDirection")), kTicketValueUnset);
    EXPECT_EQ(number(CFSTR("FCTrapping")), 2);
}

TEST_F(ColorOptionsPanelTest, TakesProfilesByTheirNames) {
    openPanel();
    showPage(3);
    EXPECT_FALSE(IsControlEnabled(shell(7051)));
    choose(7050, 6);
    EXPECT_EQ(written(), nullptr) << "no name yet";
    choose(7050, 6);
    type(7051, "Our scanner");
    choose(7054, 2);
    type(7058, "Dot gain 15%");
    EXPECT_EQ(Text(GetRecordString(written(), CFSTR("RGBImagesProfile"))), "Our scanner");
    EXPECT_EQ(number(CFSTR("CMYKImagesProfile")), 1);
    EXPECT_EQ(Text(GetRecordString(written(), CFSTR("GrayImagesProfile"))), "Dot gain 15%");
    EXPECT_EQ(sync(true), noErr);
    EXPECT_EQ(text(shell(7051)), "Our scanner");
    EXPECT_TRUE(IsControlEnabled(shell(7051)));

    EXPECT_EQ(AutomationClick(shell(7002)), noErr);
    EXPECT_EQ(written(), nullptr);
}

TEST_F(ColorOptionsPanelTest, LeavesWhatNobodyTouchesAsItWas) {
    const auto record = CreateRecordDictionary();
    WriteTicketValue(record.get(), CFSTR("FCLightness"), 500);
    WriteTicketValue(record.get(), CFSTR("FCContrast"), 0);
    WriteTicketValue(record.get(), CFSTR("RGBImagesProfile"), 9);
    WriteTicketValue(record.get(), CFSTR("ImageRendering"), 77);
    setRecord(record.get());
    openPanel();
    EXPECT_TRUE(CFEqual(written(), record.get()));
    EXPECT_EQ(GetControl32BitValue(shell(7050)), 0) << "a kind of another edition";
}

}  // namespace

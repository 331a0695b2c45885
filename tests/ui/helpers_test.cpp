// Pictures, tabs, summaries, texts, numbers and help: the small helpers, on real controls.

#include "model/settings/number_text.h"
#include "platform/toolbox/Automation.h"
#include "tests/panels/plugin_fixture.h"
#include "ui/control_utilities.h"
#include "ui/help.h"
#include "ui/image_import_manager.h"
#include "ui/localization.h"
#include "ui/private_bundle.h"

namespace {

class HelpersTest : public NibWindowTest {
protected:
    static std::string item(const std::string& text) { return "<item>" + property("text", "string", text) + "</item>"; }

    PluginBundle plugin;
};

TEST_F(HelpersTest, PicturesAreLoadedOnceAndOwnedByTheManager) {
    ImageImportManager pictures(plugin.bundle());
    EXPECT_EQ(ImageImportManager::current(), &pictures);
    const CGImageRef logo = pictures.image(CFSTR("TavroLogo.gif"));
    ASSERT_NE(logo, nullptr);
    EXPECT_EQ(CGImageGetWidth(logo), 160u);  // natural size in points, whatever the screen
    EXPECT_EQ(pictures.image(String("TavroLogo.gif").get()), logo);
    EXPECT_EQ(pictures.image(CFSTR("NoSuchPicture.gif")), nullptr);
    EXPECT_EQ(pictures.image(nullptr), nullptr);
    {
        const ImageImportManager inner(plugin.bundle());
        EXPECT_EQ(ImageImportManager::current(), &inner);
    }
    EXPECT_EQ(ImageImportManager::current(), &pictures);
}

TEST_F(HelpersTest, TheTabsValueShowsOnePane) {
    open("<layout class=\"QVBoxLayout\"><item>" + widget("QComboBox", 1, item("A") + item("B")) + "</item><item>" +
         widget("QWidget", 2) + "</item><item>" + widget("QWidget", 3) + "</item></layout>");
    const ControlRef panes[] = {control(2), control(3)};
    for (SInt32 value = 1; value <= 2; ++value) {
        SetControl32BitValue(control(1), value);  // the chooser's kind does not matter, its value does
        UpdateTabControl(control(1), 2, panes);
        for (SInt32 pane = 1; pane <= 2; ++pane) {
            EXPECT_EQ(IsControlVisible(panes[pane - 1]), pane == value);
            EXPECT_EQ(IsControlEnabled(panes[pane - 1]), pane == value);
            EXPECT_EQ(IsControlActive(panes[pane - 1]), pane == value);
        }
    }
}

TEST_F(HelpersTest, ASummaryIsShownButCannotBeEdited) {
    open("<layout class=\"QVBoxLayout\"><item>" + widget("QPlainTextEdit", 1) + "</item></layout>");
    SetupTextViewControl(control(1), 10);
    EXPECT_EQ(UpdateSummaryTextView(control(1), nullptr), paramErr);
    EXPECT_EQ(UpdateSummaryTextView(control(1), CFSTR("A4\nPlain")), noErr);
    CFStringRef shown = nullptr;
    EXPECT_EQ(GetControlData(control(1), 0, kControlEditTextCFStringTag, sizeof shown, &shown, nullptr), noErr);
    EXPECT_EQ(Text(CFRef<CFStringRef>::adopt(shown).get()), "A4\nPlain");
    ShowWindow(window);
    EXPECT_NE(AutomationType(control(1), CFSTR("x")), noErr);
}

TEST_F(HelpersTest, TextsOfKeysOnControls) {
    open("<layout class=\"QVBoxLayout\"><item>" + widget("QLabel", 1) + "</item><item>" + widget("QCheckBox", 2) +
         "</item></layout>");
    SetLocalizedStaticText(plugin.bundle(), CFSTR("Booklet Layout Order:"), control(1));
    SetLocalizedControlTitleFromMap(plugin.bundle(), CoverOptionMap, 1, control(2));
    EXPECT_EQ(text(control(2)), "Front Cover Only");
    SetLocalizedControlTitle(plugin.bundle(), CFSTR("no such key"), control(2));
    EXPECT_EQ(text(control(2)), "STRING NOT FOUND");
    SetLocalizedStaticText(plugin.bundle(), nullptr, control(1));
    EXPECT_EQ(text(control(1)), Text(CopyLocalizedText(plugin.bundle(), CFSTR("Booklet Layout Order:")).get()));
    EXPECT_NE(text(control(1)), "STRING NOT FOUND");
}

TEST_F(HelpersTest, NumbersKeepTheirDecimals) {
    const auto number = [](double value, CFIndex decimals) {
        return Text(CFRef<CFStringRef>::adopt(CreateLocalizedCFStringFromNumberWithDecimals(value, decimals)).get());
    };
    EXPECT_EQ(number(8.5, 2), "8.50");
    EXPECT_EQ(number(-12345.678, 1), "-12345.7");
    EXPECT_EQ(number(3, 0), "3");
}

TEST_F(HelpersTest, WhatTheBundleLacksIsRefused) {
    EXPECT_EQ(DisplayHelp(plugin.bundle(), CFSTR("Mac_topics/M_Fax_Setup.htm"), nullptr), paramErr);
    CFBundleRef loaded = plugin.bundle();
    EXPECT_FALSE(LoadPrivateBundle(plugin.bundle(), CFSTR("NoSuch.bundle"), &loaded));
    EXPECT_EQ(loaded, nullptr);
}

}  // namespace

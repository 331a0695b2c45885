// The About panel: its texts, its pictures as they are drawn, and its logo as a button.

#include "core/features/installable_options.h"
#include "tests/panels/panel_fixture.h"

#include <QSet>

extern "C" OSStatus GetAboutPanelInterface(PlugInIntf** interface);

namespace {

class AboutPanelTest : public PanelTest {
protected:
    AboutPanelTest() : PanelTest(GetAboutPanelInterface) {}
    ~AboutPanelTest() override { UnloadInstallableOptions(); }

    /// How many colours there are where a control is.
    qsizetype colours(SInt32 number) const {
        const QImage shot = drawn(number);
        QSet<QRgb> found;
        for (int y = 0; y < shot.height(); ++y) {
            for (int x = 0; x < shot.width(); ++x) {
                found.insert(shot.pixel(x, y));
            }
        }
        return found.size();
    }
};

TEST_F(AboutPanelTest, RefusesCallsWithoutContextOrSession) {
    EXPECT_EQ(panelTitle, "About");
    expectRefusals(false);
}

TEST_F(AboutPanelTest, ShowsTextsAndPicturesAndIsBuiltOnce) {
    ASSERT_TRUE(LoadInstallableOptions(printer.info, printer.context, InstalledFeatures));
    openPanel();
    EXPECT_EQ(text(shell(501)), "Tavro Print Features");
    for (const SInt32 number : {502, 503}) {
        EXPECT_FALSE(text(shell(number)).empty());
    }
    for (const SInt32 picture : {505, 506, 507}) {
        EXPECT_GT(colours(picture), 2) << picture;
    }
    const UInt16 built = CountSubControls(control(1));
    EXPECT_EQ(panel.Close(context), noErr);
    EXPECT_EQ(panel.Open(context), noErr);
    EXPECT_EQ(panel.Open(context), noErr);
    EXPECT_EQ(CountSubControls(control(1)), built);
}

TEST_F(AboutPanelTest, APrinterOfUnknownConfigurationHasNoPicture) {
    openPanel();
    EXPECT_EQ(colours(506), 1);
    EXPECT_GT(colours(505), 2);
}

TEST_F(AboutPanelTest, TheLogoOpensTheMakersSiteAndTheDialogStaysInFront) {
    openPanel();
    testing::internal::CaptureStdout();
    EXPECT_EQ(AutomationClick(shell(505)), noErr);
    EXPECT_NE(testing::internal::GetCapturedStdout().find("https://maker.example/"), std::string::npos);
    EXPECT_EQ(FrontNonFloatingWindow(), window);
}

}  // namespace

// The Image Options panel between its controls and the tickets.

#include "model/settings/ppd_access.h"
#include "panels/image_options/image_options_sync.h"
#include "panels/image_options/invert_image.h"
#include "tests/panels/panel_fixture.h"

#include <fstream>

extern "C" OSStatus GetImageOptionsPanelInterface(PlugInIntf** interface);

namespace {

#define kInvertKey CFSTR("com.tavro.print.InvertImageOptions")

enum : SInt32 {
    kNegative = 911,
    kMirror = 912,
    kInvertPicture = 913,
    kResolution = 941,
    kSlider = 981,
    kField = 982,
    kArrows = 983,
    kLightenPicture = 984,
    kTonerSaver = 988,
    kTonerPicture = 990,
};

/// The ZR420's PPD without the lines that begin with any of the words, for as long as it lives.
class PPDWithout {
public:
    explicit PPDWithout(std::vector<std::string> beginnings) {
        std::ifstream original(kZR420);
        std::string kept;
        for (std::string line; std::getline(original, line);) {
            if (std::none_of(beginnings.begin(), beginnings.end(),
                             [&line](const std::string& beginning) { return line.starts_with(beginning); })) {
                kept += line + "\n";
            }
        }
        folder_.add("changed.ppd", kept);
    }
    std::string path() const { return folder_.contents() / "changed.ppd"; }

private:
    TestBundle folder_;
};

class ImageOptionsPanelTest : public PanelTest {
protected:
    explicit ImageOptionsPanelTest(const std::string& ppd = kZR420) : PanelTest(GetImageOptionsPanelInterface, ppd) {}

    std::string fieldText() const {
        CFStringRef shown = nullptr;
        GetControlData(shell(kField), kControlEntireControl, kControlEditTextCFStringTag, sizeof shown, &shown,
                       nullptr);
        return Text(CFRef<CFStringRef>::adopt(shown).get());
    }
    void expectChoices(const char* resolution, const char* quality, const char* economode) const {
        EXPECT_EQ(choice(CFSTR("Resolution")), resolution);
        EXPECT_EQ(choice(CFSTR("TRImageQuality")), quality);
        EXPECT_EQ(choice(CFSTR("TREconomode")), economode);
    }
    CFDictionaryRef invertOptions() const {
        CFDictionaryRef options = nullptr;
        PMTicketGetCFDictionary(printer.settings, kPMTopLevel, kPMTopLevel, kInvertKey, &options);
        return options;
    }
    void expectInvertOptions(CFIndex negative, CFIndex mirror) const {
        CFIndex written[] = {-1, -1};
        GetCFIndexFromCFDictionary(invertOptions(), CFSTR("NegativeImage"), &written[0]);
        GetCFIndexFromCFDictionary(invertOptions(), CFSTR("MirrorImage"), &written[1]);
        EXPECT_EQ(CFDictionaryGetCount(invertOptions()), 2);
        EXPECT_EQ(written[0], negative);
        EXPECT_EQ(written[1], mirror);
    }
};

TEST(ImageOptionsDecisions, PicturesFollowTheSettings) {
    EXPECT_EQ(Text(TonerPicture(0)), "Standard-B&W.gif");
    EXPECT_EQ(Text(TonerPicture(1)), "Toner-Saver-B&W.gif");
    EXPECT_EQ(Text(InvertImagePicture({true, false, false})), "Invert-Image-Off.gif");
    EXPECT_EQ(Text(InvertImagePicture({true, true, false})), "Negative-Image.gif");
    EXPECT_EQ(Text(InvertImagePicture({true, false, true})), "Mirror-Image.gif");
    EXPECT_EQ(Text(InvertImagePicture({true, true, true})), "Negative-&-Mirror-Image.gif");
}

TEST_F(ImageOptionsPanelTest, RefusesCallsWithoutContextOrSession) {
    EXPECT_EQ(panelTitle, "Image Options");
    expectRefusals(true);
}

TEST_F(ImageOptionsPanelTest, AFreshTicketShowsTheDefaults) {
    openPanel();
    const auto resolutions = Items(shell(kResolution));
    ASSERT_EQ(resolutions.size(), 3u);
    EXPECT_EQ(resolutions[1].text, "1200 dpi");
    EXPECT_EQ(value(kResolution), 1);
    EXPECT_EQ(value(kSlider), 0);
    EXPECT_EQ(value(kArrows), 0);
    EXPECT_EQ(fieldText(), "0");
    EXPECT_EQ(value(kTonerSaver), 0);
    EXPECT_EQ(value(kNegative) + value(kMirror), 0);
    EXPECT_FALSE(IsControlVisible(shell(951)));
    const UInt16 built = CountSubControls(control(1));
    EXPECT_EQ(panel.Open(context), noErr);
    EXPECT_EQ(CountSubControls(control(1)), built);

    EXPECT_EQ(sync(false), noErr);
    expectChoices("600dpi", "Normal", "False");
    expectInvertOptions(0, 0);
}

TEST_F(ImageOptionsPanelTest, EachLevelIsAnOptionOfThePPD) {
    openPanel();
    const char* const options[] = {"Lightest", "Lighter", "Light", "Normal", "Dark", "Darker", "Darkest"};
    for (SInt32 level = kLightest; level <= kDarkest; ++level) {
        const char* option = options[level + 3];
        EXPECT_EQ(AutomationSetValue(shell(kSlider), level), noErr);
        EXPECT_EQ(fieldText(), std::to_string(level));
        EXPECT_EQ(sync(false), noErr);
        EXPECT_EQ(choice(CFSTR("TRImageQuality")), option);

        EXPECT_EQ(AutomationType(shell(kField), String(std::to_string(-level)).get()), noErr);
        EXPECT_EQ(value(kSlider), -level);
        EXPECT_EQ(sync(true), noErr);
        EXPECT_EQ(value(kArrows), level);
        EXPECT_EQ(value(kSlider), level);
        EXPECT_EQ(fieldText(), std::to_string(level));
    }
}

TEST_F(ImageOptionsPanelTest, WhatTheUserChoosesReachesTheTicketAndComesBack) {
    openPanel();
    EXPECT_EQ(AutomationSetValue(shell(kResolution), 3), noErr);
    EXPECT_EQ(AutomationClick(shell(kTonerSaver)), noErr);
    EXPECT_EQ(AutomationClick(shell(kMirror)), noErr);
    EXPECT_EQ(sync(false), noErr);
    expectChoices("2400dpi", "Normal", "True");
    expectInvertOptions(0, 1);

    SetControl32BitValue(shell(kResolution), 1);
    SetControl32BitValue(shell(kTonerSaver), 0);
    SetControl32BitValue(shell(kMirror), 0);
    SetControl32BitValue(shell(kNegative), 1);
    EXPECT_EQ(sync(true), noErr);
    EXPECT_EQ(value(kResolution), 3);
    EXPECT_EQ(value(kTonerSaver), 1);
    EXPECT_EQ(value(kMirror), 1);
    EXPECT_EQ(value(kNegative), 0);
}

TEST_F(ImageOptionsPanelTest, PicturesShowWhatIsChosen) {
    openPanel();
    const QImage toner = drawn(kTonerPicture);
    QImage invert = drawn(kInvertPicture);
    const QImage gray = drawn(kLightenPicture);
    AutomationClick(shell(kTonerSaver));
    EXPECT_NE(drawn(kTonerPicture), toner);
    EXPECT_EQ(drawn(kInvertPicture), invert);
    for (const SInt32 box : {kNegative, kMirror, kNegative}) {
        AutomationClick(shell(box));
        EXPECT_NE(drawn(kInvertPicture), invert) << box;
        invert = drawn(kInvertPicture);
    }
    SetControl32BitValue(shell(kTonerSaver), 0);
    EXPECT_EQ(sync(true), noErr);
    EXPECT_EQ(drawn(kTonerPicture), toner);
    EXPECT_EQ(drawn(kLightenPicture), gray);
}

TEST_F(ImageOptionsPanelTest, APanelThatWasNeverOpenedWritesOnlyWhatItRead) {
    const CFRef<CFDictionaryRef> mirrored = InvertImageCreateTicketFromOptions({true, false, true});
    PMTicketSetCFDictionary(printer.settings, CFSTR("test"), kInvertKey, mirrored.get(), kPMUnlocked);
    setChoice(CFSTR("TRImageQuality"), CFSTR("Dark"));
    EXPECT_EQ(sync(false), noErr);
    expectInvertOptions(0, 1);
    ASSERT_EQ(initialize(), noErr);
    PMTicketReleaseItem(printer.settings, kPMTopLevel, kInvertKey);
    EXPECT_EQ(sync(false), noErr);
    expectChoices("", "Dark", "");
    expectInvertOptions(0, 1);
}

TEST_F(ImageOptionsPanelTest, ChoicesThatThePrinterDoesNotHaveReadAsTheDefaults) {
    setChoice(CFSTR("Resolution"), CFSTR("300dpi"));
    setChoice(CFSTR("TRImageQuality"), CFSTR("Blackest"));
    setChoice(CFSTR("TREconomode"), CFSTR("Maybe"));
    PMTicketSetCFString(printer.settings, CFSTR("test"), kInvertKey, CFSTR("mirror"), kPMUnlocked);
    openPanel();
    EXPECT_EQ(value(kResolution), 1);
    EXPECT_EQ(value(kArrows), 0);
    EXPECT_EQ(sync(false), noErr);
    expectChoices("600dpi", "Normal", "False");
    expectInvertOptions(0, 0);
}

TEST_F(ImageOptionsPanelTest, WithoutItsNibThePanelStaysEmpty) {
    expectEmptyWithoutNib();
    expectChoices("", "", "");
    expectInvertOptions(0, 0);
}

/// Printers that lack the options, or have more or fewer than the controls can show.
class PoorPrinterTest : public ImageOptionsPanelTest {
protected:
    explicit PoorPrinterTest(const PPDWithout& ppd) : ImageOptionsPanelTest(ppd.path()) {}

    void expectNothingToChoose() {
        setChoice(CFSTR("TRImageQuality"), CFSTR("Dark"));
        openPanel();
        EXPECT_EQ(sync(true), noErr);
        EXPECT_EQ(fieldText(), "");
        for (const SInt32 number : {kSlider, kField, kArrows, kTonerSaver}) {
            EXPECT_FALSE(IsControlEnabled(shell(number))) << number;
            EXPECT_EQ(value(number), 0) << number;
        }
        EXPECT_EQ(AutomationClick(shell(kMirror)), noErr);
        EXPECT_EQ(sync(false), noErr);
        EXPECT_EQ(choice(CFSTR("TRImageQuality")), "Dark");
        EXPECT_EQ(choice(CFSTR("TREconomode")), "");
        expectInvertOptions(0, 1);
    }
};

class PrinterWithoutOptionsTest : public PoorPrinterTest {
protected:
    PrinterWithoutOptionsTest()
        : PoorPrinterTest(PPDWithout({"*OpenUI *Resolution", "*CloseUI: *Resolution", "*DefaultResolution",
                                      "*Resolution", "*OrderDependency: 10.0 AnySetup *Resolution",
                                      "*OpenUI *TRImageQuality", "*CloseUI: *TRImageQuality", "*DefaultTRImageQuality",
                                      "*TRImageQuality", "*OrderDependency: 60.0 AnySetup *TRImageQuality",
                                      "*OpenUI *TREconomode", "*CloseUI: *TREconomode", "*DefaultTREconomode",
                                      "*TREconomode", "*OrderDependency: 60.0 AnySetup *TREconomode"})) {}
};

TEST_F(PrinterWithoutOptionsTest, HasEmptyControlsAndWritesNothing) {
    expectNothingToChoose();
    EXPECT_TRUE(Items(shell(kResolution)).empty());
    EXPECT_FALSE(IsControlEnabled(shell(kResolution)));
    EXPECT_EQ(choice(CFSTR("Resolution")), "");
}

class PrinterWithFewerOptionsTest : public PoorPrinterTest {
protected:
    PrinterWithFewerOptionsTest()
        : PoorPrinterTest(PPDWithout(
              {"*TRImageQuality Darkest", "*TREconomode True", "*Resolution 600dpi", "*Resolution 2400dpi"})) {}
};

TEST_F(PrinterWithFewerOptionsTest, HasEmptyControlsWhereTheyCannotShowTheOptions) {
    expectNothingToChoose();
    EXPECT_EQ(Items(shell(kResolution)).size(), 1u);
    EXPECT_EQ(choice(CFSTR("Resolution")), "1200dpi");
}

}  // namespace

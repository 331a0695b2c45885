#include "core/features/installable_options.h"

#include "tests/model/settings/session.h"
#include "tests/support/places.h"
#include "tests/support/test_bundle.h"

#include <gtest/gtest.h>

namespace {

class InstallableOptions : public testing::Test {
protected:
    void TearDown() override { UnloadInstallableOptions(); }

    static void load(const std::filesystem::path& printer, const Session::Options& installed,
                     const InstalledFeature* table = InstalledFeatures) {
        UnloadInstallableOptions();
        const Session session(printer, installed);
        const OpenPPD ppd(session);
        EXPECT_TRUE(LoadInstallableOptions(session.printerInfo, ppd.get(), table));
    }
    static std::string option(CFStringRef mainKeyword) {
        CFStringRef keyword = nullptr;
        return getInstallableOptionValue(mainKeyword, &keyword) ? text(keyword) : "(none)";
    }
};

TEST_F(InstallableOptions, ThePrintersConfigurationWinsOverThePPDs) {
    EXPECT_EQ(option(CFSTR("Option2")), "(none)") << "nothing loaded";
    load(kZR420, {});
    EXPECT_EQ(option(CFSTR("Option1")), "True");
    EXPECT_EQ(option(CFSTR("Option2")), "HCSS_BK");
    load(kZR420, {{"Option2", "OCT"}, {"Option5", "False"}});
    EXPECT_EQ(option(CFSTR("Option2")), "OCT");
    EXPECT_TRUE(getInstalledFeature(CFSTR("OffsettingCatchTrayKey")));
    EXPECT_FALSE(getInstalledFeature(CFSTR("SingleStapleKey")));
    EXPECT_FALSE(getInstalledFeature(CFSTR("FaxKey")));
    EXPECT_TRUE(getInstalledFeature(CFSTR("GenericPunchKey")));
    EXPECT_EQ(option(CFSTR("Option25")), "(none)");
    EXPECT_EQ(option(CFSTR("Duplex")), "(none)") << "not installable";
    EXPECT_FALSE(getInstallableOptionValue(nullptr, nullptr));
}

TEST_F(InstallableOptions, ACacheThatIsHeldStays) {
    load(kZR420, {});
    const Session session(kZR420, {{"Option2", "OCT"}});
    const OpenPPD ppd(session);
    EXPECT_FALSE(LoadInstallableOptions(session.printerInfo, ppd.get(), InstalledFeatures));
    EXPECT_EQ(option(CFSTR("Option2")), "HCSS_BK");
    UnloadInstallableOptions();
    EXPECT_FALSE(getInstalledFeature(CFSTR("BookletBinKey")));
    EXPECT_TRUE(LoadInstallableOptions(session.printerInfo, ppd.get(), InstalledFeatures));
    EXPECT_EQ(option(CFSTR("Option2")), "OCT");
}

TEST_F(InstallableOptions, TheFirstInstalledRowOfAFeatureAnswers) {
    static constexpr InstalledFeature kTable[] = {
        {"Tray", "Option2", "HCSS", "Other", 1},
        {"Tray", "Option2", "HCSS_BK", nullptr, 2},
        {"Tray", "Option3", "True", "Named", 3},
        {"Absent", "Option9", "True", "Never", 4},
        {},
    };
    load(kZR420, {}, kTable);
    TestBundle bundle;
    bundle.add("Resources/en.lproj/Localizable.strings", "\"Named\" = \"Punch\";");
    SInt32 value = -7;
    EXPECT_TRUE(getInstallableOptionTicketValue(CFSTR("Tray"), &value));
    EXPECT_EQ(value, 2);
    EXPECT_FALSE(getInstallableOptionTicketValue(CFSTR("Tray"), nullptr));
    EXPECT_FALSE(getInstallableOptionTicketValue(CFSTR("Absent"), &value));
    EXPECT_FALSE(getInstallableOptionTicketValue(nullptr, &value));
    EXPECT_EQ(value, 2);
    EXPECT_FALSE(getInstalledFeature(CFSTR("tray")));
    EXPECT_FALSE(getInstalledFeature(nullptr));

    // The name comes from the first installed row that has one.
    const auto name =
        CFRef<CFStringRef>::adopt(CopyLocalizedStringForInstalledFeatureFromPlugin(CFSTR("Tray"), bundle.bundle()));
    EXPECT_EQ(text(name.get()), "Punch");
    const CFStringRef notFound = CFSTR("STRING NOT FOUND");
    EXPECT_EQ(CopyLocalizedStringForInstalledFeatureFromPlugin(CFSTR("Absent"), bundle.bundle()), notFound);
    EXPECT_EQ(CopyLocalizedStringForInstalledFeatureFromPlugin(nullptr, bundle.bundle()), notFound);
    EXPECT_EQ(CopyLocalizedStringForInstalledFeatureFromPlugin(CFSTR("Tray"), nullptr), notFound);
}

TEST_F(InstallableOptions, TheFinisherDecidesOnStaplesTraysAndBooklets) {
    struct Case {
        const char* finisher;
        bool single, dual, multiple, top, stacker1, stacker2, booklet;
    };
    constexpr Case kCases[] = {
        {"None", false, false, false, false, false, false, false},
        {"OCT", false, false, false, false, false, false, false},
        {"BLCSS", true, true, false, true, true, false, false},
        {"LCSS", true, true, false, true, true, false, false},
        {"HCSS", true, true, true, true, true, true, false},
        {"HCSS_BK", true, true, true, true, true, false, true},
    };
    for (const Case& expected : kCases) {
        SCOPED_TRACE(expected.finisher);
        load(kZR420, {{"Option2", expected.finisher}});
        EXPECT_EQ(getInstalledFeature(CFSTR("SingleStapleKey")), expected.single);
        EXPECT_EQ(getInstalledFeature(CFSTR("DualStapleKey")), expected.dual);
        EXPECT_EQ(getInstalledFeature(CFSTR("MultipleStapleKey")), expected.multiple);
        EXPECT_EQ(getInstalledFeature(CFSTR("TopTrayKey")), expected.top);
        EXPECT_EQ(getInstalledFeature(CFSTR("StackerTray1Key")), expected.stacker1);
        EXPECT_EQ(getInstalledFeature(CFSTR("StackerTray2Key")), expected.stacker2);
        EXPECT_EQ(getInstalledFeature(CFSTR("BookletBinKey")), expected.booklet);
        EXPECT_EQ(getInstalledFeature(CFSTR("BookletFoldKey")), expected.booklet);
        EXPECT_FALSE(getInstalledFeature(CFSTR("ZFoldKey")));
    }
}

TEST_F(InstallableOptions, TheDevicePictureFollowsTraysAndFinisher) {
    EXPECT_EQ(GetDeviceMimic(), nullptr);
    const auto mimic = [](const char* trays, const char* finisher) {
        load(kZR420, {{"Option1", trays}, {"Option2", finisher}});
        return text(GetDeviceMimic());
    };
    EXPECT_EQ(mimic("True", "HCSS_BK"), "Str_4T_HCSS+BK.gif");
    EXPECT_EQ(mimic("True", "HCSS"), "Str_4T_HCSS.gif");
    EXPECT_EQ(mimic("True", "LCSS"), "Str_4T_LCSS.gif");
    EXPECT_EQ(mimic("True", "BLCSS"), "Str_4T_LCSS.gif");
    EXPECT_EQ(mimic("True", "OCT"), "Str_4T.gif");
    EXPECT_EQ(mimic("False", "HCSS_BK"), "Str_2T_HCSS+BK.gif");
    EXPECT_EQ(mimic("False", "HCSS"), "Str_2T_HCSS.gif");
    EXPECT_EQ(mimic("False", "BLCSS"), "Str_2T_LCSS.gif");
    EXPECT_EQ(mimic("False", "None"), "Str_2T.gif");
}

TEST_F(InstallableOptions, APrinterWithoutAFinisherOptionHasAPictureToo) {
    const TemporaryFolder folder;
    load(folder.add("trays.ppd",
                    "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*FileVersion: \"1.0\"\n"
                    "*LanguageVersion: English\n*LanguageEncoding: ISOLatin1\n*PCFileName: \"T.PPD\"\n"
                    "*Manufacturer: \"Tavro\"\n*Product: \"(T)\"\n*PSVersion: \"(3010.0) 1\"\n"
                    "*ModelName: \"T\"\n*ShortNickName: \"T\"\n*NickName: \"T\"\n"
                    "*OpenGroup: InstallableOptions/Options\n*OpenUI *Option1/Trays: Boolean\n"
                    "*DefaultOption1: True\n*Option1 True/Yes: \"\"\n*Option1 False/No: \"\"\n"
                    "*CloseUI: *Option1\n*CloseGroup: InstallableOptions\n"
                    "*DefaultPageSize: A4\n*OpenUI *PageSize: PickOne\n*PageSize A4: \"\"\n"
                    "*CloseUI: *PageSize\n*DefaultPageRegion: A4\n*OpenUI *PageRegion: PickOne\n"
                    "*PageRegion A4: \"\"\n*CloseUI: *PageRegion\n*DefaultImageableArea: A4\n"
                    "*ImageableArea A4: \"0 0 595 842\"\n*DefaultPaperDimension: A4\n"
                    "*PaperDimension A4: \"595 842\"\n"),
         {});
    EXPECT_EQ(option(CFSTR("Option1")), "True");
    EXPECT_EQ(option(CFSTR("Option2")), "(none)");
    EXPECT_EQ(text(GetDeviceMimic()), "Str_4T.gif");
}

}  // namespace

// Where people find a setting, and what it is called there.
#include "host/settings/setting_words.h"

#include "platform/foundation/CFBundle.h"
#include "platform/foundation/text.h"
#include "tests/platform/files/temporary_folder.h"
#include "tests/support/cf_values.h"
#include "tests/support/places.h"

#include <gtest/gtest.h>
#include <fstream>
#include <sstream>
#include <tuple>

namespace {

class SettingWordsOf : public testing::Test {
protected:
    static CFRef<CFBundleRef> bundle(const std::string& path) {
        return CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, makeFileURL(path, true).get()));
    }
    /// The title by which the maker's panel itself is chosen.
    std::string ownTitle(CFStringRef key) const {
        return utf8Text(CFRef<CFStringRef>::adopt(
                            CFBundleCopyLocalizedString(plugin.get(), key, CFSTR("none"), CFSTR("Localizable")))
                            .get());
    }

    std::optional<SettingWords> words(const Printer& of, const char* mainKeyword, const char* option,
                                      const char* finisher = "HCSS_BK") const {
        const auto installed = makeCFDictionary();
        CFDictionarySetValue(installed.get(), CFSTR("Option2"), makeCFString(finisher).get());
        return settingWords(PrintSession(of, JobSettings{}, installed.get(), "job"), host.get(), mainKeyword, option);
    }

    CFRef<CFBundleRef> host = bundle(stagePath("TavroPrint.bundle"));
    CFRef<CFBundleRef> plugin = bundle(stagePath("plugins/TavroFeatures.plugin"));
    Printer printer = *openPPD(sourcePath("resources/ppd/Tavro-ZR420.ppd"));
};

}  // namespace

TEST_F(SettingWordsOf, PanelsAreTheTitlesThatTheirMenuHas) {
    EXPECT_EQ(panelOfSetting(host.get(), "MediaType"), ownTitle(CFSTR("PaperOutput")));
    EXPECT_EQ(panelOfSetting(host.get(), "JCLCovers"), ownTitle(CFSTR("SpecialPagesTitle")));
    EXPECT_EQ(panelOfSetting(host.get(), "Resolution"), ownTitle(CFSTR("ImageOptions")));
    EXPECT_EQ(panelOfSetting(host.get(), "Jog"), ownTitle(CFSTR("Advanced")));
    for (const char* elsewhere : {"PageSize", "Collate", "Option2", "InputSlot", "Fragrance", ""}) {
        EXPECT_EQ(panelOfSetting(host.get(), elsewhere), "") << elsewhere;
    }
}

TEST_F(SettingWordsOf, SettingsOfThePrinterHaveThem) {
    const auto found = words(printer, "StapleLocation", "2Staples");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->title, "Staple");
    EXPECT_EQ(found->choice, "2 Staples");
    EXPECT_EQ(found->panel, "Paper and Output");
    EXPECT_FALSE(words(printer, "StapleLocation", "17Staples"));
}

TEST_F(SettingWordsOf, TraysAreCalledAsInTheirPanel) {
    for (const auto& [finisher, option, key] :
         {std::tuple{"OCT", "Side", CFSTR("OCT")}, std::tuple{"HCSS", "Stacker", CFSTR("StackerTray1")},
          std::tuple{"HCSS_BK", "Stacker", CFSTR("StackerTray")}, std::tuple{"LCSS", "Top", CFSTR("TopTray")},
          std::tuple{"HCSS_BK", "Booklet", CFSTR("BookletMakerBin")}}) {
        EXPECT_EQ(words(printer, "OutputBin", option, finisher)->choice, ownTitle(key)) << finisher << option;
    }
    printer = *openPPD(sourcePath("resources/ppd/Tavro-ZR840.ppd"));
    for (const auto& [finisher, option, key] :
         {std::tuple{"SCT", "Side", CFSTR("SimpleCatchTray")}, std::tuple{"SCT2", "Side", CFSTR("SimpleCatchTray1")},
          std::tuple{"SCT2", "Lower", CFSTR("SimpleCatchTray2")}, std::tuple{"OCT", "Side", CFSTR("OCT")},
          std::tuple{"OCT2", "Side", CFSTR("OCT1")}, std::tuple{"OCT2", "Lower", CFSTR("OCT2")}}) {
        EXPECT_EQ(words(printer, "OutputBin", option, finisher)->choice, ownTitle(key)) << finisher << option;
    }
}

TEST_F(SettingWordsOf, OtherMakersHaveNoPanels) {
    const TemporaryFolder folder;
    std::ostringstream ppd;
    ppd << std::ifstream(sourcePath("resources/ppd/Tavro-ZR420.ppd")).rdbuf();
    std::string text = ppd.str();
    const std::string maker = "*Manufacturer: \"Tavro\"";
    text.replace(text.find(maker), maker.size(), "*Manufacturer: \"Somebody\"");
    std::ofstream(folder / "other.ppd") << text;
    const auto found = words(*openPPD(folder / "other.ppd"), "StapleLocation", "2Staples");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->choice, "2 Staples");
    EXPECT_EQ(found->panel, "");
}

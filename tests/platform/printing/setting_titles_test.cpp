// What people call a printer's settings.
#include "tests/platform/printing/printing_fixture.h"

#include <gtest/gtest.h>

namespace {

/// "TITLE = OPTION", or "(none)".
std::string titles(const Printer& printer, const std::string& keyword, const std::string& option) {
    CFStringRef title = nullptr;
    CFStringRef optionTitle = nullptr;
    const OSStatus status =
        PMPrinterCopySettingTitles(printer.get(), cf(keyword).get(), cf(option).get(), &title, &optionTitle);
    const auto first = CFRef<CFStringRef>::adopt(title);
    const auto second = CFRef<CFStringRef>::adopt(optionTitle);
    if (status != noErr) {
        EXPECT_EQ(status, kPMKeyNotFound);
        EXPECT_EQ(title, nullptr);
        EXPECT_NE(PMGetLastErrorText(), nullptr);
        return "(none)";
    }
    return text(title) + " = " + text(optionTitle);
}

TEST(SettingTitles, AreThePPDsDisplayTexts) {
    const Printer printer(kZR420);
    EXPECT_EQ(titles(printer, "MediaType", "CardStock2"), "Paper Type = Card Stock (One Side Printed)");
    EXPECT_EQ(titles(printer, "Option2", "LCSS"), "Finisher = Light Capacity Stapler Stacker");
    EXPECT_EQ(titles(printer, "MediaType", "Silk"), "(none)");
    EXPECT_EQ(titles(printer, "MediaType", "Custom.Silk"), "(none)");
    EXPECT_EQ(titles(printer, "Fragrance", "Rose"), "(none)");
    CFStringRef title = nullptr;
    EXPECT_EQ(PMPrinterCopySettingTitles(nullptr, CFSTR("Duplex"), CFSTR("None"), &title, &title), paramErr);
    EXPECT_EQ(PMPrinterCopySettingTitles(printer.get(), nullptr, nullptr, &title, &title), kPMKeyNotFound);
}

TEST(SettingTitles, ReadCustomSizesAndHideSecrets) {
    const Printer printer(kZR420);
    EXPECT_EQ(titles(printer, "PageSize", "Custom.200x300mm"), "Paper Size = 200 × 300 mm");
    EXPECT_EQ(titles(printer, "PageSize", "Custom.8.5x0011in"), "Paper Size = 8.5 × 11 in");
    const std::string points = titles(printer, "PageSize", "Custom.595x842");
    EXPECT_TRUE(points == "Paper Size = 209.9 × 297 mm" || points == "Paper Size = 8.26 × 11.69 in") << points;
    for (const char* broken :
         {"Custom.200", "Custom.200x", "Custom.axb", "Custom.2x3furlongs", "Custom.-1x3", "Custom."}) {
        const std::string shown = titles(printer, "PageSize", broken);
        EXPECT_TRUE(shown.starts_with("Paper Size = Custom: ")) << broken << " is " << shown;
    }
    EXPECT_EQ(titles(printer, "JCLPasscode", "Custom.4711"), "Secure Print Passcode = With Passcode");
}

TEST(SettingTitles, ArriveAsUTF8) {
    const TemporaryFolder folder;
    std::string ppd = readFile(kZR420);
    const std::string line = "*OpenUI *MediaType/Paper Type: PickOne";
    ppd.replace(ppd.find(line), line.size(), "*OpenUI *MediaType/Papierqualit\xE4t: PickOne");
    const Printer printer(folder.add("german.ppd", ppd));
    EXPECT_EQ(titles(printer, "MediaType", "Bond"), "Papierqualität = Bond");
}

}  // namespace

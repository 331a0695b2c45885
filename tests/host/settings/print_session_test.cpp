// What a session makes of settings that may come from anywhere.
#include "host/settings/print_session.h"

#include "platform/foundation/CFPropertyList.h"
#include "tests/platform/files/temporary_folder.h"
#include "tests/support/cf_values.h"
#include "tests/support/places.h"

#include <gtest/gtest.h>
#include <fstream>

namespace {

const std::string kZR420 = sourcePath("resources/ppd/Tavro-ZR420.ppd");

class SessionOf : public testing::Test {
protected:
    /// Settings from the XML of the dictionaries below the file's top.
    JobSettings settings(const std::string& tickets) const {
        std::ofstream(file()) << R"(<plist version="1.0"><dict>)" << tickets << "</dict></plist>";
        auto read = readSettingsFile(file());
        EXPECT_TRUE(read);
        return read ? *read : JobSettings{};
    }
    std::string file() const { return folder / "settings.plist"; }

    TemporaryFolder folder;
    Printer printer = *openPPD(kZR420);
};

}  // namespace

TEST_F(SessionOf, NothingHasWhatThePrinterDoesByItself) {
    const PrintSession session(printer, {}, nullptr, "report.pdf");
    EXPECT_EQ(session.copies(), 1);
    EXPECT_EQ(session.orientation(), kPortrait);
    EXPECT_EQ(session.pageRange(), "");
    EXPECT_EQ(session.choice(CFSTR("PageSize")), "Letter");
    EXPECT_EQ(session.choice(CFSTR("Option2")), "");
    CFStringRef name = nullptr;
    PMTicketGetCFString(session.printSettings(), kPMTopLevel, kPMTopLevel, kPMJobNameKey, &name);
    EXPECT_EQ(textOfCF(name), "report.pdf");
}

TEST_F(SessionOf, ItemsOfAWrongKindReadsThemAsMissing) {
    const PrintSession session(printer, settings(R"(
        <key>PMPrintSettingsTicket</key><dict>
          <key>com.apple.print.PrintSettings.PMCopies</key><string>many</string>
          <key>com.apple.print.PrintSettings.PMPageRange</key><integer>3</integer>
          <key>PPDDict</key><array/>
        </dict>
        <key>PMPageFormatTicket</key><dict>
          <key>com.apple.print.PageFormat.PMOrientation</key><integer>9</integer>
        </dict>
        <key>PMPrinterInfoTicket</key><true/>)"),
                               nullptr, "report.pdf");
    EXPECT_EQ(session.copies(), 1);
    EXPECT_EQ(session.pageRange(), "");
    EXPECT_EQ(session.orientation(), kPortrait);
    EXPECT_EQ(session.choice(CFSTR("PageSize")), "Letter");
    EXPECT_TRUE(session.choices().hasKeyword("JCLBanner"));
}

TEST_F(SessionOf, AnotherPrinterKeepsWhatThisOneOffers) {
    const PrintSession session(printer, settings(R"(
        <key>PMPrintSettingsTicket</key><dict><key>PPDDict</key><dict>
          <key>PageSize</key><string>A4</string>
          <key>JCLBanner</key><string>Sometimes</string>
          <key>Jog</key><string>Custom.EndOfWeek</string>
          <key>Fragrance</key><string>Rose</string>
        </dict></dict>)"),
                               nullptr, "report.pdf");
    EXPECT_EQ(session.choice(CFSTR("PageSize")), "A4");
    EXPECT_EQ(session.choice(CFSTR("JCLBanner")), "False");
    EXPECT_EQ(session.choice(CFSTR("Jog")), "None");
    EXPECT_EQ(session.choice(CFSTR("Fragrance")), "Rose");

    CFArrayRef rectangle = nullptr;
    ASSERT_EQ(PMTicketGetCFArray(session.pageFormat(), kPMTopLevel, kPMTopLevel, kPMUnadjustedPaperRectKey, &rectangle),
              noErr);
    const auto expected = makeCFArray();
    for (const double side : {0.0, 0.0, 842.0, 595.0}) {
        CFArrayAppendValue(expected.get(), makeCFNumber(side).get());
    }
    EXPECT_TRUE(CFEqual(rectangle, expected.get()));
}

TEST_F(SessionOf, SettingsLeavesThemAsTheyWere) {
    const JobSettings before = settings(R"(
        <key>PMPrintSettingsTicket</key><dict><key>PPDDict</key><dict>
          <key>Collate</key><string>False</string>
        </dict></dict>)");
    const auto copy = CFRef<CFTypeRef>::adopt(
        CFPropertyListCreateDeepCopy(nullptr, before.printSettings.get(), kCFPropertyListImmutable));
    PrintSession session(printer, before, nullptr, "report.pdf");
    session.setCopies(7);
    session.setChoice(CFSTR("Collate"), CFSTR("True"));
    EXPECT_TRUE(CFEqual(before.printSettings.get(), copy.get()));

    // What is written is what the session holds, and only its owner may read it.
    ASSERT_EQ(writeSettingsFile(session.copySettings(), file()), std::nullopt);
    EXPECT_EQ(std::filesystem::status(file()).permissions(), std::filesystem::perms(0600));
    const PrintSession again(printer, *readSettingsFile(file()), nullptr, "report.pdf");
    EXPECT_EQ(again.copies(), 7);
    EXPECT_EQ(again.choice(CFSTR("Collate")), "True");
}

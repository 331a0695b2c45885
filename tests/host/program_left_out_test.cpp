// What the program tells before it prints a job that leaves something out.
#include "tests/host/program_fixture.h"

#include <algorithm>
#include <iterator>
#include <regex>

namespace fs = std::filesystem;

namespace {

const std::string kHeader = "notice: The printer will not do all that you have chosen.\n";

class LeavesOut : public ProgramTest {
protected:
    std::string settings(const std::string& items) const {
        return add("settings.plist", "<plist version=\"1.0\"><dict><key>PMPrintSettingsTicket</key><dict>" + items +
                                         "</dict></dict></plist>");
    }
    /// A job without a window, but for the dates in it.
    std::string job(const std::string& items, const Words& more = {}) const {
        Words arguments{"--ppd", kZR420, "--print", "--ticket-in", settings(items), "--job-out", jobFile(), kTenPages};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const Run done = run(arguments);
        EXPECT_EQ(done.status, 0) << done.errors;
        errors = done.errors;
        return std::regex_replace(contentOf(jobFile()), std::regex("%%CreationDate.*"), "");
    }
    std::string jobFile() const { return folder / "job.ps"; }

    mutable std::string errors;
};

/// Everything that a panel can leave in the settings and no PPD option tells.
const std::string kAllLeftOut = R"(
    <key>PPDDict</key><dict><key>TRFoldOptions</key><string>BookletFoldStapleOpt</string></dict>
    <key>com.tavro.print.JobLevelStock</key><dict><key>Weight</key><integer>90</integer></dict>
    <key>com.tavro.print.SpecialPages.InsertList</key><array>
      <dict><key>StartPage</key><integer>3</integer><key>Quantity</key><integer>2</integer></dict></array>
    <key>com.tavro.print.SpecialPages.ExceptionList</key><array>
      <dict><key>StartPage</key><integer>4</integer><key>EndPage</key><integer>9</integer>
        <key>Stock</key><dict><key>Color</key><integer>2</integer></dict>
        <key>SidesImaged</key><integer>2</integer>
        <key>com.tavro.print.ImageShiftOptionsPage</key><dict><key>Option</key><integer>2</integer></dict></dict></array>
    <key>com.tavro.print.SpecialPages.BackCover</key><dict/>
    <key>com.tavro.print.BookletLayout</key><true/>
    <key>com.tavro.print.BookletDrawOutlines</key><integer>1</integer>
    <key>com.tavro.print.AdvancedBookletLayoutOrderStr</key><integer>1</integer>
    <key>com.tavro.print.FinishingOptions</key><integer>10</integer>
    <key>com.tavro.print.FinishingSlipSheet</key><integer>2</integer>
    <key>com.tavro.print.FinishingOffset</key><integer>2</integer>
    <key>com.tavro.print.InvertImageOptions</key><dict>
      <key>NegativeImage</key><integer>1</integer><key>MirrorImage</key><integer>1</integer></dict>
    <key>com.tavro.print.AdvancedRotateImage180</key><integer>1</integer>
    <key>com.tavro.print.JobNotesMessage</key><string>Hello</string>
    <key>com.tavro.print.FaxRecipientList</key><array><dict/><dict/></array>
    <key>com.tavro.print.JobType</key><dict><key>JobType</key><integer>5</integer></dict>)";

}  // namespace

TEST_F(LeavesOut, WhatItSaysItLeavesOut) {
    const std::string plain = job("");
    EXPECT_EQ(errors, "");
    EXPECT_EQ(job(kAllLeftOut), plain);
    EXPECT_EQ(std::ranges::count(errors, '\n'), 13) << errors;
    for (const char* line :
         {"tavro-print: The insert will be missing.\n", "tavro-print: Pages 4-9 will be printed like all other pages",
          "tavro-print: The document will be printed, not faxed to the 2 recipients.\n"}) {
        EXPECT_NE(errors.find(line), std::string::npos) << line << errors;
    }
    for (const int type : {3, 4, 8}) {
        const std::string item = "<key>com.tavro.print.JobType</key><dict><key>JobType</key><integer>" +
                                 std::to_string(type) + "</integer></dict>";
        EXPECT_EQ(job(item), plain) << type;
        EXPECT_EQ(std::ranges::count(errors, '\n'), 1) << errors;
    }
}

TEST_F(LeavesOut, NothingWithoutTellingItInTheDialog) {
    const std::string text =
        "panel \"Image Options\"\nclick Tshl:911\npanel Layout\nchoose Tshl:6004 \"On\"\n"
        "ok\nexpect window \"Print\"\nchoose Tshl:6004 \"Off\"\nanswer other\nok\n";
    const Run done = script(text, {"--job-out", jobFile()});
    EXPECT_EQ(done.status, 0) << done.errors;
    EXPECT_EQ(done.output,
              kHeader +
                  "        • The pages will not be put together as a booklet: each is printed on a side of "
                  "its own, in the order of the document.\n"
                  "        • The pages will not be negative.\n" +
                  kHeader + "        The pages will not be negative.\n");
    EXPECT_TRUE(fs::exists(jobFile()));

    const Run left =
        script("panel \"Image Options\"\nclick Tshl:911\nok\ncancel\n", {"--job-out", folder / "other.ps"});
    EXPECT_EQ(left.status, 1) << left.errors;
    EXPECT_FALSE(fs::exists(folder / "other.ps"));
}

TEST_F(LeavesOut, AndAsksAboutItAfterWhatMustBeChangedFirst) {
    const std::string secure =
        "<key>com.tavro.print.JobType</key><dict><key>JobType</key><integer>6</integer></dict>"
        "<key>com.tavro.print.AdvancedRotateImage180</key><integer>1</integer>";
    const Run done =
        script("type Host:31 \"99\"\nok\nchoose Tshl:102 \"Normal Print\"\nok\ntype Host:31 \"9\"\nanswer other\nok\n",
               {"--ticket-in", settings(secure), "--job-out", jobFile()});
    EXPECT_EQ(done.status, 0) << done.errors;
    const std::size_t passcode = done.output.find("notice: Secure Print needs a passcode");
    const std::size_t pages = done.output.find("notice: Please check the pages to print.");
    const std::size_t leftOut = done.output.find(kHeader + "        The pages will not be rotated by 180 degrees.\n");
    EXPECT_LT(passcode, pages) << done.output;
    EXPECT_LT(pages, leftOut) << done.output;
    EXPECT_NE(leftOut, std::string::npos) << done.output;
}

TEST_F(LeavesOut, NoItemOfThePanelsOutOfItsAccount) {
    enum By {
        kOption,    // an option of the PPD that goes with it
        kHost,      // the program itself reads it
        kToldOf,    // nothing, and the program tells so
        kDetail,    // of one that is told of
        kNoChoice,  // nobody chooses it
    };
    // clang-format off
    static constexpr struct { const char* name; By by; } kItems[] = {
        // item of com.tavro.print            carried by
        {"AdvancedBookletLayoutOrderStr",     kDetail},
        {"AdvancedRotateImage180",            kToldOf},
        {"BookletDrawOutlines",               kDetail},
        {"BookletFoldStaple",                 kOption},   // TRFoldOptions
        {"BookletForceNewSize",               kToldOf},
        {"BookletLayout",                     kToldOf},
        {"EmitTPIF",                          kNoChoice}, // on, and none of the instructions are sent anyway
        {"FaxOptions",                        kHost},     // its cover sheet
        {"FaxRecipientList",                  kToldOf},
        {"FinishingCollateStaple",            kOption},   // Collate, StapleLocation, TRFoldOptions
        {"FinishingCustom",                   kDetail},
        {"FinishingDuplex",                   kOption},   // Duplex
        {"FinishingOffset",                   kToldOf},
        {"FinishingOffsetEnableSubset",       kToldOf},
        {"FinishingOffsetPagesPerSubset",     kDetail},
        {"FinishingOptions",                  kToldOf},
        {"FinishingOutputColor",              kHost},     // JCLColorCorrection, told of without it
        {"FinishingOutputDestination",        kOption},   // OutputBin
        {"FinishingSlipSheet",                kToldOf},
        {"InvertImageOptions",                kToldOf},
        {"JobLevelStock",                     kOption},   // MediaColor, MediaType; told of for all else
        {"JobType",                           kHost},     // or told of
        {"RotateBooklet180Degrees",           kNoChoice},
        {"SeparatorColor",                    kDetail},
        {"SeparatorOption",                   kToldOf},
        {"SpecialPages.BackCover",            kOption},   // JCLCovers, told of without it
        {"SpecialPages.ExceptionList",        kToldOf},
        {"SpecialPages.FrontCover",           kOption},   // JCLCovers, JCLMediaColor, JCLMediaType
        {"SpecialPages.InsertList",           kToldOf},
        {"TPIFOptions",                       kNoChoice},
        {"watermark.FirstPageOnly",           kHost},
        {"watermark.Option",                  kHost},
        {"watermark.Watermark",               kHost},
    };
    // clang-format on
    static_assert(std::ranges::is_sorted(kItems, {}, [](const auto& row) { return std::string_view(row.name); }));
    const std::string rest =
        R"(<key>com.tavro.print.SpecialPages.FrontCover</key><dict><key>SidesImaged</key><integer>4</integer></dict>
        <key>com.tavro.print.FaxOptions</key><dict/>
        <key>com.tavro.print.watermark.Watermark</key><string>Draft</string>
        <key>com.tavro.print.FinishingOffsetEnableSubset</key><integer>1</integer>)";
    std::string walk;
    for (const char* panel : {"2", "3", "4", "5", "6", "1"}) {
        walk += std::string("panel ") + panel + "\n";
    }
    const Run done = script(walk + "answer other\nok\n", {"--ticket-in", settings(kAllLeftOut + rest), "--ticket-out",
                                                          folder / "out.plist", "--job-out", jobFile()});
    ASSERT_EQ(done.status, 0) << done.errors;
    const std::string out = contentOf(folder / "out.plist");
    for (const auto& row : kItems) {
        EXPECT_NE(out.find("<key>com.tavro.print." + std::string(row.name) + "</key>"), std::string::npos)
            << row.name << " is written no more";
    }
    const std::regex key("\n\t\t<key>com\\.tavro\\.print\\.([^<]*)</key>");
    for (auto at = std::sregex_iterator(out.begin(), out.end(), key); at != std::sregex_iterator(); ++at) {
        const std::string name = (*at)[1];
        EXPECT_TRUE(name.starts_with("JobNotes") ||
                    std::ranges::any_of(kItems, [&](const auto& row) { return name == row.name; }))
            << name << ": does it reach the printer?";
    }
}

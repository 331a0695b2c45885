// What the program tells before it prints a job that leaves something out.
#include "driver/proof/proof.h"
#include "tests/host/program/program_fixture.h"

#include <algorithm>
#include <iterator>
#include <regex>

namespace fs = std::filesystem;

namespace {

const std::string kHeader = "notice: The printer will not do all that you have chosen.\n";

class LeavesOut : public ProgramTest {
protected:
    /// A job without a window, but for the dates in it.
    std::string job(const std::string& items, const Words& more = {}) const {
        Words arguments{"--ppd",     kZR420,    "--print", "--ticket-in", settingsWith("", items),
                        "--job-out", jobFile(), kTenPages};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const Run done = run(arguments);
        EXPECT_EQ(done.status, 0) << done.errors;
        errors = done.errors;
        return std::regex_replace(contentOf(jobFile()), std::regex("%%CreationDate.*"), "");
    }
    std::string jobFile() const { return folder / "job.ps"; }

    mutable std::string errors;
};

/// Inserts after page 3, and after one that the document does not have.
const std::string kInserts = R"(
    <key>com.tavro.print.SpecialPages.InsertList</key><array>
      <dict><key>StartPage</key><integer>3</integer><key>Quantity</key><integer>2</integer></dict>
      <dict><key>StartPage</key><integer>99</integer><key>Quantity</key><integer>1</integer></dict></array>)";

}  // namespace

TEST_F(LeavesOut, WhatItSaysItLeavesOut) {
    const auto sheets = [this] {
        std::string reason;
        const auto proof = readProof(jobFile(), &reason);
        EXPECT_TRUE(proof) << reason;
        return proof ? proof->sheets.size() : 0;
    };
    job("");
    EXPECT_EQ(errors, "");
    EXPECT_EQ(sheets(), 10U);
    job(kInserts);
    EXPECT_EQ(errors, "tavro-print: The insert after page 99 will be missing: the document has 10 pages.\n");
    EXPECT_EQ(sheets(), 12U);
}

TEST_F(LeavesOut, NothingWithoutTellingItInTheDialog) {
    const std::string sentence =
        kHeader + "        The insert after page 99 will be missing: the document has 10 pages.\n";
    const std::string shown =
        "expect Host:71 text \"The insert after page 99 will be missing: the document has 10 pages.\"\n";
    const Run done = script(shown + "ok\nexpect window \"Print\"\nanswer other\nok\n",
                            {"--ticket-in", settingsWith("", kInserts), "--job-out", jobFile()});
    EXPECT_EQ(done.status, 0) << done.errors;
    EXPECT_EQ(done.output, sentence + sentence);
    EXPECT_TRUE(fs::exists(jobFile()));
    const Run left = script(
        "type Host:31 \"5-6\"\nexpect Host:71 text \"The insert after page 99 will be missing: the document has 10 "
        "pages. And one more problem.\"\nset Host:30 1\npanel Layout\nchoose Tshl:6004 \"On\"\nexpect Host:71 text "
        "\"This also changed “2-Sided Printing” from “1-Sided” to “2-Sided, Flip on Short Edge”. Inserts will be "
        "missing: "
        "a booklet cannot have any.\"\nok\ncancel\n",
        {"--ticket-in", settingsWith("", kInserts), "--job-out", folder / "other.ps"});
    EXPECT_EQ(left.status, 1) << left.errors;
    EXPECT_FALSE(fs::exists(folder / "other.ps"));
}

TEST_F(LeavesOut, AndAsksAboutItAfterWhatMustBeChangedFirst) {
    const std::string secure =
        "<key>com.tavro.print.JobType</key><dict><key>JobType</key><integer>6</integer></dict>" + kInserts;
    const Run done = script("ok\nchoose Tshl:102 \"Normal Print\"\ntype Host:31 \"9\"\nanswer other\nok\n",
                            {"--ticket-in", settingsWith("", secure), "--job-out", jobFile()});
    EXPECT_EQ(done.status, 0) << done.errors;
    const std::size_t passcode = done.output.find("notice: Secure Print needs a passcode");
    const std::size_t leftOut = done.output.find(kHeader);
    EXPECT_LT(passcode, leftOut) << done.output;
    EXPECT_NE(leftOut, std::string::npos) << done.output;
}

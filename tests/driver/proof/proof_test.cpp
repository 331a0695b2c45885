// Jobs read as a printer reads them: small ones, made by hand.

#include "driver/proof/proof.h"
#include "tests/driver/proof/proof_words.h"
#include "tests/platform/files/temporary_folder.h"

#include <gtest/gtest.h>

#include <fstream>

namespace {

const std::string kExit = "\x1b%-12345X";

class Proofs : public testing::Test {
protected:
    std::optional<Proof> read(const std::string& job) {
        std::ofstream(folder_ / "job.ps", std::ios::binary) << job;
        return readProof(folder_ / "job.ps", &reason_, 1);
    }
    std::string wordsOfPages(const std::string& postScript) {
        const auto proof = read("%!PS\n" + postScript);
        return proof ? wordsOf(*proof) : reason_;
    }

    TemporaryFolder folder_;
    std::string reason_;
};

const std::string kFont = "/Helvetica findfont 36 scalefont setfont\n";

std::string page(const std::string& text) {
    return "72 72 moveto (" + text + ") show showpage\n";
}
std::string device(const std::string& wishes) {
    return "<<" + wishes + ">>setpagedevice\n";
}

}  // namespace

TEST_F(Proofs, HaveCommandsInstructionsAndSheets) {
    const auto proof = read(kExit + "@PJL JOB\r\n@PJL SET TRBANNER=ON\r\n@PJL COMMENT TPIF job-name=50%25%0A\n" +
                            "@PJL COMMENT a remark\n@PJL ENTER LANGUAGE = POSTSCRIPT\n%!PS\n" +
                            device("/NumCopies 3/Collate false/Staple 3/StapleDetails<</StapleCount 2>>") + kFont +
                            page("one") + kExit + "@PJL SET LATE=1\n@PJL ENTER LANGUAGE=POSTSCRIPT\n%!PS\n" + kFont +
                            page("two") + kExit + "@PJL EOJ\n" + kExit);
    ASSERT_TRUE(proof) << reason_;
    EXPECT_EQ(proof->setting("TRBANNER"), "ON");
    EXPECT_EQ(proof->setting("LATE"), "1");
    EXPECT_EQ(proof->instruction("job-name"), std::vector<std::string>{"50%\n"});
    EXPECT_EQ(proof->instructions.size(), 1U);
    EXPECT_EQ(wordsOf(*proof), "[one] [two]");
    EXPECT_EQ(proof->copies, 3);
    EXPECT_FALSE(proof->isCollated);
    EXPECT_EQ(proof->finishing.at("StapleDetails"), "StapleCount=2");
    EXPECT_NEAR(proof->sheets[0].side1.left, 72, 4);
    EXPECT_NEAR(proof->sheets[0].side1.bottom, 72, 4);
    EXPECT_EQ(proof->errors, std::vector<std::string>());
}

TEST_F(Proofs, FollowThePaper) {
    EXPECT_EQ(wordsOfPages(kFont + device("/Duplex true/Tumble true/MediaColor(White)") + page("1") + page("2") +
                           page("3") + device("/MediaColor(Blue)") + page("4") + "showpage\n" +
                           device("/Duplex false/MediaColor null") + page("5")),
              "[1|2]s [3|-]s Blue[4|-]s [5]")
        << "another paper begins a new sheet";
    EXPECT_EQ(wordsOfPages(kFont + device("/PageSize[595 842]") + page("1") +
                           "1 setgray 0 0 300 300 rectfill showpage 0 setgray " + "save " + page("2") + "restore " +
                           device("/MediaType(Heavy)") + page("3")),
              "595x842[1] 595x842[-] 595x842[2] 595x842 Heavy[3]");
}

TEST_F(Proofs, TellWhatIsWrong) {
    const auto broken = read("%!PS\n" + kFont + page("1") + "nonsense\n" + page("2"));
    ASSERT_TRUE(broken);
    EXPECT_EQ(wordsOf(*broken), "[1]");
    ASSERT_EQ(broken->errors.size(), 1U);
    EXPECT_NE(broken->errors[0].find("nonsense"), std::string::npos) << broken->errors[0];

    for (const char* text : {"", "no job\n", "%PDF-1.6\n", "\x1b%-12345X@PJL JOB\n@PJL EOJ\n"}) {
        EXPECT_FALSE(read(text)) << text;
        EXPECT_EQ(reason_, "is no job for a PostScript printer") << text;
    }
    EXPECT_FALSE(read("%!PS\n{}loop\n"));
    EXPECT_EQ(reason_, "its PostScript does not come to an end");
    EXPECT_FALSE(readProof("/dev/zero", &reason_));
    EXPECT_EQ(reason_, "is no file");
    EXPECT_FALSE(readProof(folder_ / "none", &reason_));
    EXPECT_EQ(reason_, "No such file or directory");
}

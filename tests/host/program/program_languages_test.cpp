// The program in the user's language.
#include "tests/host/program/program_fixture.h"
#include "tests/support/places.h"

namespace {

namespace fs = std::filesystem;

class Languages : public ProgramTest {
protected:
    static std::vector<std::string> all() {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(stagePath("TavroPrint.bundle/Contents/Resources"))) {
            if (entry.path().extension() == ".lproj") {
                names.push_back(entry.path().stem().string());
            }
        }
        return names;
    }
};

}  // namespace

/// What is chosen is the same, whatever it is called and whichever digits it is typed in.
TEST_F(Languages, MakeTheSameSettings) {
    const std::string choices = add("script", R"(
        set Host:20 3
        set Tshl:113 2
        item Tshl:104 Sclr 2
        panel 2
        click TSPg:100
        set TSPg:2000 2
        command "ok  "
        panel 4
        set Tshl:6004 2
        type Host:31 "٢-٤, 7"
        ok)");
    std::string english;
    for (const std::string& language : all()) {
        const std::string settings = folder / (language + ".plist").c_str();
        const Run done = run(
            {"--ppd", kZR420, "--script", choices, "--ticket-out", settings, "--job-out", folder / "job.ps", kTenPages},
            {"LANGUAGE=" + language, "LC_ALL=" + language + ".UTF-8"});
        EXPECT_EQ(done.status, 0) << language << ": " << done.errors << done.output;
        english = english.empty() ? contentOf(settings) : english;
        EXPECT_EQ(contentOf(settings), english) << language;
    }
    EXPECT_FALSE(english.empty());
}

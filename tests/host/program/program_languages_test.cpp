// The program in the user's language.
#include "tests/host/program/program_fixture.h"
#include "tests/support/places.h"

#include <array>

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
    const std::string choices = sourcePath("docs/examples/any-language.tavro-script");
    std::string english;
    for (const std::string& language : all()) {
        const std::string settings = folder / (language + ".plist").c_str();
        const Run done = run({"--ppd", kZR420, "--script", choices, "--shots", folder / "shots", "--ticket-out",
                              settings, "--job-out", folder / "job.ps", kTenPages},
                             {"LANGUAGE=" + language, "LC_ALL=" + language + ".UTF-8"});
        EXPECT_EQ(done.status, 0) << language << ": " << done.errors << done.output;
        english = english.empty() ? contentOf(settings) : english;
        EXPECT_EQ(contentOf(settings), english) << language;
    }
    EXPECT_FALSE(english.empty());
}

/// What goes wrong is told in the user's language, whatever the C library has of it: of a missing file, of a wrong
/// option, of settings that cannot go together, with the PPD's names of them, and of a document that another program
/// has looked at.
TEST_F(Languages, TellWhatGoesWrong) {
    struct Row {
        const char* language;
        const char* missing;
        const char* option;
        const char* conflict;
        const char* damaged;
    };
    // language, words of its messages
    static constexpr std::array kRows{
        Row{"de", "Datei oder Ordner nicht gefunden", "diese Option gibt es nicht",
            "Nicht zusammen möglich: „2-seitiger Druck: 2-seitig, lange Kante“", "ist kein PDF"},
        Row{"ja", "ファイルまたはフォルダーがありません", "このようなオプションはありません",
            "「両面印刷: 両面、長辺とじ」は、「用紙の種類: OHPフィルム」と同時に使用", "PDFでないか"},
        Row{"ar", "لا يوجد ملف أو مجلد كهذا", "لا يوجد خيار كهذا", "وجهان، قلب على الحافة الطويلة", "ليس ملف PDF"},
    };
    const std::string settings = add("settings.plist",
                                     "<plist version=\"1.0\"><dict><key>PMPrintSettingsTicket</key><dict><key>PPDDict"
                                     "</key><dict><key>MediaType</key><string>Transparency</string><key>Duplex</key>"
                                     "<string>DuplexNoTumble</string></dict></dict></dict></plist>");
    const std::string broken = add("broken.pdf", "no PDF at all");
    const std::string gone = folder / "gone.pdf";
    for (const Row& row : kRows) {
        const auto told = [&](int status, const std::string& start, const char* words, const Words& arguments) {
            const Run done = run(arguments, {std::string("LANGUAGE=") + row.language, "LC_ALL=C.UTF-8"});
            EXPECT_EQ(done.status, status) << row.language;
            EXPECT_TRUE(done.errors.starts_with("tavro-print: " + start)) << done.errors;
            EXPECT_NE(done.errors.find(words), std::string::npos) << done.errors;
            EXPECT_EQ(std::ranges::count(done.errors, '\n'), 1) << done.errors;
        };
        const std::string job = folder / "job.ps";
        told(4, gone + ": ", row.missing, {"--ppd", kZR420, "--print", "--job-out", job, gone});
        told(2, "--fast: ", row.option, {"--fast", gone});
        told(4, broken + ": ", row.damaged, {"--ppd", kZR420, "--print", "--job-out", job, broken});
        told(0, "", row.conflict,
             {"--ppd", stagePath("ppd/Tavro-ZR420.ppd"), "--print", "--job-out", job, "--ticket-in", settings,
              kTenPages});
    }
}

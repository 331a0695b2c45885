// What bash offers behind the Tab key.
#include "tests/host/program/program_fixture.h"
#include "tests/support/places.h"
#include "tests/support/print_server.h"

#include <algorithm>
#include <filesystem>
#include <regex>
#include <set>

namespace fs = std::filesystem;

namespace {

class Completion : public ProgramTest {
protected:
    using Offers = std::set<std::string>;

    /// What is offered at the end of a line that begins with the program.
    Offers offers(const std::string& line, const Words& environment = {}) const {
        const Run done = start(sourcePath("tests/packaging/complete.sh"),
                               {sourcePath("packaging/completions/tavro-print"), kProgram + " " + line}, environment);
        EXPECT_EQ(done.errors, "");
        std::istringstream lines(done.output);
        Offers found;
        for (std::string offer; std::getline(lines, offer);) {
            found.insert(offer);
        }
        return found;
    }

    /// A file in a folder that has nothing else; its path.
    std::string make(const char* name) const {
        fs::create_directory(place);
        std::ofstream(place / name).flush();
        return place / name;
    }

    const fs::path place = folder.path() / "place";
    const std::string here = place.string() + "/";
};

}  // namespace

TEST_F(Completion, OffersEveryOptionOfTheHelp) {
    const std::string help = run({"--help"}).output;
    const std::regex option("--[a-z][a-z-]*");
    Offers wanted;
    for (std::sregex_iterator match(help.begin(), help.end(), option), end; match != end; ++match) {
        wanted.insert(match->str());
    }
    EXPECT_GT(wanted.size(), 10u);
    EXPECT_EQ(offers("--"), wanted);
    EXPECT_EQ(offers("--ppd x.ppd --pri"), (Offers{"--print", "--printer"}));
    EXPECT_EQ(offers("-- --pri"), Offers{}) << "behind -- stands the document";
}

TEST_F(Completion, OffersFilesOfTheTypeThatAnOptionTakes) {
    const std::string ppd = make("a.ppd");
    const std::string plist = make("b.plist");
    const std::string pdf = make("c.pdf");
    const std::string script = make("d.tavro-script");
    const std::string sub = here + "sub";
    fs::create_directory(sub);
    EXPECT_EQ(offers("--ppd " + here), (Offers{ppd, sub}));
    EXPECT_EQ(offers("--ppd=" + here), (Offers{ppd, sub}));
    EXPECT_EQ(offers("--ticket-in " + here), (Offers{plist, sub}));
    EXPECT_EQ(offers("--ticket-out " + here), (Offers{plist, sub}));
    EXPECT_EQ(offers("--script " + here), (Offers{script, sub}));
    EXPECT_EQ(offers("--job-out " + here), (Offers{ppd, plist, pdf, script, sub}));
    EXPECT_EQ(offers("--shots " + here), Offers{sub});
    EXPECT_EQ(offers("--print " + here), (Offers{pdf, sub}));
    EXPECT_EQ(offers("--ppd x.ppd -- " + here), (Offers{pdf, sub}));
    EXPECT_EQ(offers("--ppd " + here + "b"), Offers{plist}) << "another type, when there is nothing else";
}

TEST_F(Completion, OffersTheInstalledOptionsOfThePPD) {
    const Offers finishers{"None", "OCT", "BLCSS", "LCSS", "HCSS", "HCSS_BK"};
    EXPECT_EQ(offers("--ppd " + kZR420 + " --installed Option2="), finishers);
    EXPECT_EQ(offers("--ppd=" + kZR420 + " --installed=Option2="), finishers);
    EXPECT_EQ(offers("--ppd " + kZR420 + " --installed Option2=HC"), (Offers{"HCSS", "HCSS_BK"}));
    EXPECT_EQ(offers("--installed Option2=None --ppd " + kZR420 + " --installed Option3"),
              (Offers{"Option3=False", "Option3=True"}));
    EXPECT_EQ(offers("--ppd " + make("none.ppd") + " --installed "), Offers{});
    EXPECT_EQ(offers("--ppd " + here + "missing --installed "), Offers{});
}

TEST_F(Completion, OffersTheWordsOfAnOption) {
    EXPECT_EQ(offers("--check --format "), (Offers{"json", "text"}));
    EXPECT_EQ(offers("--check --format=j"), Offers{"json"});
}

TEST_F(Completion, OffersThePresetsOfTheUser) {
    EXPECT_EQ(offers("--preset "), Offers{});
    for (const char* name : {"Draft", "Drafts & <more>", "Handouts"}) {
        ASSERT_EQ(
            script("choose Host:13 \"Save as Preset…\"\ntype Host:100 \"" + std::string(name) + "\"\nclick Host:101")
                .status,
            1);
    }
    EXPECT_EQ(offers("--preset Dr"), (Offers{"Draft", R"(Drafts\ \&\ \<more\>)"}));
    EXPECT_EQ(offers("--preset Draft"), (Offers{"Draft", R"(Drafts\ \&\ \<more\>)"}));
    EXPECT_EQ(offers("--preset=H"), Offers{"Handouts"});
}

TEST_F(Completion, OffersWhatTheServerHas) {
    const PrintServer server(folder.path() / "server");
    const Words environment{"CUPS_SERVER=" + server.address()};
    server.addQueue("office", sourcePath("resources/ppd/Tavro-ZR410.ppd"));
    server.addQueue("works", kZR420);
    server.admin("lpadmin -p works -o Option2=LCSS");
    server.admin("lpadmin -d works");
    server.admin("HOME='" + folder.path().string() + "' lpoptions -p office/draft -o Duplex=None");

    EXPECT_EQ(offers("--printer ", environment), (Offers{"office", "office/draft", "works"}));
    EXPECT_EQ(offers("--printer=office/", environment), Offers{"office/draft"});
    EXPECT_EQ(offers("--printer office/draft --installed Option1=", environment), (Offers{"False", "True"}));
    EXPECT_EQ(offers("--printer works --installed Option2=LC", environment), Offers{"LCSS"});
    EXPECT_EQ(offers("--installed Option4", environment), (Offers{"Option4=False", "Option4=True"}))
        << "of the default queue";

    server.freeze();
    EXPECT_EQ(offers("--printer ", environment), Offers{}) << "the shell does not wait for a server that says nothing";
    server.wake();
}

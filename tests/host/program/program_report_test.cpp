// What is told to programs: JSON, and printing from a pipe.
#include "tests/host/program/program_fixture.h"
#include "tests/support/places.h"
#include "tests/support/print_server.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <regex>

namespace fs = std::filesystem;

namespace {

const std::string kZR840 = sourcePath("resources/ppd/Tavro-ZR840.ppd");

class Reports : public ProgramTest {
protected:
    /// The one document that a run has printed, which must be the kind's.
    QJsonObject report(const char* kind, const Words& arguments, int status = 0, const Words& environment = {}) const {
        Words words = arguments;
        words.insert(words.end(), {"--format", "json"});
        const Run told = run(words, environment);
        EXPECT_EQ(told.status, status) << told.errors;
        EXPECT_EQ(told.errors, "");
        QJsonParseError error{};
        QJsonObject object = QJsonDocument::fromJson(QByteArray::fromStdString(told.output), &error).object();
        EXPECT_EQ(error.error, QJsonParseError::NoError) << told.output;
        EXPECT_EQ(text(object["kind"]), kind);
        EXPECT_EQ(object["version"].toInt(), 1);
        expectDescribed(object);
        return object;
    }
    /// Every field has a name in the description.
    static void expectDescribed(const QJsonValue& value) {
        static const std::string description = contentOf(sourcePath("docs/automation.md"));
        const QJsonObject object = value.toObject();
        for (auto field = object.begin(); field != object.end(); ++field) {
            const std::string name = field.key().toStdString();
            EXPECT_TRUE(std::regex_search(description, std::regex("[`.]" + name + "(\\[\\])?`"))) << name;
            expectDescribed(field.value());
        }
        const QJsonArray all = value.toArray();
        std::ranges::for_each(all.begin(), all.end(), [](const QJsonValue& each) { expectDescribed(each); });
    }
    static std::string text(const QJsonValue& value) { return value.toString("(no text)").toStdString(); }

    /// "Blue:1,2|3,-" for each sheet: its paper, the pages of its sides as they stand in the texts of a proof or the
    /// numbers of a plan. What is the same of both.
    static std::string sheetsOf(const QJsonObject& report) {
        std::string all = report["isCollated"].toBool() ? "" : "uncollated ";
        all += std::to_string(report["copies"].toInt()) + "x";
        for (const QJsonValue sheet : report["sheets"].toArray()) {
            const QJsonObject paper = sheet["paper"].toObject();
            all += " " + text(paper["size"]) + "," + text(paper["color"]) + "," + text(paper["type"]) + "," +
                   std::to_string(paper["weight"].toInt()) + "," + std::to_string(paper["width"].toInt());
            all += sheet["flip"].isNull() ? "" : "," + text(sheet["flip"]);
            for (const QJsonValue side : sheet["sides"].toArray()) {
                std::string pages;
                for (const QJsonValue page : side["pages"].toArray()) {
                    pages += page.isNull() ? "" : "Page " + std::to_string(page.toInt()) + " ";
                }
                pages = side["pages"].isUndefined() && side["text"].isString() ? text(side["text"]) + " " : pages;
                EXPECT_EQ(side["isBlank"].toBool(), pages.empty());
                all += "|" + pages;
            }
        }
        return all;
    }
};

}  // namespace

// The plan and the proof of one job have the same sheets, in the same words.
TEST_F(Reports, ThePlanIsWhatTheJobPutsOnPaper) {
    const std::string made = folder / "made.plist";
    const Run chosen =
        run({"--ppd", kZR840, "--ticket-out", made, "--job-out", folder / "job.ps", "--script", add("script", R"script(
set Host:20 2
choose Host:40 "A4 (210 x 297 mm)"
panel "Paper and Output"
choose Tshl:113 "2-Sided, Flip on Long Edge"
panel "Special Pages"
click TSPg:100
choose TSPg:2000 "Front Cover Only"
choose TSPg:2101 "Printed"
item TSPg:2110 Sclr 2
command "ok  "
click TSPg:200
type TSPg:3003 "5"
item TSPg:3020 Sclr 3
command "ok  "
ok)script"),
             kTenPages});
    ASSERT_EQ(chosen.status, 0) << chosen.errors;
    const QJsonObject check = report("check", {"--ppd", kZR840, "--ticket-in", made, "--check", kTenPages});
    const QJsonObject plan = check["plan"].toObject();
    const QJsonObject proof = report("proof", {"--ppd", kZR840, "--proof", folder / "job.ps"});
    EXPECT_EQ(sheetsOf(plan), sheetsOf(proof));
    EXPECT_NE(sheetsOf(plan).find("2x A4,Blue,"), std::string::npos) << sheetsOf(plan);
    EXPECT_EQ(plan["sheetCount"].toInt(), plan["sheets"].toArray().size());
    std::string kinds;
    for (const QJsonValue sheet : plan["sheets"].toArray()) {
        kinds += text(sheet["kind"]) + " ";
    }
    EXPECT_EQ(kinds, "cover document document insert document document document ");
    EXPECT_EQ(text(check["document"]["name"]), "ten-pages.pdf");

    const QJsonObject booklet = report(
        "check", {"--ppd", kZR840, "--check", "--ticket-in",
                  settingsWith("Duplex=DuplexTumble", "<key>com.tavro.print.BookletLayout</key><true/>"), kTenPages});
    EXPECT_TRUE(booklet["plan"]["sheets"][0]["sides"][0]["pages"][0].isNull()) << sheetsOf(booklet["plan"].toObject());
    EXPECT_EQ(booklet["plan"]["sheets"][0]["sides"][0]["pages"][1].toInt(), 1);
}

TEST_F(Reports, WhatIsWrongAndNoSecret) {
    const std::string file = settingsWith(
        "MediaType=Transparency Duplex=DuplexTumble Jog=Sometimes TRStaple=1StapleTL JCLPasscode=Custom.4711 "
        "OutputBin=Stacker");
    const QJsonObject check = report("check", {"--ppd", kZR840, "--check", "--ticket-in", file, kTenPages}, 4);
    EXPECT_EQ(text(check["conflicts"][0]["settings"][1]["keyword"]), "MediaType");
    EXPECT_EQ(text(check["remedy"][0]["keyword"]) + text(check["remedy"][0]["option"]), "DuplexNone");
    EXPECT_EQ(text(check["notOffered"][0]["keyword"]) + text(check["notOffered"][0]["option"]), "JogSometimes");
    EXPECT_EQ(text(check["plan"]["finishing"][0]["option"]) + text(check["plan"]["finishings"][0]),
              "1StapleTLstaple-top-left");
    EXPECT_EQ(text(check["plan"]["tray"]["option"]), "Stacker");
    // The lines are the same sentences.
    EXPECT_EQ(run({"--ppd", kZR840, "--check", "--ticket-in", file, kTenPages}).output,
              text(check["conflicts"][0]["text"]) + "\n");

    ASSERT_EQ(run({"--ppd", kZR840, "--print", "--ticket-in", file, "--job-out", folder / "job.ps", kTenPages}).status,
              0);
    const QJsonObject proof = report("proof", {"--ppd", kZR840, "--proof", folder / "job.ps"});
    EXPECT_EQ(text(proof["finishing"][0]["kind"]) + text(proof["finishing"][0]["position"]), "stapleTopLeft");
    EXPECT_EQ(text(proof["tray"]["option"]), "Stacker");
    for (const QJsonObject& object : {check, proof}) {
        const std::string all = QJsonDocument(object).toJson().toStdString();
        EXPECT_EQ(all.find("4711"), std::string::npos);
        EXPECT_NE(all.find("\"isSecret\": true"), std::string::npos);
    }
    EXPECT_TRUE(report("check", {"--ppd", kZR840, "--check"})["plan"].isNull()) << "of no document";
}

TEST_F(Reports, TextsOfOthersAsTheyAreWithoutATerminalsCodes) {
    std::string ppd = contentOf(kZR420);
    const std::string plain = "*MediaType Transparency/Transparency:";
    ppd.replace(ppd.find(plain), plain.size(), "*MediaType Transparency/Cl<22>ear<0A1B5B33316D>red:");
    const Run told = run({"--ppd", add("hostile.ppd", ppd), "--check", "--format=json", "--ticket-in",
                          settingsWith("MediaType=Transparency Jog=Some&#x202E;Times&#x85;")});
    for (const char* const code : {"\x1B", "\u202E", "\u0085"}) {
        EXPECT_EQ(told.output.find(code), std::string::npos);
    }
    const QJsonObject object = QJsonDocument::fromJson(QByteArray::fromStdString(told.output)).object();
    std::string title;
    for (const QJsonValue setting : object["settings"].toArray()) {
        title = text(setting["keyword"]) == "MediaType" ? text(setting["text"]) : title;
    }
    EXPECT_EQ(title, "Cl\"ear\n\x1B[31mred");
    EXPECT_EQ(text(object["notOffered"][0]["option"]), "Some\u202ETimes\u0085");
}

TEST_F(Reports, Lists) {
    const PrintServer server(folder.path() / "server");
    const Words there{"CUPS_SERVER=" + server.address()};
    EXPECT_EQ(run({"--list-printers"}, there).output, "");
    EXPECT_TRUE(report("printers", {"--list-printers"}, 0, there)["printers"].toArray().isEmpty());
    server.addQueue("alpha", kZR420);
    server.addQueue("office", kZR420);
    server.admin("lpadmin -d office");
    server.admin("HOME='" + folder.path().string() + "' lpoptions -p office/draft -o Duplex=None");
    EXPECT_EQ(run({"--list-printers"}, there).output, "office\nalpha\noffice/draft\n");
    const QJsonArray printers = report("printers", {"--list-printers"}, 0, there)["printers"].toArray();
    ASSERT_EQ(printers.size(), 3);
    EXPECT_TRUE(printers[0]["isDefault"].toBool() && !printers[1]["isDefault"].toBool());
    EXPECT_TRUE(printers[0]["instance"].isNull());
    EXPECT_EQ(text(printers[2]["queue"]) + text(printers[2]["instance"]), "officedraft");
    const Run away = run({"--list-printers", "--format", "json"});
    EXPECT_EQ(away.status, 4);
    EXPECT_EQ(away.output, "");
    EXPECT_TRUE(std::regex_match(away.errors, std::regex("tavro-print: queues: .*\n"))) << away.errors;

    EXPECT_EQ(run({"--list-presets"}).output, "");
    const fs::path presets = folder.path() / ".config/tavro/presets";
    fs::create_directories(presets);
    std::ofstream(presets / "b.plist") << "<plist version=\"1.0\"><dict><key>Name</key><string>Zwölf \"Bögen\"</string>"
                                          "</dict></plist>";
    std::ofstream(presets / "Booklet.plist") << "<plist version=\"1.0\"><dict/></plist>";
    EXPECT_EQ(run({"--list-presets"}).output, "Booklet\nZwölf \"Bögen\"\n");
    std::ofstream(presets / "Örn.plist") << "<plist version=\"1.0\"><dict/></plist>";
    for (const auto& [locale, order] : {std::pair("sv_SE", "Booklet\nZwölf \"Bögen\"\nÖrn\n"),
                                        std::pair("de_DE", "Booklet\nÖrn\nZwölf \"Bögen\"\n")}) {
        EXPECT_EQ(run({"--list-presets"}, {std::string("LC_ALL=") + locale + ".UTF-8"}).output, order) << locale;
    }
    fs::remove(presets / "Örn.plist");
    std::ofstream(presets / "damaged.plist") << "<plist version=\"1.0\"><dict>";
    const QJsonObject kept = report("presets", {"--list-presets"});
    EXPECT_EQ(text(kept["presets"][1]["name"]), "Zwölf \"Bögen\"");
    EXPECT_EQ(text(kept["unreadable"][0]["file"]), "damaged.plist");
    EXPECT_NE(run({"--list-presets"}).errors.find("damaged.plist"), std::string::npos);

    fs::remove(presets / "damaged.plist");
    const QJsonObject controls = report("controls", {"--ppd", kZR420, "--list-controls"});
    const QJsonArray panels = controls["panels"].toArray();
    EXPECT_EQ(text(panels[0]["title"]), "Paper and Output");
    EXPECT_FALSE(panels.last()["controls"].toArray().isEmpty());

    for (const Words& wrong : {Words{"--list-presets", "--format", "xml"},
                               {"--list-presets", "--list-printers"},
                               {"--list-printers", kTenPages},
                               {"--format", "json", "--print", kTenPages}}) {
        const Run refused = run(wrong);
        EXPECT_EQ(refused.status, 2) << wrong.back();
        EXPECT_TRUE(std::regex_match(refused.errors, std::regex("tavro-print: [^\n]*\n"))) << refused.errors;
        EXPECT_EQ(refused.output, "");
    }
}

TEST_F(Reports, APresetPrintsWhatComesThroughAPipe) {
    const PrintServer server(folder.path() / "server");
    server.addQueue("office", kZR420);
    const Words environment{"CUPS_SERVER=" + server.address()};
    const auto print = [&](const std::string& preset, const std::string& document) {
        return start(
            "/bin/sh",
            {"-c", "cat '" + document + "' | " + kProgram + " --printer office --print --preset '" + preset + "' -"},
            environment);
    };
    ASSERT_EQ(script("panel Layout\nchoose Tshl:6004 \"On\"\nchoose Host:13 \"Save as Preset…\"\n"
                     "type Host:100 \"Booklet\"\nclick Host:101")
                  .status,
              1);
    int job = 0;
    for (const auto& [document, pages] : {std::pair{add("notes", "one\n\ftwo\n\fthree\n\ffour\n\ffive\n"), 5},
                                          {kTenPages, 10},
                                          {sourcePath("tests/data/gray.png"), 1}}) {
        const Run printed = print("Booklet", document);
        EXPECT_EQ(printed.status, 0) << printed.errors;
        const std::string name = "office-" + std::to_string(++job);
        EXPECT_EQ(printed.output, name + "\n");
        ASSERT_TRUE(server.hasCompleted(name)) << server.log();
        const QJsonObject proof = report("proof", {"--proof", server.printedBy("office")});
        EXPECT_EQ(proof["sheetCount"].toInt(), (pages + 3) / 4) << document;
        EXPECT_EQ(text(proof["sheets"][0]["flip"]), "shortEdge");
    }
    const Run none = print("Bookle", kTenPages);
    EXPECT_EQ(none.status, 4);
    EXPECT_EQ(none.errors, "tavro-print: preset \"Bookle\": there is none of that name; there are \"Booklet\"\n");
    EXPECT_EQ(print("Booklet", "/dev/null").status, 4);
}

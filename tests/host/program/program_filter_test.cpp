// The filter of a queue: what becomes of other programs' jobs, plain ones and those that come with a preset.
#include "driver/proof/proof.h"
#include "platform/foundation/CFPropertyList.h"
#include "platform/printing/settings_option.h"
#include "tests/driver/proof/proof_words.h"
#include "tests/host/program/watermark_fixture.h"
#include "tests/support/print_server.h"

namespace fs = std::filesystem;

namespace {

/// Queues whose jobs come from lp(1).
class QueueFilter : public WatermarkJobs {
protected:
    explicit QueueFilter(bool hasFilter = true) : server(folder.path() / "server", {}, hasFilter) {
        server.addQueue("tavro", kZR420);
    }

    Words environment() const { return {"CUPS_SERVER=" + server.address()}; }
    std::string optionsFile() const { return folder.path() / ".cups/lpoptions"; }

    /// Saves a preset for all programs, after the lines of a script.
    Run savePreset(const std::string& name, const std::string& lines, const Words& more = {}) const {
        Words arguments{"--printer",
                        "tavro",
                        "--shots",
                        folder.path().string(),
                        "--script",
                        add("script", lines + "\nchoose Host:13 \"Save as Preset…\"\ntype Host:100 \"" + name +
                                          "\"\nclick Host:103\ncontrols\nclick Host:101\ncancel\n"),
                        kTenPages};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run(arguments, environment());
    }

    /// The number of a job of lp(1).
    int print(const std::string& arguments) {
        fs::remove(server.printedBy("tavro"));
        const std::string said = server.admin("HOME='" + folder.path().string() + "' lp " + arguments);
        EXPECT_NE(said.find("tavro-" + std::to_string(++jobs_)), std::string::npos) << said;
        return jobs_;
    }
    /// What the printer gets of one.
    Proof printed(const std::string& arguments) {
        const int job = print(arguments);
        EXPECT_TRUE(server.hasCompleted("tavro-" + std::to_string(job))) << arguments << " is not through";
        std::string reason;
        const auto proof = readProof(server.printedBy("tavro"), &reason);
        EXPECT_TRUE(proof) << arguments << ": " << reason;
        return proof.value_or(Proof{});
    }
    std::string job() const { return contentOf(server.printedBy("tavro")); }
    static long count(const std::string& text, const std::string& part) {
        long found = 0;
        for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) {
            ++found;
        }
        return found;
    }
    static bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

    int jobs_ = 0;
    PrintServer server;
};

class ServerWithoutFilter : public QueueFilter {
protected:
    ServerWithoutFilter() : QueueFilter(false) {}
};

std::string packed(const std::string& items) {
    std::string reason;
    const std::string text =
        "<plist version=\"1.0\"><dict><key>PMPrintSettingsTicket</key><dict>" + items + "</dict></dict></plist>";
    const auto data = CFRef<CFDataRef>::adopt(
        CFDataCreate(nullptr, reinterpret_cast<const UInt8*>(text.data()), static_cast<CFIndex>(text.size())));
    const auto root = CFRef<CFTypeRef>::adopt(
        CFPropertyListCreateFromXMLData(nullptr, data.get(), kCFPropertyListImmutable, nullptr));
    return packSettings(static_cast<CFDictionaryRef>(root.get()), &reason).value_or(reason);
}

}  // namespace

TEST_F(QueueFilter, LeavesPlainJobsAsTheyAreAndHasThemCounted) {
    const std::string text = add("text.txt", "Hello\n");
    const std::string postScript = folder / "ten.ps";
    server.admin("gs -q -dNOPAUSE -dBATCH -sDEVICE=ps2write -sOutputFile='" + postScript + "' '" + kTenPages + "'");
    const std::string serial = add("serial.ps", '\x04' + contentOf(postScript));  // as for a serial line
    const std::string picture = sourcePath("tests/data/gray.png");
    const struct {
        std::string arguments;
        int sides, copies, counted;
        bool isCollated;
    } rows[] = {
        {kTenPages, 10, 1, 10, true},
        {"-n 3 " + kTenPages, 10, 3, 30, true},
        {"-n 3 -o Collate=False " + kTenPages, 10, 3, 30, false},
        {"-n 3 -o multiple-document-handling=separate-documents-uncollated-copies " + kTenPages, 10, 3, 30, false},
        {"-n 2 -o Collate=False -o page-ranges=3-6 -o number-up=2 -o page-logging=off " + kTenPages, 3, 2, 6, false},
        {"-n 2 " + postScript, 10, 2, 20, true},
        {"-n 2 -o Collate=False " + postScript, 10, 2, 20, false},
        {"-n 2 -o Collate=False " + picture, 1, 2, 2, false},
        {"-n 2 -o Collate=False " + text, 1, 2, 2, false},
        {"-o tavro-settings=none -o job-name=\"a 'b' {c} \\\\d\" " + text, 1, 1, 1, true},
    };
    for (const auto& row : rows) {
        const Proof proof = printed("-d tavro " + row.arguments);
        EXPECT_EQ(count(job(), "\n%%Page: "), row.sides) << row.arguments;
        EXPECT_EQ(proof.copies, row.copies) << row.arguments;
        EXPECT_EQ(proof.isCollated, row.isCollated) << row.arguments;
        EXPECT_EQ(server.countedPages(jobs_), row.counted) << row.arguments;
        EXPECT_EQ(count(job(), "@PJL JOB"), 1) << row.arguments;
        EXPECT_EQ(count(job(), "@PJL ENTER LANGUAGE"), 1) << row.arguments;
    }
    EXPECT_EQ(printed("-d tavro " + serial).sheets.size(), 10U) << "whole, where nobody can count";
}

TEST_F(QueueFilter, MakesBookletsWithCoversOfEveryProgramsJobs) {
    fs::create_directory(folder.path() / ".cups");
    const std::string others = "# mine\nDest away/draft TREconomode=True\nDest tavro/My-A4-Booklet copies=7\n";
    std::ofstream(optionsFile()) << others;
    const std::string booklet = contentOf(sourcePath("docs/examples/production.tavro-script"));
    const Run saved = savePreset("My A4/Booklet", booklet.substr(0, booklet.rfind("ok ")),
                                 {"--ticket-in", sourcePath("docs/examples/different-covers.plist")});
    EXPECT_EQ(saved.status, 1) << saved.output << saved.errors;
    EXPECT_TRUE(has(saved.output, "“tavro/My-A4-Booklet-2”")) << saved.output;
    EXPECT_TRUE(contentOf(optionsFile()).starts_with(others)) << contentOf(optionsFile());
    EXPECT_TRUE(has(contentOf(optionsFile()), "\nDest tavro/My-A4-Booklet-2 "));

    std::string lines;
    for (int line = 1; line <= 200; ++line) {
        lines += "Line " + std::to_string(line) + "\n";
    }
    const std::string text = add("text.txt", lines);
    const std::string words = wordsOf(printed("-d tavro/My-A4-Booklet-2 " + text));
    EXPECT_TRUE(has(words, "Blue CardStock[-|-]s [")) << words;
    EXPECT_EQ(count(job(), "@PJL JOB"), 1);
    EXPECT_EQ(server.countedPages(jobs_), count(job(), "\n%%Page: "));
    EXPECT_TRUE(has(wordsOf(printed("-d tavro/My-A4-Booklet-2 -n 2 -o Collate=False " + kTenPages)),
                    "[Page 3 Page 10|Page 9 Page 4]s"));

    // The dialog opens with the same settings, and what it sends is not made into a booklet again.
    const std::string byOthers = wordsOf(printed("-d tavro/My-A4-Booklet-2 " + kTenPages));
    const Run done = run({"--printer", "tavro/My-A4-Booklet-2", "--print", kTenPages}, environment());
    EXPECT_EQ(done.status, 0) << done.errors;
    EXPECT_TRUE(server.hasCompleted("tavro-" + std::to_string(++jobs_))) << " is not through";
    std::string reason;
    EXPECT_EQ(wordsOf(*readProof(server.printedBy("tavro"), &reason)), byOthers);

    // Its name, and its end, are those of the preset.
    const auto manage = [&](const std::string& script) {
        const Run managed =
            run({"--printer", "tavro", "--preset", "My A4/Booklet", "--script", add("script", script), kTenPages},
                environment());
        EXPECT_EQ(managed.status, 1) << managed.output << managed.errors;
    };
    manage("choose Host:13 \"Rename…\"\ntype Host:100 \"Broschüre\"\nclick Host:101\ncancel\n");
    EXPECT_TRUE(has(contentOf(optionsFile()), "tavro/Broschüre ")) << contentOf(optionsFile());
    EXPECT_FALSE(has(contentOf(optionsFile()), "Booklet-2"));
    EXPECT_EQ(wordsOf(printed("-d tavro/Broschüre " + kTenPages)), byOthers);
    const Run removed = run({"--printer", "tavro", "--preset", "Broschüre", "--script",
                             add("script", "answer default\nchoose Host:13 \"Delete…\"\ncancel\n"), kTenPages},
                            environment());
    EXPECT_EQ(removed.status, 1) << removed.output << removed.errors;
    EXPECT_EQ(contentOf(optionsFile()), others);
}

TEST_F(QueueFilter, TakesInsertsExceptionsAndWatermarksAlong) {
    std::string pages = contentOf(sourcePath("docs/examples/watermark.tavro-script"));
    pages = pages.substr(0, pages.rfind("ok"));
    pages +=
        "panel \"Special Pages\"\nclick TSPg:200\ntype TSPg:3003 \"2\"\nitem TSPg:3020 Sclr 3\ncommand \"ok  \"\n"
        "click TSPg:300\ntype TSPg:5001 \"4-5\"\nitem TSPg:5020 Sclr 2\ncommand \"ok  \"\n";
    const Run saved = savePreset("Pages", pages);
    EXPECT_EQ(saved.status, 1) << saved.output << saved.errors;
    const Words printing{"--printer", "tavro",   "--preset",  "Pages",
                         "--print",   kTenPages, "--job-out", folder / "job.ps"};
    const Run done = run(printing, environment());
    EXPECT_EQ(done.status, 0) << done.errors;
    std::string reason;
    const std::string own = wordsOf(*readProof(folder / "job.ps", &reason));
    EXPECT_EQ(wordsOf(printed("-d tavro/Pages " + kTenPages)), own);
    EXPECT_TRUE(has(own, "Blue[")) << own;
    // The pages are the document's, whichever of them are printed.
    const std::string some = wordsOf(printed("-d tavro/Pages -o page-ranges=4-6 " + kTenPages));
    EXPECT_EQ(count(some, "Blue["), 2) << some;
    EXPECT_EQ(count(some, "["), 3) << some;
}

TEST_F(QueueFilter, SavesWhatProgramsReadAndNoMore) {
    const auto ticketWith = [this](int exceptions) {
        std::string list;
        for (int i = 0; i < exceptions; ++i) {
            const std::string page = std::to_string(i < 2 ? 4 + i : 10 + i * i % 7919 * 3);
            const std::string color = std::to_string(1 + i * i % 7);
            list.append("<dict><key>StartPage</key><integer>").append(page);
            list.append("</integer><key>EndPage</key><integer>").append(page);
            list.append("</integer><key>Stock</key><dict><key>Color</key><integer>").append(color);
            list.append("</integer></dict></dict>");
        }
        return add("long.plist",
                   "<plist version=\"1.0\"><dict><key>PMPrintSettingsTicket</key><dict><key>"
                   "com.tavro.print.SpecialPages.ExceptionList</key><array>" +
                       list + "</array></dict></dict></plist>");
    };
    const std::string ticket = ticketWith(400);
    EXPECT_EQ(savePreset("Long", "", {"--ticket-in", ticket}).status, 1);
    EXPECT_GT(contentOf(optionsFile()).size(), 5000U);
    const Run done =
        run({"--printer", "tavro", "--ticket-in", ticket, "--print", kTenPages, "--job-out", folder / "job.ps"},
            environment());
    EXPECT_EQ(done.status, 0) << done.errors;
    std::string reason;
    EXPECT_EQ(wordsOf(printed("-d tavro/Long " + kTenPages)), wordsOf(*readProof(folder / "job.ps", &reason)));

    const std::string before = contentOf(optionsFile());
    for (const int exceptions : {1500, 9000}) {
        const Run saved = savePreset("Longer", "", {"--ticket-in", ticketWith(exceptions)});
        EXPECT_TRUE(has(saved.output, exceptions == 1500 ? "no more than 8191" : "no more than 32700")) << saved.output;
    }
    EXPECT_EQ(contentOf(optionsFile()), before);
}

TEST_F(QueueFilter, PrintsNothingOtherwiseThanItsSettingsSay) {
    const std::string good = packed("<key>com.tavro.print.BookletLayout</key><true/>");
    const std::string damaged = "The settings that came with the job are damaged.";
    const struct {
        std::string settings;
        std::string reason;
    } rows[] = {
        {"rubbish", damaged},
        {good.substr(0, good.size() / 2), damaged},
        {good + "AAAA", damaged},
        {"1.!!!!", damaged},
        {"1." + std::string(32000, 'A'), damaged},
        {"2" + good.substr(1), "were made by a newer version"},
        {packed("<key>com.tavro.print.JobType</key><dict><key>JobType</key><integer>6</integer></dict>"),
         "Secure print jobs cannot be made"},
        {packed("<key>com.tavro.print.watermark.Watermark</key><string>Draft</string>"), "The watermark cannot be"},
    };
    for (const auto& row : rows) {
        const int number = print("-d tavro -o tavro-settings='" + row.settings + "' " + kTenPages);
        const std::string job = "[Job " + std::to_string(number) + "] ";
        EXPECT_TRUE(eventually([&] { return has(server.log(), job + "Job stopped due to filter errors"); }));
        EXPECT_TRUE(eventually([&] { return has(server.log(), row.reason); })) << row.reason << " is not through";
        EXPECT_EQ(this->job(), "") << row.settings.substr(0, 40);
        EXPECT_TRUE(has(server.admin("lpstat -p tavro"), "enabled"));
    }
}

TEST_F(ServerWithoutFilter, PrintsTheDialogsJobs) {
    const Run done = run({"--printer", "tavro", "--print", kTenPages}, environment());
    EXPECT_EQ(done.status, 0) << done.errors;
    EXPECT_TRUE(server.hasCompleted("tavro-1")) << " is not through";
    EXPECT_EQ(count(job(), "\n%%Page: "), 10);
    // Other programs cannot have its presets, and the user hears of it.
    const Run saved = savePreset("Booklet", "");
    EXPECT_TRUE(has(saved.output, "no filter that other programs could print such settings with")) << saved.output;
    EXPECT_EQ(contentOf(optionsFile()), "");
}

TEST_F(QueueFilter, TellsWhyOtherProgramsCannotHaveAPreset) {
    std::ofstream(folder.path() / ".cups") << "no folder";
    EXPECT_TRUE(has(savePreset("Unwritable", "").output, ".cups/lpoptions: "));
    fs::remove(folder.path() / ".cups");
    const std::string fax = contentOf(sourcePath("docs/examples/fax.tavro-script"));
    const Run faxed = savePreset("Fax", fax.substr(0, fax.rfind("\nok")));
    EXPECT_TRUE(has(faxed.output, "Other programs cannot send faxes by a preset")) << faxed.output << faxed.errors;
    EXPECT_EQ(contentOf(optionsFile()), "");
}

TEST_F(QueueFilter, EndsOnASignalAndLeavesNothing) {
    const fs::path temporary = folder.path() / "temporary";
    fs::create_directory(temporary);
    std::string pages;
    for (int i = 0; i < 300; ++i) {
        pages += " '" + kTenPages + "'";
    }
    const std::string large = folder / "large.pdf";
    server.admin("qpdf --empty --pages" + pages + " -- '" + large + "'");
    for (const std::string& options :
         {std::string(), "tavro-settings=" + packed("<key>com.tavro.print.BookletLayout</key><true/>")}) {
        whileRunning = [&](pid_t filter) {
            EXPECT_TRUE(eventually([&] { return fs::file_size(folder / "stderr") > 0; }));
            std::this_thread::sleep_for(std::chrono::milliseconds(300));
            kill(filter, SIGTERM);
        };
        const Run done = start(stagePath("filter/tavro-pages"), {"1", "ann", "title", "1", options, large},
                               {"PPD=" + kZR420, "CONTENT_TYPE=application/pdf", "TMPDIR=" + temporary.string()});
        EXPECT_NE(done.status, 0) << options;
        std::string left;
        eventually([&] {
            left.clear();
            for (const auto& entry : fs::directory_iterator(temporary)) {
                left += entry.path().filename().string() + " ";
            }
            return left.empty();
        });
        EXPECT_EQ(left, "") << options;
    }
}

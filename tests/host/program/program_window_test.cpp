// What the program's windows show, and how they fit a screen.
#include "tests/host/program/program_fixture.h"

#include <QImage>

namespace {

class ProgramWindow : public ProgramTest {};

}  // namespace

TEST_F(ProgramWindow, OffersWhatIsInstalled) {
    // The about panel's picture shows trays and finisher.
    const Run all = script("panel About\nshot all", {"--shots", folder.path()});
    const Run fewer = script("panel About\nshot fewer",
                             {"--shots", folder.path(), "--installed", "Option2=LCSS", "--installed", "Option1=False"});
    EXPECT_EQ(all.errors + fewer.errors, "");
    EXPECT_FALSE(contentOf(folder / "all.png").empty());
    EXPECT_NE(contentOf(folder / "all.png"), contentOf(folder / "fewer.png"));
}

/// Without a queue there is the sample, which looks like a printer.
TEST_F(ProgramWindow, SaysWhatPrintDoesWithoutAQueue) {
    const Run sample = run({"--script",
                            add("sample",
                                "expect Host:10 text \"Tavro ZR420 (sample)\"\nexpect Host:60 disabled\n"
                                "expect Host:11 text \"A sample cannot print.\"\ncancel\n"),
                            kTenPages});
    EXPECT_EQ(sample.status, 1) << sample.errors;
    const Run file = script("expect Host:60 enabled\nexpect Host:11 text \"Prints into “job.ps”.\"\ncancel",
                            {"--job-out", folder / "job.ps"});
    EXPECT_EQ(file.status, 1) << file.errors;
}

TEST_F(ProgramWindow, FitsOnASmallScreen) {
    // A laptop of 1366 by 768 with text at 144 dots an inch.
    const std::string screen = add("screen.json", R"({"screens":[{"name":"small","x":0,"y":0,"width":911,"height":512,
                                                     "logicalDpi":96,"logicalBaseDpi":96,"dpr":1}]})");
    const Run done = run({"--ppd", kZR420, "--script",
                          add("script",
                              "expect Host:80 hidden\nexpect Host:89 disabled\nshot dialog\npanel \"Special "
                              "Pages\"\nclick TSPg:100\nshot covers\n"
                              "command \"ok  \"\nexpect window \"Print\"\nok\n"),
                          "--shots", folder.path(), "--job-out", folder / "job.ps", kTenPages},
                         {"QT_QPA_PLATFORM=offscreen:configfile=" + screen});
    EXPECT_EQ(done.status, 0) << done.errors;
    for (const char* picture : {"dialog.png", "covers.png"}) {
        const QImage shot(QString::fromStdString(folder / picture));
        EXPECT_GT(shot.width(), 300) << picture;
        EXPECT_LE(shot.width(), 911) << picture;
        EXPECT_LE(shot.height(), 480) << picture << ": there is a title bar, too";
    }
}

TEST_F(ProgramWindow, ShowsTheSheetsThatWillComeOut) {
    const Run shown = script(R"script(
        expect Host:81 text "Sheet 1 of 10, front: page 1; White, Letter (8.5 x 11 in)"
        expect Host:83 disabled
        click Host:86
        set Host:84 7
        expect Host:81 text "Sheet 7 of 10, front: page 7; White, Letter (8.5 x 11 in)"
        set Tshl:113 2                    # 2-sided: at the same page
        expect Host:81 text "Sheet 4 of 5, front: page 7; White, Letter (8.5 x 11 in)"
        expect Host:85 text "of 5, front"
        click Host:86
        expect Host:81 text "Sheet 4 of 5, back: page 8; White, Letter (8.5 x 11 in)"
        click Host:87
        expect Host:86 disabled
        expect Host:88 text "10 pages on 5 sheets"
        shot with
        click Host:89
        expect Host:81 hidden
        type Host:31 "4-6"
        click Host:89
        expect Host:81 text "Sheet 2 of 2, back: blank; White, Letter (8.5 x 11 in)"
        click Host:89
        shot without
        choose Host:12 "Printer's Defaults"
        cancel)script",
                             {"--shots", folder.path().string()});
    EXPECT_EQ(shown.status, 1) << shown.errors;
    const QImage with(QString::fromStdString(folder / "with.png"));
    const QImage without(QString::fromStdString(folder / "without.png"));
    EXPECT_GT(with.width(), without.width() + 300);
    // The last page has been drawn when its picture is taken: there is ink on the sheet.
    const QRect sheet(with.width() - 400, 30, 360, 120);
    int dark = 0;
    for (int x = sheet.left(); x < sheet.right(); ++x) {
        for (int y = sheet.top(); y < sheet.bottom(); ++y) {
            dark += qGray(with.pixel(x, y)) < 64 ? 1 : 0;
        }
    }
    EXPECT_GT(dark, 100);
}

TEST_F(ProgramWindow, ListsTheControlsOfEveryPanel) {
    const Run list = run({"--ppd", kZR420, "--list-controls"});
    EXPECT_EQ(list.status, 0) << list.errors;
    EXPECT_EQ(list.output.find("STRING NOT FOUND"), std::string::npos);
    EXPECT_NE(list.output.find("\npanel 1 "), std::string::npos);
    EXPECT_NE(list.output.find("popUp Tshl:632 value 1 \"Off\"\n"), std::string::npos);
    EXPECT_NE(list.output.find("customView Tshl:505 command TsLB"), std::string::npos);
    EXPECT_NE(list.output.find("pushButton Host:60 command \"ok  \" \"Print\""), std::string::npos);
}

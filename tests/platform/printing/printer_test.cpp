#include "tests/platform/printing/printing_fixture.h"

#include <gtest/gtest.h>

namespace {

TEST(Printers, DescribeThemselvesByTheirPPD) {
    const Printer printer(kZR410);
    ASSERT_EQ(printer.status(), noErr);
    EXPECT_EQ(PMGetLastErrorText(), nullptr);
    EXPECT_EQ(text(PMPrinterGetName(printer.get())), "Tavro ZR410");
    EXPECT_EQ(PMPrinterGetID(printer.get()), nullptr);
    EXPECT_EQ(text(PMPrinterGetMaker(printer.get())), "Tavro");
    CFURLRef url = nullptr;
    ASSERT_EQ(PMPrinterGetDescriptionURL(printer.get(), kPMPPDDescriptionType, &url), noErr);
    EXPECT_TRUE(CFEqual(url, makeFileURL(kZR410).get()));
    EXPECT_EQ(PMPrinterGetDescriptionURL(printer.get(), CFSTR("IPP"), &url), paramErr);
    EXPECT_TRUE(std::filesystem::exists(kZR410));
}

TEST(Printers, GiveTheirDefaultsButNotWhatIsInstalled) {
    const Printer printer(kZR420);
    const Ticket settings;
    set(settings.ppd(), "Duplex", "DuplexTumble");
    ASSERT_EQ(PMPrinterWriteDefaultSettings(printer.get(), settings.get(), settings.get()), noErr);
    EXPECT_EQ(get(settings.ppd(), "Duplex"), "DuplexTumble");  // was there before
    EXPECT_EQ(get(settings.ppd(), "JCLBanner"), "False");
    EXPECT_EQ(get(settings.ppd(), "Jog"), "None");
    EXPECT_EQ(get(settings.ppd(), "TRImageQuality"), "Normal");
    for (const char* installable : {"Option1", "Option2", "Option3", "Option4", "Option5"}) {
        EXPECT_EQ(get(settings.ppd(), installable), "(null)");
    }
    EXPECT_EQ(PMPrinterWriteDefaultSettings(printer.get(), 0, 0), kPMInvalidTicket);
}

TEST(Printers, ListPapersWithoutTheCustomOne) {
    const Printer printer(kZR420);
    bool foundA4 = false;
    PMPaper paper{};
    for (CFIndex i = 0; i < PMPrinterCountPapers(printer.get()); ++i) {
        ASSERT_EQ(PMPrinterGetIndPaper(printer.get(), i, &paper), noErr);
        EXPECT_NE(text(paper.name), "Custom");
        EXPECT_TRUE(paper.left > 0 && paper.right < paper.width && paper.bottom > 0 && paper.top < paper.height);
        if (text(paper.name) == "A4") {
            foundA4 = true;
            EXPECT_EQ(text(paper.title), "A4 (210 x 297 mm)");
            EXPECT_EQ(paper.width, 595);
            EXPECT_EQ(paper.height, 842);
            EXPECT_EQ(paper.top, 830);
        }
    }
    EXPECT_TRUE(foundA4);
    EXPECT_EQ(PMPrinterGetIndPaper(printer.get(), -1, &paper), paramErr);
    EXPECT_EQ(PMPrinterGetIndPaper(printer.get(), PMPrinterCountPapers(printer.get()), &paper), paramErr);
}

TEST(Printers, KnowTheirCustomLimits) {
    float limits[4] = {};
    ASSERT_TRUE(PMCopyCustomPaperLimits(kZR420.c_str(), &limits[0], &limits[1], &limits[2], &limits[3]));
    EXPECT_EQ(limits[0], 288);
    EXPECT_EQ(limits[1], 432);
    EXPECT_EQ(limits[2], 936);
    EXPECT_EQ(limits[3], 1368);

    // A PPD without custom sizes has limits in the library's record all the same.
    const TemporaryFolder folder;
    std::string fixed = readFile(kZR420);
    for (const std::string line : {"*VariablePaperSize", "*CustomPageSize", "*ParamCustomPageSize"}) {
        for (std::size_t at; (at = fixed.find(line)) != std::string::npos;) {
            fixed.erase(at, fixed.find('\n', at) + 1 - at);
        }
    }
    const auto path = folder.add("fixed.ppd", fixed);
    EXPECT_FALSE(PMCopyCustomPaperLimits(path.c_str(), &limits[0], &limits[1], &limits[2], &limits[3]));
    EXPECT_FALSE(PMCopyCustomPaperLimits("/no/such.ppd", &limits[0], &limits[1], &limits[2], &limits[3]));
    EXPECT_EQ(limits[3], 1368);
}

}  // namespace

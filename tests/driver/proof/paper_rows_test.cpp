// Every choice on its way to the paper: settings, made into a job by the driver and the printer's filters, and read
// back as the printer reads them. docs/paper.md is the table of them all.

#include "driver/job/prepare_job.h"
#include "driver/proof/job_file.h"
#include "platform/files/plain_file.h"
#include "platform/foundation/CFURL.h"
#include "tests/driver/instructions/settings_maker.h"
#include "tests/driver/pages/pdf_maker.h"
#include "tests/driver/proof/proof_words.h"
#include "tests/platform/files/temporary_folder.h"
#include "tests/support/places.h"
#include "watermark/records/watermark_storage.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

// ---- Settings

const std::string kTavro = "com.tavro.print.";

std::string item(const std::string& name, long value) {
    return number(kTavro + name, value);
}
std::string options(const std::string& pairs) {
    return dict("PPDDict", pairs);
}
std::string array(const std::string& name, const std::string& elements) {
    return entry(kTavro + name, "<array>" + elements + "</array>");
}
std::string element(const std::string& entries) {
    return "<dict>" + entries + "</dict>";
}
/// Numbers of the PPD's sizes, colors and types.
std::string stock(const std::string& entries) {
    return dict("Stock", entries);
}
const std::string kBlue = number("Color", 2);
const std::string kYellow = number("Color", 3);

enum Printed { nothing = 1, side1, side2, both };
std::string cover(const char* which, Printed printed, const std::string& paper) {
    return dict(kTavro + "SpecialPages." + which + "Cover", number("SidesImaged", printed) + stock(paper));
}
std::string insert(long page, long sheets, const std::string& paper = {}) {
    return element(number("StartPage", page) + number("Quantity", sheets) + stock(paper));
}
std::string exception(long first, long last, const std::string& entries) {
    return element(number("StartPage", first) + number("EndPage", last) + entries);
}
std::string shift(long length, bool isInInches) {
    return dict(kTavro + "ImageShiftOptionsPage", number("Option", 1) + number("Inches", isInInches ? 1 : 0) +
                                                      number("X1", length) + number("X2", length));
}
std::string jobType(long type, const std::string& more = {}) {
    return dict(kTavro + "JobType", number("JobType", type) + more);
}
std::string pageOptions(const std::string& pairs) {
    return dict("com.tavro.print.PrintSettings.PageOptions", pairs);
}
const std::string kLongEdge = text("Duplex", "DuplexNoTumble");

constexpr const char* kZR410 = "resources/ppd/Tavro-ZR410.ppd";
constexpr const char* kZR420 = "resources/ppd/Tavro-ZR420.ppd";
constexpr const char* kZR840 = "resources/ppd/Tavro-ZR840.ppd";

// ---- Jobs

class PaperRows : public testing::Test {
protected:
    static void SetUpTestSuite() {
        folder_ = new TemporaryFolder;
        const TestPage page{.content = "60 60 9 9 re f 0.5 g 300 600 72 72 re f"};
        std::vector<TestPage> pages(6, page);
        pages[5].ground = "1 g 0 0 612 792 re f 0 g\n";  // as many programs begin a page
        std::ofstream(path("document.pdf"), std::ios::binary) << pdfOf(pages);
        std::ofstream(path("fax.pdf"), std::ios::binary)
            << pdfOf({{"/MediaBox[0 0 612 792]", "BT /F1 36 Tf 72 300 Td (Fax) Tj ET"}});
    }
    static void TearDownTestSuite() { delete folder_; }
    static std::string path(const char* name) { return *folder_ / name; }

    static PMPrinter printer(const char* ppd) {
        PMPrinter printer = nullptr;
        EXPECT_EQ(PMPrinterCreateFromPPDFile(makeFileURL(sourcePath(ppd)).get(), &printer), noErr);
        return printer;
    }

    /// The job of six pages, "P1" to "P6", each with a black corner and a gray square, the last on a white ground.
    static Proof proofOf(const std::string& items, const std::string& formatItems = {}, const char* ppd = kZR420) {
        const TestTicket settings(items);
        const TestTicket format(formatItems);
        EXPECT_TRUE(settings.isRead() && format.isRead()) << items;
        const PMPrinter printer = PaperRows::printer(ppd);
        PMPrinterWriteDefaultSettings(printer, settings.get(), format.get());
        const JobInstructions asked = readInstructions(settings.get(), format.get());
        std::string reason;
        const auto pages = readDocument(openPlainFile(path("document.pdf"), INT64_MAX).get(), &reason);
        const bool hasFaxCover = asked.fax && asked.fax->coverSheet;
        const JobSource source{printer,
                               settings.get(),
                               format.get(),
                               path("document.pdf"),
                               path("document.pdf"),
                               {},
                               *pages,
                               hasFaxCover ? contentOf(path("fax.pdf")) : std::string(),
                               asked.watermark ? readPageMark(*asked.watermark, &reason) : std::nullopt};
        PreparedJob job(settings.get());
        EXPECT_TRUE(prepareJob(source, {}, &job)) << job.fault;
        const auto document = makeFileURL(path("document.pdf"));
        const PMJobPages sides{job.pages.descriptor(), job.arePostScript, static_cast<CFIndex>(job.count),
                               document.get()};
        EXPECT_EQ(PMPrinterWriteJobToURL(printer, job.settings.get(), &sides, makeFileURL(path("job.ps")).get()),
                  noErr);
        PMPrinterRelease(printer);
        auto proof = readProof(path("job.ps"), &reason);
        EXPECT_TRUE(proof) << reason;
        return proof.value_or(Proof());
    }

    /// The paper's gray and that of the square, on a page of the job that was made last.
    struct Grays {
        int paper;
        int square;

        friend std::ostream& operator<<(std::ostream& out, const Grays& grays) {
            return out << grays.paper << " " << grays.square;
        }

        bool operator==(const Grays& other) const {
            return std::abs(paper - other.paper) < 4 && std::abs(square - other.square) < 4;
        }
    };
    static Grays graysOf(int page) {
        const auto job = takeApart(contentOf(path("job.ps")));
        std::ofstream(path("pages.ps"), std::ios::binary) << (job ? job->postScript : "");
        // One pixel for four points.
        outputOfCommand("gs -q -dSAFER -dBATCH -dNOPAUSE -r18 -sDEVICE=pgmraw -o '" + path("page-%d.pgm") + "' '" +
                        path("pages.ps") + "'");
        constexpr std::size_t kWidth = 612 / 4;
        constexpr std::size_t kHeight = 792 / 4;
        const std::string picture = contentOf(path(("page-" + std::to_string(page) + ".pgm").c_str()));
        const auto at = [&](std::size_t left, std::size_t bottom) {
            const std::size_t place = picture.size() - kWidth * (bottom / 4 + 1) + left / 4;
            return picture.size() > kWidth * kHeight ? static_cast<unsigned char>(picture[place]) : -1;
        };
        return {at(20, 396), at(336, 636)};
    }

private:
    static std::string contentOf(const std::string& path) {
        std::ostringstream content;
        content << std::ifstream(path, std::ios::binary).rdbuf();
        return content.str();
    }

    static TemporaryFolder* folder_;
};
TemporaryFolder* PaperRows::folder_ = nullptr;

/// A choice: settings, the sheets in words, and what the printer and its controller are told beside them: commands,
/// instructions, and finishing as "Staple=3"; with "!" in front what they are not told.
struct Row {
    const char* name;
    std::string items;
    const char* sheets;
    std::vector<std::string> told;
    std::vector<double> ink;  // of the first sheet: where it begins, from the left and from below, side by side
    std::string formatItems;
};

std::string toldOf(const Proof& proof) {
    std::string told = "\n";
    for (const std::string& command : proof.commands) {
        told += command + "\n";
    }
    told += std::to_string(proof.copies) + (proof.isCollated ? " sets\n" : " uncollated\n");
    for (const auto& list : {proof.instructions, {proof.finishing.begin(), proof.finishing.end()}}) {
        for (const auto& [name, value] : list) {
            told += name + "=" + value + "\n";
        }
    }
    return told;
}

class PaperRow : public PaperRows {
protected:
    static void check(const std::vector<Row>& rows, const char* ppd = kZR420) {
        for (const Row& row : rows) {
            SCOPED_TRACE(row.name);
            const Proof proof = proofOf(row.items, row.formatItems, ppd);
            EXPECT_EQ(wordsOf(proof), row.sheets);
            EXPECT_EQ(proof.errors, std::vector<std::string>());
            const std::string told = toldOf(proof);
            for (const std::string& line : row.told) {
                const bool isThere = !line.starts_with('!');
                const std::string start = isThere ? "\n" + line + "\n" : "\n" + line.substr(1);
                EXPECT_EQ(told.find(start) != std::string::npos, isThere) << line << told;
            }
            if (!row.ink.empty() && !proof.sheets.empty()) {
                const ProofSheet& sheet = proof.sheets[0];
                const double ink[] = {sheet.side1.left, sheet.side1.bottom, sheet.side2.left, sheet.side2.bottom};
                for (std::size_t i = 0; i < row.ink.size(); ++i) {
                    EXPECT_NEAR(ink[i], row.ink[i], 2) << i;
                }
            }
        }
    }
};

std::string inserts(const std::string& all) {
    return array("SpecialPages.InsertList", all);
}
std::string exceptions(const std::string& all) {
    return array("SpecialPages.ExceptionList", all);
}
std::string pages(const char* range) {
    return text("com.apple.print.PrintSettings.PMPageRange", range);
}
std::string copies(long number_) {
    return number("com.apple.print.PrintSettings.PMCopies", number_);
}

}  // namespace

TEST_F(PaperRow, SidesAndPages) {
    check({
        {"one side", "", "[P1] [P2] [P3] [P4] [P5] [P6]", {"!tavro-job-kind"}, {60, 60}},
        {"long edge", options(kLongEdge), "[P1|P2] [P3|P4] [P5|P6]"},
        {"a size of its own", options(text("PageSize", "Custom.200x300mm")) + pages("1"), "567x850[P1]"},
        {"short edge", options(text("Duplex", "DuplexTumble")) + pages("1-3"), "[P1|P2]s [P3|-]s"},
        {"numbers are the document's",
         options(kLongEdge) + pages("2-3,5") + inserts(insert(1, 1) + insert(3, 1, kBlue)) +
             exceptions(exception(5, 9, stock(kYellow))),
         "[P2|P3] Blue[-] Yellow[P5|-]"},
        {"odd, reversed", pageOptions(text("page-set", "odd") + text("outputorder", "reverse")), "[P5] [P3] [P1]"},
        {"even", pageOptions(text("page-set", "even")) + options(kLongEdge), "[P2|P4] [P6|-]"},
        {"copies", copies(3) + pages("1-2"), "[P1] [P2]", {"3 sets"}},
        {"uncollated",
         copies(3) + options(text("Collate", "False")) + pages("1-2"),
         "[P1] [P2]",
         {"3 uncollated", "multiple-document-handling=separate-documents-uncollated-copies"}},
        {"landscape", pages("1"), "[P1]", {}, {101, 213}, number("com.apple.print.PageFormat.PMOrientation", 2)},
        {"made to fit", pageOptions(text("print-scaling", "fit")) + pages("1"), "[P1]", {}, {70, 73}},
        {"by half", pageOptions(text("natural-scaling", "50")) + pages("1"), "[P1]", {}, {183, 228}},
        {"two on a side, with borders",
         pageOptions(text("number-up", "2") + text("page-border", "single")) + pages("1-3"),
         "[P2 P1] [P3]",  // the sheet lies across: the text is read from its right
         {},
         {52, 2}},
    });
}

TEST_F(PaperRow, Covers) {
    const std::string card = kBlue + number("Type", 12);
    check({
        {"blank, of two sizes",
         cover("Front", nothing, card) + cover("Back", nothing, number("Size", 5) + kYellow) + pages("1-2"),
         "Blue CardStock[-] [P1] [P2] 842x1191 Yellow[-]",
         {"cover-front-type=print-none", "cover-back-media-size=A3"}},
        {"outside of the front", cover("Front", side1, card) + pages("1-3"), "Blue CardStock[P1] [P2] [P3]"},
        {"insides, two-sided", options(kLongEdge) + cover("Front", side2, card) + cover("Back", side1, kYellow),
         "Blue CardStock[-|P1] [P2|P3] [P4|P5] Yellow[P6]"},
        {"all sides",
         options(kLongEdge) + cover("Front", both, card) + cover("Back", both, card),
         "Blue CardStock[P1|P2] [P3|P4] Blue CardStock[P5|P6]",
         {"cover-front-type=print-both", "cover-back-type=print-both", "SET TRCOVERS=NONE"}},
        {"back alone", cover("Back", both, card) + pages("1-4"), "[P1] [P2] Blue CardStock[P3|P4]"},
        {"a queue's own",
         options(text("JCLCovers", "Front") + text("JCLMediaColor", "Blue") + text("JCLMediaType", "CardStock")) +
             pages("1-3"),
         "Blue CardStock[P1|P2] [P3]",
         {"SET TRCOVERS=NONE"}},
        {"equal ones, of which the panels keep the front",
         options(text("JCLCovers", "BlankFrontBack")) + cover("Front", nothing, kBlue) + pages("1"),
         "Blue[-] [P1] Blue[-]",
         {"cover-back-type=print-none"}},
    });
}

TEST_F(PaperRow, WhatPaperIsMadeOf) {
    const std::string gloss = number("Type", 31) + text("CustomName", "Cover, 251 g") + number("Weight", 251) +
                              number("SidesCoated", 3) + number("kCoatingType", 1);
    const std::string linen = number("Type", 1) + number("Finish", 3) + number("kGrain", 2) + number("Punched", 2);
    const std::string tabs = number("Type", 24) + number("Modulus", 7);
    const std::string lilac =
        number("Color", 10) + text("CustomColor", "Lilac") + number("Type", 7) + text("CustomType", "Rag");
    check(
        {{"all of the job",
          dict(kTavro + "JobLevelStock", gloss) + pages("1-2"),
          "Weight=251 CoatedSides=Both Coating=Gloss[P1] Weight=251 CoatedSides=Both Coating=Gloss[P2]",
          {"media-key=Cover, 251 g", "media-weight-metric=251"}},
         {"as a queue asks for it", options(text("TRMediaWeight", "120") + text("TRMediaFinish", "Laid")) + pages("1"),
          "Weight=120 Finish=Laid[P1]"},
         {"of some sheets",
          cover("Front", nothing, gloss) + inserts(insert(1, 1, linen)) +
              exceptions(exception(2, 2, stock(tabs)) + exception(3, 3, stock(lilac))) + pages("1-4"),
          "HeavyGlossy Weight=251 CoatedSides=Both Coating=Gloss[-] [P1] "
          "Finish=Linen Grain=Short Prepunched=True[-] TabStock Tabs=7[P2] Other Other[P3] [P4]"}},
        kZR840);
}

TEST_F(PaperRow, InsertsAndExceptions) {
    check({
        {"inserts",
         options(kLongEdge) + inserts(insert(0, 1, kBlue) + insert(3, 2) + insert(3, 1, kYellow) + insert(9, 1)),
         "Blue[-] [P1|P2] [P3|-] [-] [-] Yellow[-] [P4|P5] [P6|-]"},
        {"an insert from another tray than the job, of a size of its own",
         options(text("InputSlot", "Tray2")) + pages("1-2") +
             inserts(insert(1, 1, number("Size", 75) + number("Width", 20000) + number("Length", 30000))),
         "tray1[P1] 567x850[-] tray1[P2]"},
        {"paper that nobody knows is the job's",
         cover("Front", nothing, kBlue) + inserts(insert(0, 1, number("Color", 77))) + pages("1"), "Blue[-] [-] [P1]"},
        {"paper and sides",
         options(kLongEdge) + exceptions(exception(2, 3, stock(kYellow)) + exception(4, 4, number("SidesImaged", 1)) +
                                         exception(5, 6, number("SidesImaged", 3))),
         "[P1|-] Yellow[P2|P3] [P4] [P5|P6]s"},
        {"one side of all pages",
         options(kLongEdge) + pages("1-2") + exceptions(exception(1, 9, number("SidesImaged", 1))), "[P1] [P2]"},
        {"clear of the tabs, in millimeters",
         options(kLongEdge) + pages("1-2") + exceptions(exception(1, 2, stock(number("Type", 24)) + shift(13, false))),
         "TabStock[P1|P2]",
         {},
         {60 - 13 * 72 / 25.4, 60, 60 + 13 * 72 / 25.4, 60}},
        {"the same in inches",
         options(kLongEdge) + pages("1-2") + exceptions(exception(2, 2, shift(1, true))),
         "[P1|P2]",
         {},
         {60, 60, 132, 60}},
        {"separators",
         options(text("MediaType", "Transparency")) + item("SeparatorOption", 2) + item("SeparatorColor", 3) +
             pages("1-2"),
         "Transparency[P1] Yellow[-] Transparency[P2] Yellow[-]"},
        {"printed separators",
         options(text("MediaType", "Transparency")) + item("SeparatorOption", 3) + item("SeparatorColor", 5) +
             pages("1"),
         "Transparency[P1] Pink[P1]"},
    });
}

TEST_F(PaperRow, Booklets) {
    const std::string booklet = flag(kTavro + "BookletLayout", true);
    check({
        {"padded", booklet, "[P1|P2]s [P3 P6|P5 P4]s", {"imposition-template=signature"}},
        {"right to left, with outlines",
         booklet + item("BookletDrawOutlines", 1) + item("AdvancedBookletLayoutOrderStr", 1),
         "[P1|P2]s [P6 P3|P4 P5]s",
         {},
         {52, 2, 52, 398}},
        {"on another size, with covers",
         booklet + flag(kTavro + "BookletForceNewSize", true) + dict(kTavro + "JobLevelStock", number("Size", 5)) +
             cover("Front", both, kBlue) + inserts(insert(1, 1)),
         "842x1191 Blue[P1 P6|P5 P2]s 842x1191[P3|P4]s",
         {"!insert-sheet"}},
        {"folded",
         booklet + options(text("TRFoldOptions", "BookletFoldStapleOpt")) + pages("1-4"),
         "[P1 P4|P3 P2]s",
         {"Fold=3"}},
        {"uncollated",
         booklet + copies(2) + options(text("Collate", "False")),
         "[P1|P2]s [P3 P6|P5 P4]s",
         {"2 uncollated"}},
    });
}

TEST_F(PaperRow, SetsAndFinishing) {
    check({
        {"subsets and slip sheets",
         options(kLongEdge) + item("FinishingOffset", 2) + item("FinishingOffsetEnableSubset", 1) +
             item("FinishingOffsetPagesPerSubset", 3) + item("FinishingSlipSheet", 2),
         "[P1|P2] [P3|-] [P4|P5] [P6|-] [-]",
         {"separator-sheets-type=slip-sheets", "tavro-offset=subsets", "tavro-pages-in-subset=3"}},
        {"options of the printer",
         options(text("StapleLocation", "2Staples") + text("TRFoldOptions", "3HolePunch") + text("OutputBin", "Top") +
                 text("Jog", "EndOfSet") + text("JCLBanner", "True")) +
             pages("1"),
         "[P1]",
         {"StapleDetails=StapleCount=2 Type=1", "PunchDetails=HoleCount=3 Type=1", "OutputType=Top", "Jog=3",
          "SET TRBANNER=ON"}},
        {"the finishing menu, and words for another maker's",
         item("FinishingOptions", 10) + text(kTavro + "FinishingCustom", "wire") + pages("1"),
         "[P1]",
         {"finishings=staple-top-left", "tavro-custom-finishing=wire"}},
    });
    check(
        {
            {"several together, from a queue that binds",
             item("FinishingOptions", 1'916'113) + options(text("TRBind", "BindLeft")) + item("EmitTPIF", 0) +
                 pages("1"),
             "[P1]",
             {"StapleDetails=Position=BottomLeft StapleCount=1 Type=1", "PunchDetails=HoleCount=3 Position=Top Type=1",
              "FoldDetails=FoldStyle=HalfZRight Type=1", "!Bind=3", "!tavro-job-kind"}},
            {"a booklet that is trimmed",
             item("FinishingOptions", 2) + text(kTavro + "FinishingCustom", "3 mm") + pages("1"),
             "[P1]",
             {"BookletDetails=Style=SquareFoldTrim Type=1", "tavro-custom-finishing=3 mm"}},
            {"what another program asked for",
             options(text("TRStaple", "2StaplesR")) + pages("1"),
             "[P1]",
             {"Staple=3", "StapleDetails=Position=Right StapleCount=2 Type=1", "finishings=staple-dual-right"}},
            {"slip sheets from the inserter",
             options(text("InputSlot", "Tray2")) + item("FinishingSlipSheet", 2) + copies(2) + pages("1-2"),
             "tray1[P1] tray1[P2] tray9[-]",
             {"2 sets"}},
            {"the same, the last sheet first",
             item("FinishingSlipSheet", 2) + pageOptions(text("outputorder", "reverse")) + pages("1"), "tray9[-] [P1]"},
        },
        kZR840);
}

TEST_F(PaperRow, JobsAndTheirController) {
    const std::string ada = array("FaxRecipientList", element(text("FirstName", "Ada") + text("FaxNumber", "5550")));
    check({
        {"fax",
         jobType(5) + ada + options(kLongEdge) + pages("2-3") +
             dict(kTavro + "FaxOptions", flag("CoverSheet", true) + number("Size", 2) + text("CreditCard", "4111")),
         "595x842[Fax P1] [P2] [P3]",
         {"fax-destination={number=5550 name=Ada}", "fax-cover-sheet=true", "fax-credit-card=4111"}},
        {"sample set", jobType(8) + copies(3) + pages("1"), "[P1]", {"proof-print-copies=1", "copies=3"}},
        {"saved", jobType(3) + pages("1"), "[P1]", {"job-save-disposition=save-only"}},
        {"printed and saved", jobType(4) + pages("1"), "[P1]", {"job-save-disposition=print-save"}},
        {"delayed",
         jobType(7, number("DelayedPrintTime", 3903657600)) + pages("1"),
         "[P1]",
         {"job-hold-until-time=2027-09-13T05:20:00"}},
        {"secure",
         jobType(6, text("SecurePrintPassword", "47110815")) + pages("1"),
         "[P1]",
         {"SET HOLD=STORE", "SET HOLDTYPE=PRIVATE", "SET HOLDKEY=\"47110815\""}},
        {"notes, without other instructions",
         text(kTavro + "JobNotesMessage", "Mind the ink") + item("EmitTPIF", 0) + pages("1"),
         "[P1]",
         {"job-message-to-operator=Mind the ink"}},
        {"notes for the printer's banner page",
         text(kTavro + "JobNotesJobName", "Minutes") + text(kTavro + "JobNotesSenderName", "Ann") +
             text(kTavro + "JobNotesRecipient", "Bob") + text(kTavro + "JobNotesSheetMessage", "Third floor") +
             options(text("JCLBanner", "True")) + pages("1"),
         "[P1]",
         {"SET TRBANNER=ON", "job-name=Minutes", "tavro-job-sender=Ann", "job-recipient-name=Bob",
          "job-sheet-message=Third floor"}},
        {"no instructions",
         cover("Front", nothing, kBlue) + item("EmitTPIF", 0) + pages("1"),
         "Blue[-] [P1]",
         {"!tavro-"}},
    });
    check({{"adjusted colors",
            dict(kTavro + "FullColorOptions", number("FCLightness", -40) + number("FCTrapping", 1) +
                                                  number("FCTrappingSlowDirection", 3) + number("RGBImagesProfile", 3) +
                                                  text("DestinationProfile", "Coated") + number("TextRendering", 1) +
                                                  number("FCBlackOverprint", 9)) +
                options(text("JCLRGBColorSpace", "TavroRGB")) + pages("1"),
            "[P1]",
            {"tavro-lightness=-40", "tavro-trapping=adjusted", "tavro-trapping-slow=3", "!tavro-trapping-fast",
             "tavro-rgb-images-profile=apple-rgb", "tavro-destination-profile=Coated",
             "tavro-text-rendering-intent=relative", "tavro-black-overprint=9", "SET TRRGBCOLORSPACE=TAVRORGB"}}});
    check({{"the smaller printer", cover("Front", both, kBlue) + inserts(insert(3, 1, kYellow)) + options(kLongEdge),
            "Blue[P1|P2] [P3|-] Yellow[-] [P4|P5] [P6|-]"}},
          kZR410);
}

// Curves hold on all pages, beside the other things that change them; what a number cannot mean is the controller's.
TEST_F(PaperRow, Colors) {
    const std::string cast =
        dict("FCColorCast", number("FCCyanRed", 100) + number("FCMagentaGreen", 0) + number("FCYellowBlue", -100));
    const auto colors = [&](const std::string& record) { return dict(kTavro + "FullColorOptions", record); };
    check({{"adjusted",
            colors(number("FCLightness", 50) + number("FCSaturation", -20) + number("FCTrapping", 1) +
                   number("FCTrappingFastDirection", 0) + number("FCTrappingSlowDirection", 20) +
                   number("FCBlackOverprint", 2) + number("ImageRendering", 0) + number("TextRendering", 3) +
                   number("GraphicRendering", 2)) +
                item("EmitTPIF", 0) + pages("1"),
            "[P1]",
            {"SET TRSATURATION=-20", "SET TRTRAPPING=ADJUSTED", "SET TRTRAPFAST=0", "SET TRTRAPSLOW=20",
             "SET TRBLACKOVERPRINT=TEXTANDGRAPHICS", "SET TRIMAGERENDERING=PERCEPTUAL", "SET TRTEXTRENDERING=ABSOLUTE",
             "SET TRGRAPHICRENDERING=SATURATION", "!tavro-"}},
           {"as the printer has them", pages("1"), "[P1]", {"!SET TRSATURATION", "!SET TRTRAP", "!tavro-"}},
           {"of another edition",
            colors(number("FCSaturation", 101) + number("FCBlackOverprint", 9)) + pages("1"),
            "[P1]",
            {"!SET TRSATURATION", "!SET TRBLACKOVERPRINT", "tavro-saturation=101", "tavro-black-overprint=9"}}},
          kZR840);

    const auto tonesOf = [&](const std::string& items, std::size_t sheet = 0) {
        const Proof proof = proofOf(items, {}, kZR840);
        return proof.sheets.size() > sheet ? proof.sheets[sheet].side1.tones : Tones();
    };
    const std::string darkest = exceptions(exception(2, 2, stock(kYellow) + number("LightenDarken", 3)));
    EXPECT_EQ(tonesOf(pages("1")), kUsualTones);
    const std::array contrast{13, 50, 88};
    EXPECT_EQ(tonesOf(colors(number("FCContrast", 100)) + pages("1")), (Tones{contrast, contrast, contrast, contrast}));
    EXPECT_EQ(graysOf(1), (Grays{255, 128}));
    const Tones tinted{{{50, 71, 87}, {38, 61, 82}, {25, 50, 75}, {38, 61, 82}}};
    const std::string light = colors(number("FCLightness", 50) + cast) + darkest;
    EXPECT_EQ(tonesOf(light), tinted);
    EXPECT_EQ(tonesOf(light, 2), tinted);
    EXPECT_EQ(tonesOf(light, 1)[0], (std::array{31, 55, 78})) << "and the darkest";
    EXPECT_EQ(tonesOf(light + dict(kTavro + "InvertImageOptions", number("NegativeImage", 1)))[0],
              (std::array{50, 29, 13}));
}

TEST_F(PaperRow, Images) {
    WatermarkRecord picture{};
    picture.kind = kImageWatermark;
    std::string("gray.png").copy(picture.fileName, sizeof picture.fileName - 1);
    sourcePath("tests/data/gray.png").copy(picture.filePath, sizeof picture.filePath - 1);
    picture.scale = picture.density = 100;
    setenv("XDG_DATA_HOME", path("data").c_str(), 1);
    saveWatermarkData(kWatermarkStore, &picture);
    const std::string mark = text(kTavro + "watermark.Watermark", picture.fileName);
    const std::string invert = kTavro + "InvertImageOptions";
    check({
        {"mirrored", dict(invert, number("MirrorImage", 1)) + pages("1"), "[P1]", {}, {612 - 372, 60}},
        {"turned", item("AdvancedRotateImage180", 1) + pages("1"), "[P1]", {}, {612 - 372, 792 - 672}},
        {"watermark of the first page",
         mark + item("watermark.FirstPageOnly", 1) + pages("2-3"),
         "[P2] [P3]",
         {"tavro-watermark=gray.png"},
         {0, 60}},
    });
    proofOf(mark + item("watermark.Option", 1) + pages("5-6"));
    EXPECT_EQ(graysOf(1), (Grays{239, 128}));
    EXPECT_EQ(graysOf(2), (Grays{239, 128}));
    unsetenv("XDG_DATA_HOME");

    // The printer is told of black and white by its color correction, which has other uses, too.
    const auto color = [](const char* chosen, long correction) {
        return (correction > 0 ? item("FinishingOutputColor", correction) : "") +
               options(text("JCLColorCorrection", chosen)) + pages("1");
    };
    check({
        {"black and white", color("PressMatch", 1), "[P1]", {"SET TRCOLORCORRECTION=BLACKWHITE"}},
        {"in color", color("PressMatch", 2), "[P1]", {"SET TRCOLORCORRECTION=PRESSMATCH"}},
        {"in color again", color("BlackWhite", 2), "[P1]", {"SET TRCOLORCORRECTION=AUTO"}},
        {"as a queue has it", color("BlackWhite", 0), "[P1]", {"SET TRCOLORCORRECTION=BLACKWHITE"}},
    });

    // A negative page is black where nothing is; a side on which nothing is printed is not.
    proofOf(dict(invert, number("NegativeImage", 1)) + cover("Front", nothing, kBlue) + pages("1-2") +
            exceptions(exception(2, 2, number("LightenDarken", -3))));
    EXPECT_EQ(graysOf(1), (Grays{255, 255}));
    EXPECT_EQ(graysOf(2), (Grays{0, 128}));
    EXPECT_EQ(graysOf(3), (Grays{0, 168}));
}

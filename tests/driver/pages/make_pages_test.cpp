// The pages that come out of a document: what other readers of PDFs find on them.

#include "driver/pages/make_pages.h"
#include "driver/pages/document.h"
#include "platform/files/pending_file.h"
#include "platform/files/plain_file.h"
#include "tests/driver/pages/pdf_maker.h"
#include "tests/platform/files/temporary_folder.h"
#include "tests/support/places.h"

#include <gtest/gtest.h>

#include <map>
#include <regex>

namespace {

const PaperShape kLetter{{612, 792}, 12, 12, 600, 780};

class MakePages : public testing::Test {
protected:
    void add(const std::string& content) { std::ofstream(document, std::ios::binary) << content; }

    /// What comes out of the document, in words.
    std::string made(const JobInstructions& job, const PaperShape& paper = kLetter) {
        std::string reason;
        const auto pages = readDocument(openPlainFile(document, INT64_MAX).get(), &reason, password);
        if (!pages) {
            return reason;
        }
        const SheetPlan plan = planSheets(job, std::ssize(pages->sizes));
        PagesOrder order;
        order.document = document;
        order.password = password;
        order.plan = &plan;
        order.layout = layoutOf(job, pages->sizes.at(0));
        order.papers.assign(plan.papers.size(), paper);
        PendingFile file(output);
        if (!makePages(order, file, {}, &reason) || !file.commit()) {
            return reason;
        }
        const std::string check = outputOfCommand("qpdf --check '" + output + "'");
        EXPECT_NE(check.find("No syntax or stream encoding errors found"), std::string::npos) << check;
        return wordsOfPDF(output);
    }

    TemporaryFolder folder;
    std::string document = folder / "document.pdf";
    std::string output = folder / "pages.pdf";
    std::string password;
};

}  // namespace

TEST_F(MakePages, PagesThatFitStayAsTheyAre) {
    add(pdfOf({{}, {}, {}}));
    JobInstructions job;
    job.sides = Sides::longEdge;
    job.frontCover = CoverInstruction{};
    job.inserts = {{1, 1, {}}};
    EXPECT_EQ(made(job), "612x792:\n612x792: P1@72,694\n612x792:\n612x792:\n612x792: P2@72,694\n612x792: P3@72,694");
    // A page that comes twice.
    job = {};
    job.paper.type = kTransparencyType;
    job.separators = Separators::printed;
    EXPECT_EQ(made(job).substr(0, 39), "612x792: P1@72,694\n612x792: P1@72,694\n6");
}

TEST_F(MakePages, EveryShapeOfPageFindsItsPlace) {
    add(pdfOf({{"/MediaBox[0 0 792 612]"},                           // lies across
               {"/MediaBox[0 0 612 792]/Rotate 90"},                 // the same, turned for showing
               {"/MediaBox[-50 -50 562 742]"},                       // its origin is elsewhere
               {"/MediaBox[0 0 1000 1000]/CropBox[20 20 632 812]"},  // a part of it is shown
               {"/MediaBox[0 0 306 396]/UserUnit 2.0"},              // in units of two points
               {"/MediaBox[0 0 842 1191]"},                          // larger than the paper
               {"/MediaBox[0 0 288 432]"},                           // smaller
               {"/MediaBox[0 0 1e30 -7]/Rotate 45"},                 // makes no sense
               {""}}));                                              // has no box
    EXPECT_EQ(made({}),
              "612x792: P1@514,676\n"
              "612x792: P2@72,694\n"
              "612x792: P3@122,644\n"
              "612x792: P4@52,714\n"
              "612x792: P5@144,596\n"
              "612x792: P6@81,717\n"
              "612x792: P7@234,514\n"
              "612x792: P8@72,694\n"
              "612x792: P9@72,694");
}

TEST_F(MakePages, PagesAreScaledAsAsked) {
    add(pdfOf({{"/MediaBox[0 0 306 396]"}}));
    JobInstructions job;
    EXPECT_EQ(made(job), "612x792: P1@225,496");
    job.scaling.kind = Scaling::Kind::fit;
    EXPECT_EQ(made(job), "612x792: P1@150,588");
    job.scaling = {Scaling::Kind::percent, 200};
    EXPECT_EQ(made(job), "612x792: P1@144,596");
    job.scaling = {Scaling::Kind::actualSize};
    job.orientation = Orientation::landscape;
    EXPECT_EQ(made(job), "612x792: P1@406,433");
}

TEST_F(MakePages, ImagesAreMovedMirroredAndTurned) {
    add(pdfOf({{}, {}, {}}));
    JobInstructions job;
    job.sides = Sides::longEdge;
    job.exceptions = {{{1, 2}, {}, {}, {30, 20}, {}}};
    EXPECT_EQ(made(job), "612x792: P1@42,694\n612x792: P2@92,694\n612x792: P3@72,694");
    job.isRotated = true;
    EXPECT_EQ(made(job).substr(0, 19), "612x792: P1@526,65\n");
    job.isRotated = false;
    job.isMirrored = true;
    made(job);
    // Mirrored letters are no text for anybody, but ink, which begins 42 points from the right.
    const std::string ink = outputOfCommand("gs -q -dNOPAUSE -dBATCH -sDEVICE=bbox -dLastPage=1 '" + output + "'");
    EXPECT_NE(ink.find("%%BoundingBox: 533 72 567 99"), std::string::npos) << ink;
}

TEST_F(MakePages, SeveralPagesOnASideLieInTheOrderThatIsAsked) {
    add(pdfOf({{}, {}, {}, {}}));
    using enum NumberUpOrder;
    const struct {
        NumberUpOrder order;
        const char* pages;  // row by row, from the left
    } rows[] = {{rightDown, "1234"}, {downRight, "1324"}, {leftDown, "2143"}, {downLeft, "3142"},
                {rightUp, "3412"},   {upRight, "2413"},   {leftUp, "4321"},   {upLeft, "4231"}};
    const std::regex word("P([1-4])@([0-9]+),([0-9]+)");
    for (const auto& row : rows) {
        JobInstructions job;
        job.numberUp = 4;
        job.numberUpOrder = row.order;
        const std::string words = made(job);
        std::map<std::pair<int, int>, std::string> places;
        for (std::sregex_iterator found(words.begin(), words.end(), word), end; found != end; ++found) {
            places[{std::stoi((*found)[3]), std::stoi((*found)[2])}] = (*found)[1];
        }
        std::string pages;
        for (const auto& [place, page] : places) {
            pages += page;
        }
        EXPECT_EQ(pages, row.pages) << words;
    }
}

/// The print server's own way to a booklet puts the same pages to the same places.
TEST_F(MakePages, BookletsAreThoseOfThePrintServer) {
    std::vector<TestPage> pages(7);
    pages[2].keys = "/MediaBox[0 0 612 792]/Rotate 180";
    pages[4].keys = "/MediaBox[0 0 595 842]";
    add(pdfOf(pages));
    JobInstructions job;
    job.booklet = BookletInstruction{};
    made(job);
    const std::string peer = folder / "peer.pdf";
    outputOfCommand("PPD='" + sourcePath("resources/ppd/Tavro-ZR420.ppd") +
                    "' CONTENT_TYPE=application/pdf /usr/lib/cups/filter/pdftopdf 1 user title 1 "
                    "'PageSize=Letter booklet=on' '" +
                    document + "' 2>/dev/null >'" + peer + "'");
    for (const std::string& file : {output, peer}) {
        outputOfCommand("pdftoppm -r 36 -gray '" + file + "' '" + file + "'");
    }
    for (int page = 1; page <= 4; ++page) {
        const std::string suffix = "-" + std::to_string(page) + ".pgm";
        // How many of a thousand parts of the gray differ.
        const double difference = std::atof(outputOfCommand("compare -metric MAE '" + output + suffix + "' '" + peer +
                                                            suffix + "' null: 2>&1 | sed 's/.*(//'")
                                                .c_str());
        EXPECT_LT(difference, 0.004) << "side " << page;
    }
    EXPECT_EQ(outputOfCommand("pdfinfo '" + peer + "' | grep ^Pages").find("Pages:           4"), 0U);
    EXPECT_EQ(outputOfCommand("pdfinfo '" + output + "' | grep ^Pages").find("Pages:           4"), 0U);
}

TEST_F(MakePages, WhatLiesOnAPageIsPrintedWithIt) {
    // A stamp that is printed and a note that is not, on a page that is drawn and on one that stays as it is, and there
    // a field that nobody has drawn yet and one that is drawn; a layer that is switched off, and two that are otherwise
    // on paper.
    const std::string stamp =
        "/Annots[<</Type/Annot/Subtype/Stamp/Rect[100 300 200 350]/F 4/AP<</N 4 0 R>>>>"
        "<</Type/Annot/Subtype/Stamp/Rect[100 500 200 550]/F 2/AP<</N 4 0 R>>>>]";
    const auto layer = [](const std::string& name) {
        return "/OC /" + name + " BDC BT /F1 36 Tf 300 72 Td (" + name + ") Tj ET EMC\n";
    };
    std::string withField = stamp;
    withField.insert(withField.size() - 1, " 8 0 R 9 0 R");
    add(pdfOf(
        {{"/MediaBox[0 0 842 1191]" + stamp},
         {"/MediaBox[0 0 612 792]" + withField, layer("HIDDEN") + layer("SCREEN") + layer("PAPER"),
          "/Properties<</HIDDEN 5 0 R/SCREEN 6 0 R/PAPER 7 0 R>>"}},
        "/OCProperties<</OCGs[5 0 R 6 0 R 7 0 R]/D<</ON[6 0 R]/OFF[5 0 R 7 0 R]"
        "/AS[<</Event/Print/Category[/Print]/OCGs[5 0 R 6 0 R 7 0 R]>>]>>>>"
        "/AcroForm<</NeedAppearances true/Fields[8 0 R 9 0 R]/DR<</Font<</F1 3 0 R>>>>>>",
        {"<</Type/XObject/Subtype/Form/BBox[0 0 100 50]/Resources<</Font<</F1 3 0 R>>>>/Length 39>>stream\n"
         "BT /F1 36 Tf 10 10 Td (STAMP) Tj ET    \nendstream",
         "<</Type/OCG/Name(L1)>>", "<</Type/OCG/Name(L2)/Usage<</Print<</PrintState/OFF>>>>>>",
         "<</Type/OCG/Name(L3)/Usage<</Print<</PrintState/ON>>>>>>",
         "<</Type/Annot/Subtype/Widget/FT/Tx/T(a)/V(Ada)/DA(/F1 36 Tf)/Rect[100 600 300 640]/F 4>>",
         "<</Type/Annot/Subtype/Widget/FT/Tx/T(b)/V(STAMP)/DA(/F1 36 Tf)/Rect[300 300 400 350]/F 4/AP<</N 4 0 R>>>>"}));
    EXPECT_EQ(made({}),
              "612x792: STAMP@105,563 P1@81,717\n612x792: Ada@101,161 STAMP@110,456 P2@72,694 STAMP@310,456 "
              "PAPER@300,694");
}

TEST_F(MakePages, RefusesWhatMustNotBePrinted) {
    add(pdfOf({}));
    EXPECT_EQ(made({}), "has no pages");
    add("no PDF at all");
    EXPECT_EQ(made({}).substr(0, 24), "is no PDF or is damaged:");
    add(pdfOf({{}}));
    const std::string whole = folder / "whole.pdf";
    std::filesystem::rename(document, whole);
    outputOfCommand("qpdf --encrypt '' owner 256 --print=none -- '" + whole + "' '" + document + "'");
    EXPECT_EQ(made({}), "is protected: whoever made it does not allow printing");
    outputOfCommand("qpdf --encrypt user owner 256 -- '" + whole + "' '" + document + "'");
    EXPECT_EQ(made({}), reasonOfLock());
    password = "user";
    EXPECT_EQ(made({}), "612x792: P1@72,694");
    password.clear();
    outputOfCommand("qpdf --encrypt '' owner 256 --modify=none -- '" + whole + "' '" + document + "'");
    EXPECT_EQ(made({}), "612x792: P1@72,694");
}

TEST_F(MakePages, TreesOfPagesAreWalkedAsFarAsTheyMakeSense) {
    const auto addTree = [this](const TestPage& page, const std::vector<std::string>& nodes) {
        std::string tree = pdfOf({page}, "", nodes);
        tree.replace(tree.find("/Pages 2 0 R"), 12, "/Pages 4 0 R");
        add(tree);
    };
    // Pages at different depths, one of them twice, with what it inherits; entries that are no pages.
    addTree({""}, {"<</Type/Pages/Count 9000000000/MediaBox[0 0 792 612]/Kids[7 0 R 5 0 R 77 0 R (x)]>>",
                   "<</Kids[7 0 R<</Type/Page/MediaBox[0 0 612 792]>>]>>"});
    EXPECT_EQ(made({}), "612x792: P1@514,676\n612x792: P1@514,676\n612x792:");
    addTree({}, {"<</Kids[2 0 R 4 0 R]>>"});
    EXPECT_EQ(made({}), "is damaged: some of its pages stand in a circle, or twice");
    // Libraries go down by calling themselves.
    for (const int levels : {900, 30000}) {
        std::vector<std::string> chain;
        for (int node = 5; node < levels + 4; ++node) {
            chain.push_back("<</Kids[" + std::to_string(node) + " 0 R]>>");
        }
        chain.emplace_back("<</Kids[2 0 R]>>");
        addTree({}, chain);
        EXPECT_EQ(made({}), levels == 900 ? "612x792: P1@72,694"
                                          : "keeps its pages in groups inside of groups, more than 1000 levels deep");
    }
}

TEST_F(MakePages, DamagedDocumentsAreRepaired) {
    std::string damaged = pdfOf({{}, {}});
    damaged.replace(damaged.find("startxref\n") + 10, 3, "999");
    add(damaged);
    EXPECT_EQ(made({}), "612x792: P1@72,694\n612x792: P2@72,694");
    std::string reason;
    EXPECT_TRUE(readDocument(openPlainFile(document, INT64_MAX).get(), &reason)->isRepaired);
}

// Pages drawn by a program of its own: as another reader of PDFs draws them, and whatever becomes of that program.

#include "driver/worker/page_drawer.h"
#include "driver/pages/document.h"
#include "platform/files/plain_file.h"
#include "tests/driver/pages/pdf_maker.h"
#include "tests/platform/files/temporary_folder.h"
#include "tests/support/ink.h"
#include "tests/support/places.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <cerrno>
#include <cmath>
#include <csignal>

namespace {

/// Forms that draw each other: more of them than anybody waits for.
TestPage endlessPage() {
    return {"/MediaBox[0 0 612 792]", "/A4 Do", "/XObject<</A4 4 0 R>>"};
}
std::vector<std::string> endlessForms() {
    std::vector<std::string> forms;
    for (int i = 4; i < 20; ++i) {
        const std::string next = "/A" + std::to_string(i + 1);
        std::string content;
        for (int copy = 0; copy < 20 && i < 19; ++copy) {
            content += next + " Do ";
        }
        content += "0 0 m 9 9 l S";
        forms.push_back("<</Type/XObject/Subtype/Form/BBox[0 0 99 99]/Resources<</XObject<<" + next + " " +
                        std::to_string(std::min(i + 1, 19)) + " 0 R>>>>/Length " + std::to_string(content.size()) +
                        ">>stream\n" + content + "\nendstream");
    }
    return forms;
}

class PageDrawings : public testing::Test {
protected:
    /// Nobody is left to wait for.
    ~PageDrawings() override {
        EXPECT_EQ(waitpid(-1, nullptr, 0), -1);
        EXPECT_EQ(errno, ECHILD);
    }

    void add(const std::string& content) { std::ofstream(path, std::ios::binary) << content; }

    std::shared_ptr<const DrawnDocument> open(const std::string& password = {}) {
        std::string reason;
        auto document = DrawnDocument::open(path, password, &reason);
        EXPECT_TRUE(document) << reason;
        return document;
    }

    static PageWish letter(const std::shared_ptr<const DrawnDocument>& document, int page) {
        return {document, {page, 612, 792}};
    }

    /// What becomes of one of the wishes that are wished for.
    static PagePicture await(PageDrawer& drawer, const PageWish& wish) {
        for (;;) {
            PagePicture found = drawer.find(wish);
            if (found.isAsWished || found.fault != PageFault::none) {
                return found;
            }
            pollfd news{drawer.newsDescriptor(), POLLIN, 0};
            poll(&news, 1, -1);
            drawer.takeNews();
        }
    }
    static PagePicture drawn(PageDrawer& drawer, const PageWish& wish) {
        drawer.wish({wish});
        return await(drawer, wish);
    }

    /// By a shell's script in place of the program.
    PageFault faultBy(const std::string& script) {
        std::ofstream(standIn) << "#!/bin/sh\n" << script << "\n";
        std::filesystem::permissions(standIn, std::filesystem::perms::owner_all);
        PageDrawer drawer(standIn, {4, 1024, 2});
        return drawn(drawer, letter(open(), 0)).fault;
    }

    static pid_t workerOf(const PageDrawer& /*drawer*/) {
        for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
            pid_t child = 0;
            if (std::ifstream(task.path() / "children") >> child) {
                return child;
            }
        }
        return 0;
    }

    TemporaryFolder folder;
    std::string path = folder / "document.pdf";
    std::string standIn = folder / "stand-in";
    std::string worker = stagePath("lib/tavro-pictures");
};

}  // namespace

TEST_F(PageDrawings, ShowPagesAsTheirReadersSeeThem) {
    const std::string block = "0 g 30 50 90 20 re f 150 300 8 70 re f";
    add(pdfOf({{"/MediaBox[0 0 612 792]", block},
               {"/MediaBox[0 0 612 792]/Rotate 90", block},
               {"/MediaBox[0 0 612 792]/Rotate 180", block},
               {"/MediaBox[0 0 612 792]/CropBox[20 40 420 640]/Rotate 270", block},
               {"/MediaBox[-50 -50 562 742]", block},
               {"/MediaBox[0 0 306 396]/UserUnit 2.0", block},
               {"/MediaBox[0 0 612 792]/Annots[4 0 R 5 0 R]", block}},
              "",
              {"<</Type/Annot/Subtype/Square/F 4/Rect[400 600 500 700]/AP<</N 6 0 R>>>>",
               "<</Type/Annot/Subtype/Square/Rect[500 700 600 790]/AP<</N 6 0 R>>>>",  // is not printed
               "<</Type/XObject/Subtype/Form/BBox[0 0 100 100]/Length 16>>stream\n0 0 100 100 re f\nendstream"}));
    std::string reason;
    const auto pages = readDocument(openPlainFile(path, INT64_MAX).get(), &reason);
    ASSERT_TRUE(pages) << reason;
    PageDrawer drawer(worker);
    const auto document = open();
    for (int page = 0; page < std::ssize(pages->sizes); ++page) {
        const Size& size = pages->sizes[static_cast<std::size_t>(page)];
        const PageWish wish{
            document, {page, static_cast<int>(std::lround(size.width)), static_cast<int>(std::lround(size.height))}};
        const PagePicture picture = drawn(drawer, wish);
        ASSERT_TRUE(picture.pixels) << page;
        const InkBox theirs = inkOf(drawnByGhostscript(path, page));
        EXPECT_TRUE(isSamePlace(inkOf(*picture.pixels), theirs))
            << page << ": " << inkOf(*picture.pixels) << ", not " << theirs;
    }
    // Only what is in the middle.
    const PagePicture part = drawn(drawer, {document, {0, 320, 100, 320, 100}});
    ASSERT_TRUE(part.pixels);
    EXPECT_TRUE(isSamePlace(inkOf(*part.pixels), {4, 76, 12, 100})) << inkOf(*part.pixels);
    // A page that has another shape than its picture is none that anybody wanted.
    EXPECT_EQ(drawn(drawer, {document, {1, 612, 792}}).fault, PageFault::isDamaged);
}

TEST_F(PageDrawings, GoOnBesidePagesThatCannotBeDrawn) {
    add(pdfOf({{}, endlessPage(), {}}, "", endlessForms()));
    PageDrawer drawer(worker, {1, 1024, 60});
    const auto document = open();
    drawer.wish({letter(document, 1), letter(document, 7), letter(document, 2)});
    EXPECT_TRUE(await(drawer, letter(document, 2)).pixels);
    EXPECT_EQ(drawer.find(letter(document, 1)).fault, PageFault::takesTooLong);
    EXPECT_EQ(drawer.find(letter(document, 7)).fault, PageFault::isDamaged);
    // A worker that somebody ends is started anew.
    kill(workerOf(drawer), SIGKILL);
    EXPECT_TRUE(drawn(drawer, letter(document, 0)).pixels);
    // Another document, of our own making, by the same one.
    std::string reason;
    const auto own = DrawnDocument::keep(pdfOf({{}}), &reason);
    ASSERT_TRUE(own) << reason;
    EXPECT_EQ(*drawn(drawer, letter(own, 0)).pixels, *drawer.find(letter(document, 0)).pixels);
}

TEST_F(PageDrawings, EndWhenNobodyWantsThemAnyMore) {
    add(pdfOf({{}, endlessPage()}, "", endlessForms()));
    const auto document = open();
    PageDrawer drawer(worker, {1000, 1024, 1000});
    EXPECT_TRUE(drawn(drawer, letter(document, 0)).pixels);
    const PageWish small{document, {0, 306, 396}};
    drawer.wish({letter(document, 1)});
    while (workerOf(drawer) == 0) {
    }
    // The endless one is given up, and has no fault; a picture of another size does meanwhile.
    EXPECT_TRUE(drawer.find(small).pixels);
    EXPECT_FALSE(drawer.find(small).isAsWished);
    EXPECT_EQ(drawn(drawer, small).pixels->width, 306);
    EXPECT_EQ(drawer.find(letter(document, 1)).fault, PageFault::none);
    drawer.wish({letter(document, 1)});  // is wanted until the end
}

TEST_F(PageDrawings, AreKeptAsLongAsThereIsRoom) {
    add(pdfOf({{}, {}, {}}));
    const auto document = open();
    PageDrawer drawer(worker, {}, std::size_t{612} * 792 * 4 * 2);
    drawer.wish({letter(document, 0), letter(document, 1), letter(document, 2)});
    await(drawer, letter(document, 1));
    EXPECT_FALSE(drawer.find(letter(document, 2)).pixels);
    drawn(drawer, letter(document, 0));  // is the one that was wanted last
    drawn(drawer, letter(document, 2));
    EXPECT_TRUE(drawer.find(letter(document, 0)).pixels);
    EXPECT_FALSE(drawer.find(letter(document, 1)).pixels);
}

TEST_F(PageDrawings, TellWhyThereIsNoPicture) {
    add(pdfOf({{}}));
    EXPECT_EQ(faultBy("kill -SEGV $$"), PageFault::crashes);
    EXPECT_EQ(faultBy("kill -KILL $$"), PageFault::cannotBeDrawn);
    EXPECT_EQ(faultBy("exec sleep 100"), PageFault::takesTooLong);
    EXPECT_EQ(faultBy("exec cat /dev/zero"), PageFault::isDamaged);  // talks nonsense
    std::filesystem::remove(standIn);
    PageDrawer drawer(standIn);
    EXPECT_EQ(drawn(drawer, letter(open(), 0)).fault, PageFault::cannotBeDrawn);

    PageDrawer real(worker);
    const std::string plain = folder / "plain.pdf";
    std::filesystem::rename(path, plain);
    outputOfCommand("qpdf --encrypt secret owner 256 -- '" + plain + "' '" + path + "'");
    EXPECT_EQ(drawn(real, letter(open(), 0)).fault, PageFault::needsPassword);
    EXPECT_EQ(drawn(real, letter(open("wrong"), 0)).fault, PageFault::needsPassword);
    EXPECT_TRUE(drawn(real, letter(open("secret"), 0)).pixels);
    // A document that is emptied while it is open, and one that never was any.
    const auto document = open("secret");
    add("");
    EXPECT_EQ(drawn(real, letter(document, 0)).fault, PageFault::isDamaged);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    add(pdfOf({{}}));
    PageDrawer poor(worker, {4, 40, 20});
    EXPECT_EQ(drawn(poor, {open(), {0, 2448, 3168}}).fault, PageFault::takesTooMuchMemory);
#endif
}

// Documents that are looked at in a process of its own: whatever becomes of it, there is an answer, and nothing is
// left.

#include "driver/worker/document_look.h"
#include "driver/worker/page_report.h"
#include "driver/worker/worker_limits.h"
#include "platform/files/plain_file.h"
#include "tests/driver/pages/pdf_maker.h"
#include "tests/platform/files/temporary_folder.h"
#include "tests/support/places.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <cerrno>
#include <memory>

namespace {

class DocumentLooks : public testing::Test {
protected:
    /// Nobody is left to wait for.
    ~DocumentLooks() override {
        EXPECT_EQ(waitpid(-1, nullptr, 0), -1);
        EXPECT_EQ(errno, ECHILD);
    }

    void add(const std::string& content) { std::ofstream(document, std::ios::binary) << content; }

    /// A million pages, which are one.
    void addMillionPages() {
        std::string kids;
        for (int i = 0; i < 1'000'000; ++i) {
            kids += "6 0 R ";
        }
        std::string million = pdfOf({{}}, "", {"<</Kids[" + kids + "]>>"});
        million.replace(million.find("/Pages 2 0 R"), 12, "/Pages 4 0 R");
        add(million);
    }

    /// "COUNT pages", or the reason that there are none.
    std::string look(const std::string& program, const LookLimits& limits = {}) const {
        std::string reason;
        DocumentLook look(program, openPlainFile(document, INT64_MAX).get(), password, limits);
        const auto pages = look.finish(&reason);
        return pages ? std::to_string(pages->sizes.size()) + " pages" : reason;
    }

    /// By a shell's script in place of the program.
    std::string lookBy(const std::string& script, const LookLimits& limits = {}) const {
        std::ofstream(standIn) << "#!/bin/sh\n" << script << "\n";
        std::filesystem::permissions(standIn, std::filesystem::perms::owner_all);
        return look(standIn, limits);
    }

    TemporaryFolder folder;
    std::string document = folder / "document.pdf";
    std::string password;
    std::string standIn = folder / "stand-in";
    std::string worker = stagePath("lib/tavro-look");
};

/// What is believed of a report, in words.
std::string believed(const std::string& text) {
    PageReportReader reader;
    for (const char c : text) {
        if (!reader.add({&c, 1})) {
            return "nonsense";
        }
    }
    std::string reason;
    const auto pages = reader.isWhole() ? reader.take(&reason) : std::nullopt;
    return !reader.isWhole() ? "too short" : pages ? std::to_string(pages->sizes.size()) : reason;
}

}  // namespace

TEST_F(DocumentLooks, FindTheSizesThatPagesHave) {
    add(pdfOf({{}, {}, {"/MediaBox[0 0 595.2756 841.8898]/UserUnit 1.1"}, {"/MediaBox[0 0 9 99]/Rotate 90"}}));
    std::string reason;
    DocumentLook look(worker, openPlainFile(document, INT64_MAX).get());
    const auto pages = look.finish(&reason);
    ASSERT_TRUE(pages) << reason;
    EXPECT_EQ(pages->sizes, (std::vector<Size>{kUsualPage, kUsualPage, {595.2756 * 1.1, 841.8898 * 1.1}, {99, 9}}));
    EXPECT_FALSE(pages->isRepaired);
}

TEST_F(DocumentLooks, HaveLimits) {
    addMillionPages();
    EXPECT_EQ(look(worker), "1000000 pages");
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    EXPECT_EQ(look(worker, {30, 20}), "takes more than 20 MB of memory to look at");
#endif
    std::filesystem::resize_file(document, std::uintmax_t{5} << 30);
    EXPECT_EQ(look(worker, {1, 1024, 600}), "takes longer than 1 seconds to look at");
    EXPECT_EQ(lookBy("exec sleep 100", {30, 1024, 2}), "takes longer than 2 seconds to look at");
}

TEST_F(DocumentLooks, TellWhyThereIsNoAnswer) {
    add("");
    EXPECT_EQ(look(worker).substr(0, 24), "is no PDF or is damaged:");
    const std::string none = folder / "none";
    EXPECT_EQ(look(none), "cannot be looked at: " + none + ": No such file or directory");
    EXPECT_EQ(lookBy("kill -SEGV $$"), "is damaged so that reading it ends in a crash");
    EXPECT_EQ(lookBy("echo 2 612 792"), "cannot be looked at: " + standIn + " ended with status 0");
    EXPECT_EQ(lookBy("kill -KILL $$"), "cannot be looked at: " + standIn + " was ended by signal 9");
    EXPECT_EQ(lookBy("exec cat /dev/zero"), "cannot be looked at: what " + standIn + " says of it makes no sense");
}

TEST_F(DocumentLooks, OpenWhatAPasswordOpens) {
    const std::string plain = folder / "plain.pdf";
    add(pdfOf({{}, {}}));
    std::filesystem::rename(document, plain);
    outputOfCommand("qpdf --encrypt user owner 256 --print=none -- '" + plain + "' '" + document + "'");
    EXPECT_EQ(look(worker), reasonOfLock());
    password = "wrong";
    EXPECT_EQ(look(worker), reasonOfLock());
    password = "user";
    EXPECT_EQ(look(worker), "is protected: whoever made it does not allow printing");
    password = "owner";
    EXPECT_EQ(look(worker), "2 pages");
}

TEST_F(DocumentLooks, EndWithWhoeverWantsThem) {
    add("");
    std::filesystem::resize_file(document, std::uintmax_t{5} << 30);
    const DocumentLook unwanted(worker, openPlainFile(document, INT64_MAX).get());
}

TEST(PageReports, AreNotBelievedWhatNoDocumentHas) {
    EXPECT_EQ(believed("2 612 792\n1 99.5 1e3\nrepaired\n"), "3");
    EXPECT_EQ(believed("refused has no pages\n"), "has no pages");
    EXPECT_EQ(believed("2 612 792\n"), "too short");
    EXPECT_EQ(believed("2 612 792\nwhole"), "too short");
    for (const char* text :
         {"whole\n", "refused \n", "1 612 792\nrefused all\n", "1 612 792\nwhole\n\n", "1 612\nwhole\n", "1 612 792 \n",
          "0 612 792\n", "-1 612 792\n", "10000001 612 792\n", "10000000 612 792\n1 612 792\n",
          "18446744073709551616 612 792\n", "1 nan 792\n", "1 612 inf\n", "1 0 792\n", "1 612 -792\n", "1 612 1e9\n"}) {
        EXPECT_EQ(believed(text), "nonsense") << text;
    }
    EXPECT_EQ(believed("refused " + std::string(2000, 'x') + "\n"), "nonsense");
}

TEST(Workers, ReachNoNetwork) {
    const pid_t worker = fork();
    if (worker == 0) {
        limitWorker({1000, 16});
        _exit(socket(AF_INET6, SOCK_STREAM, 0) < 0 && socket(AF_UNIX, SOCK_STREAM, 0) >= 0 ? 0 : 1);
    }
    int status = -1;
    waitpid(worker, &status, 0);
    EXPECT_EQ(status, 0);
}

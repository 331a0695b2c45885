// A job under way: how far it is, and what is left of it when it is cancelled.
#include "host/job/print_job.h"
#include "tests/host/settings/settings_session.h"
#include "tests/support/places.h"
#include "tests/support/print_server.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <future>

namespace fs = std::filesystem;

namespace {

class JobWorks : public SettingsTest {
protected:
    JobWorks() {
        fs::create_directories(folder / "cups/filter");
        fs::create_directory(folder / "tmp");
        setenv("TMPDIR", (folder / "tmp").c_str(), 1);
    }
    ~JobWorks() override {
        unsetenv("TMPDIR");
        unsetenv("CUPS_SERVERBIN");
    }

    /// A filter that says who it is, and does not end by itself.
    void stopIn(const std::string& filter) const {
        const std::string path = (folder.path() / "cups/filter" / filter).string();
        std::ofstream(path) << "#!/bin/sh\necho $$ >'" << process() << "'\nexec sleep 30\n";
        fs::permissions(path, fs::perms::owner_all);
        setenv("CUPS_SERVERBIN", (folder / "cups").c_str(), 1);
    }
    std::string process() const { return folder / "process"; }

    Result<Document> document =
        OpeningDocument(sourcePath("tests/data/ten-pages.pdf"), {stagePath("lib/tavro-look"), {}}).finish();
    JobTarget target{JobWay::file, folder / "job.ps"};
    const std::string& jobFile = target.file;
};

}  // namespace

TEST_F(JobWorks, TellHowFarTheyAre) {
    ASSERT_TRUE(document);
    const auto settings = session(cover("FrontCover", 1, number("Color", 2)), {});
    JobWork work(*document, printer, *settings, target, bundle.get());
    EXPECT_EQ(work.percent(), 0);
    const JobOutcome outcome = std::async(std::launch::async, [&] { return work.run(); }).get();
    EXPECT_EQ(outcome.failure, "");
    EXPECT_FALSE(outcome.isCancelled);
    EXPECT_EQ(work.percent(), 100);
    EXPECT_GT(fs::file_size(jobFile), 10'000U);
}

// Whatever becomes of the file: what was shown is printed, or the job is refused.
TEST_F(JobWorks, PrintTheDocumentAsItWasOpened) {
    const std::string path = folder / "mine.pdf";
    const std::string ten = sourcePath("tests/data/ten-pages.pdf");
    fs::copy_file(ten, path);
    const auto settings = session("", {});
    auto opened = OpeningDocument(path, {stagePath("lib/tavro-look"), {}}).finish();
    EXPECT_FALSE(opened->file->isOutdated());
    std::ofstream(path, std::ios::trunc) << "%PDF-1.4 of somebody else";
    EXPECT_TRUE(opened->file->isOutdated());
    EXPECT_EQ(JobWork(*opened, printer, *settings, target, bundle.get()).run().failure, "");
    fs::remove(path);
    EXPECT_EQ(JobWork(*opened, printer, *settings, target, bundle.get()).run().failure, "");

    // One that is too large for a copy is read where it is.
    fs::copy_file(ten, path);
    Document large = *opened;
    const auto file = DocumentFile::open(path);
    file->beginCopy(1000);
    EXPECT_TRUE(file->settle());
    large.file = file;
    fs::rename(path, folder / "elsewhere.pdf");
    EXPECT_EQ(JobWork(large, printer, *settings, target, bundle.get()).run().failure, "");
    fs::remove(jobFile);
    std::ofstream(folder / "elsewhere.pdf", std::ios::app) << "%";
    const std::string failure = JobWork(large, printer, *settings, target, bundle.get()).run().failure;
    EXPECT_NE(failure.find("has been written to since it was opened"), std::string::npos) << failure;
    EXPECT_FALSE(fs::exists(jobFile));
}

TEST_F(JobWorks, LeaveNothingWhenTheyAreCancelled) {
    ASSERT_TRUE(document);
    // Once while code comes to the pages, and once on the way to the printer.
    const auto withCover = session(cover("FrontCover", 1, number("Color", 2)), {});
    const auto plain = session("", {});
    for (const auto* settings : {withCover.get(), plain.get()}) {
        for (const char* filter : {"pdftops", "pdftopdf"}) {
            stopIn(filter);
        }
        fs::remove(process());
        JobWork work(*document, printer, *settings, target, bundle.get());
        auto outcome = std::async(std::launch::async, [&] { return work.run(); });
        EXPECT_TRUE(eventually([this] { return fs::exists(process()) && fs::file_size(process()) > 1; }));
        work.cancel();
        EXPECT_TRUE(outcome.get().isCancelled);
        EXPECT_FALSE(fs::exists(jobFile));
        EXPECT_TRUE(fs::is_empty(folder / "tmp"));
        int id = 0;
        std::ifstream(process()) >> id;
        EXPECT_GT(id, 0);
        EXPECT_NE(kill(id, 0), 0) << "its filter still runs";
    }
    for (const JobWay way : {JobWay::file, JobWay::pdf}) {
        target.way = way;
        JobWork work(*document, printer, *plain, target, bundle.get());
        work.cancel();  // before it has begun
        EXPECT_TRUE(work.run().isCancelled);
        EXPECT_FALSE(fs::exists(jobFile));
    }
}

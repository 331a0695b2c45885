// What the preview costs: a page's first picture, beside Poppler's own program; a change of the settings until the
// sheet is drawn anew; and the memory of the program that draws, after all pages of a document.
//
// usage: bench_preview WORKER PPD DOCUMENT

#include "bench/side_by_side.h"
#include "driver/pages/document.h"
#include "host/preview/page_sources.h"
#include "host/settings/printer.h"
#include "platform/files/plain_file.h"

#include <poll.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

constexpr int kRounds = 15;
constexpr int kWidth = 420;
constexpr int kHeight = 540;

void await(PageDrawer& drawer, const std::vector<PageWish>& wishes) {
    drawer.wish(wishes);
    for (const PageWish& wish : wishes) {
        for (;;) {
            const PagePicture found = drawer.find(wish);
            if (found.isAsWished) {
                break;
            }
            if (found.fault != PageFault::none) {
                std::fprintf(stderr, "page %d has a fault\n", wish.view.page + 1);
                std::exit(1);
            }
            pollfd news{drawer.newsDescriptor(), POLLIN, 0};
            poll(&news, 1, -1);
            drawer.takeNews();
        }
    }
}

void measureFirstPicture(const std::string& worker, const PageSources& sources, const std::string& document) {
    const std::string peer = "pdftoppm -f 1 -l 1 -scale-to-x 417 -scale-to-y 540 -png '" + document + "' >/dev/null";
    bench::compare(
        "a page's first picture", kRounds, "ours",
        [&] {
            PageDrawer drawer(worker);
            await(drawer, {{sources.document, {0, 417, 540}}});
        },
        "pdftoppm", [&] { static_cast<void>(std::system(peer.c_str())); });
}

/// Each round is another change, so that nothing is there from the one before but the pictures.
void measureChange(const std::string& worker, PMPrinter printer, const PageSources& sources) {
    constexpr int kPages = 1000;
    const auto pages = std::make_shared<const std::vector<Size>>(kPages, kUsualPage);
    PageDrawer drawer(worker);
    for (const int numberUp : {1, 2, 16}) {
        std::vector<double> times;
        for (int round = 0; round < kRounds; ++round) {
            JobInstructions job;
            job.paper.size = "Letter";
            job.sides = Sides::longEdge;
            job.numberUp = numberUp;
            job.finishing.staples = round % 2 == 0 ? "2Staples" : "1Staple";
            job.inserts = {{round + 20, 1, {.color = "Yellow"}}};
            const SheetView view{0, false, kWidth, kHeight};
            std::vector<PageWish> wishes;
            for (const PictureNeed& need :
                 picturesOf(sheetsOfJob(job, planSheets(job, kPages), pages, printer), view)) {
                wishes.push_back(wishFor(need, sources));
            }
            await(drawer, wishes);
            times.push_back(bench::microseconds([&] {
                const JobSheets sheets = sheetsOfJob(job, planSheets(job, kPages), pages, printer);
                drawSheet(sheets, view, picturesIn(drawer, sources), nullptr);
            }));
        }
        std::printf("a change, %d pages, %2d on a side: %.1f ms until its first sheet is drawn\n", kPages, numberUp,
                    bench::medianOf(std::move(times)) / 1000);
    }
}

/// Megabytes of the only child of this process: now, and at most.
void printMemoryOfWorker() {
    for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
        std::string child;
        if (!(std::ifstream(task.path() / "children") >> child)) {
            continue;
        }
        std::ifstream status("/proc/" + child + "/status");
        for (std::string line; std::getline(status, line);) {
            if (line.starts_with("VmRSS") || line.starts_with("VmHWM")) {
                std::printf("  %s\n", line.c_str());
            }
        }
    }
}

void measureMemory(const std::string& worker, const PageSources& sources, std::size_t count) {
    PageDrawer drawer(worker);
    const double time = bench::microseconds([&] {
        for (std::size_t page = 0; page < count; ++page) {
            await(drawer, {{sources.document, {static_cast<int>(page), 417, 540}}});
        }
    });
    std::printf("%zu pages in %.1f s, %.1f ms a page; the program that drew them:\n", count, time / 1e6,
                time / 1000 / static_cast<double>(count));
    printMemoryOfWorker();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s WORKER PPD DOCUMENT\n", argv[0]);
        return 2;
    }
    std::string reason;
    const auto pages = readDocument(openPlainFile(argv[3], INT64_MAX).get(), &reason);
    const PageSources sources{DrawnDocument::open(argv[3], {}, &reason), nullptr, nullptr};
    auto printer = openPPD(argv[2]);
    if (!pages || !sources.document || !printer) {
        std::fprintf(stderr, "%s\n", reason.c_str());
        return 1;
    }
    measureFirstPicture(argv[1], sources, argv[3]);
    measureChange(argv[1], printer->get(), sources);
    measureMemory(argv[1], sources, pages->sizes.size());
    return 0;
}

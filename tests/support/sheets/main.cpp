// Draws the sheets of a job into PNG files and says each in words, as the preview shows them.
//
// usage: tavro-sheets PPD SETTINGS DOCUMENT FOLDER [WIDTH HEIGHT [SCALE]]

#include "driver/pages/document.h"
#include "host/preview/page_sources.h"
#include "host/preview/sheet_words.h"
#include "platform/files/plain_file.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Automation.h"
#include "tests/support/places.h"

#include <poll.h>
#include <QImage>
#include <cstdio>
#include <cstdlib>

namespace {

[[noreturn]] void fail(const std::string& reason) {
    std::fprintf(stderr, "tavro-sheets: %s\n", reason.c_str());
    std::exit(1);
}

/// Waits until there is nothing left to wait for.
void awaitPictures(PageDrawer& drawer, const std::vector<PageWish>& wishes) {
    drawer.wish(wishes);
    for (const PageWish& wish : wishes) {
        for (PagePicture found = drawer.find(wish); !found.isAsWished && found.fault == PageFault::none;
             found = drawer.find(wish)) {
            pollfd news{drawer.newsDescriptor(), POLLIN, 0};
            poll(&news, 1, -1);
            drawer.takeNews();
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 5 || argc == 6 || argc > 8) {
        fail("usage: tavro-sheets PPD SETTINGS DOCUMENT FOLDER [WIDTH HEIGHT [SCALE]]");
    }
    if (ToolboxInitialize(&argc, argv, true) != noErr) {
        fail("no toolbox");
    }
    auto printer = openPPD(argv[1]);
    auto settings = readSettingsFile(argv[2]);
    std::string reason;
    auto pages = readDocument(openPlainFile(argv[3], INT64_MAX).get(), &reason);
    PageSources sources{DrawnDocument::open(argv[3], {}, &reason)};
    if (!printer || !settings || !pages || !sources.document) {
        fail(!printer ? printer.failure().line : !settings ? settings.failure().line : reason);
    }
    const PrintSession session(*printer, *settings, nullptr, "job");
    const auto texts =
        CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, makeFileURL(stagePath("TavroPrint.bundle"), true).get()));
    const JobInstructions& instructions = session.instructions();
    JobSheets job = sheetsOfJob(instructions, session.plan(std::ssize(pages->sizes)),
                                std::make_shared<const std::vector<Size>>(pages->sizes), printer->get());
    if (job.mark && !(sources.mark = drawnWatermark(*job.mark, &reason))) {
        fail(reason);
    }
    PageDrawer drawer(stagePath("lib/tavro-pictures"));
    for (std::size_t sheet = 0; sheet < job.plan.sheets.size(); ++sheet) {
        for (const bool isSide2 : {false, true}) {
            if (isSide2 && job.plan.sheets[sheet].sides == Sides::one) {
                continue;
            }
            const SheetView view{sheet, isSide2, argc > 6 ? std::atoi(argv[5]) : 420,
                                 argc > 6 ? std::atoi(argv[6]) : 540, argc > 7 ? std::atof(argv[7]) : 1};
            std::vector<PageWish> wishes;
            for (const PictureNeed& need : picturesOf(job, view)) {
                wishes.push_back(wishFor(need, sources));
            }
            awaitPictures(drawer, wishes);
            const Pixels picture = drawSheet(job, view, picturesIn(drawer, sources), texts.get());
            const QImage image(reinterpret_cast<const uchar*>(picture.values.data()), picture.width, picture.height,
                               QImage::Format_ARGB32_Premultiplied);
            const std::string name = "sheet-" + std::to_string(sheet + 1) + (isSide2 ? "-back.png" : "-front.png");
            if (!image.save(QString::fromStdString(std::string(argv[4]) + "/" + name))) {
                fail(name + " cannot be written");
            }
            std::printf("%s: %s\n", name.c_str(), sheetWords(job, sheet, isSide2, session, texts.get()).c_str());
        }
    }
    ToolboxTerminate();
    return 0;
}

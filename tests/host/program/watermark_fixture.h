// Jobs with a watermark, printed by the real program and drawn by Ghostscript.
#pragma once

#include "platform/foundation/CFString.h"
#include "tests/host/program/program_fixture.h"
#include "watermark/records/watermark_storage.h"

#include <QImage>

/// A page as Ghostscript drew it.
struct Page {
    int width = 0;
    int height = 0;
    std::string pixels;  // red, green, blue; the top row first

    const unsigned char* at(int x, int y) const {
        return reinterpret_cast<const unsigned char*>(pixels.data()) + 3 * (static_cast<std::size_t>(y) * width + x);
    }
};

inline Page readPage(const std::string& path) {
    const QImage image = QImage(QString::fromStdString(path)).convertToFormat(QImage::Format_RGB888);
    EXPECT_FALSE(image.isNull()) << path;
    Page page{image.width(), image.height(), {}};
    for (int y = 0; y < image.height(); ++y) {
        page.pixels.append(reinterpret_cast<const char*>(image.constScanLine(y)),
                           3 * static_cast<std::size_t>(page.width));
    }
    return page;
}

/// Programs for documents of one page of that size; several may follow one another.
inline constexpr const char* kPortrait = "<</PageSize[612 792]>>setpagedevice showpage\n";
inline constexpr const char* kLandscape = "<</PageSize[792 612]>>setpagedevice showpage\n";

class WatermarkJobs : public ProgramTest {
protected:
    WatermarkJobs() { setenv("XDG_DATA_HOME", folder.path().c_str(), 1); }
    ~WatermarkJobs() override { unsetenv("XDG_DATA_HOME"); }

    /// Keeps a watermark as the only one of the user's.
    void keep(const WatermarkRecord& record) const {
        saveWatermarkData(kWatermarkStore, &record);
        const auto names = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
        CFArrayAppendValue(names.get(), CreateWatermarkName(record).get());
        saveWatermarkList(kWatermarkStore, names.get());
    }

    /// The pages of a document, by a PostScript program that paints them.
    std::string document(const std::string& postScript) const {
        const std::string path = folder / "document.pdf";
        ghostscript({"-sDEVICE=pdfwrite", "-dAutoRotatePages=/None", "-o", path, add("document.ps", postScript)});
        return path;
    }

    /// Prints it with a script, whatever is left out; the pages of the job, with so many pixels a point.
    std::vector<Page> print(const std::string& text, const std::string& path, int pixelsAPoint = 1,
                            const Words& more = {}) {
        const std::string job = folder / "job.ps";
        Words arguments{"--ppd",     kZR420,
                        "--script",  add("script", text + "\nanswer other\nok"),
                        "--shots",   folder.path().string(),
                        "--job-out", job,
                        path};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const Run done = run(arguments, {"XDG_DATA_HOME=" + folder.path().string()});
        EXPECT_EQ(done.status, 0) << done.errors;
        errors = done.errors;
        // As fine as the screen of a watermark needs, and then averaged.
        constexpr int kFine = 288;
        ghostscript({"-sDEVICE=png16m", "-r" + std::to_string(kFine),
                     "-dDownScaleFactor=" + std::to_string(kFine / 72 / pixelsAPoint), "-o", folder / "page-%d.png",
                     job});
        std::vector<Page> pages;
        for (;;) {
            const auto page = folder.path() / ("page-" + std::to_string(pages.size() + 1) + ".png");
            if (!std::filesystem::exists(page)) {
                return pages;
            }
            pages.push_back(readPage(page));
            std::filesystem::remove(page);
        }
    }

    std::string errors;

private:
    void ghostscript(Words arguments) const {
        arguments.insert(arguments.begin(), {"-q", "-dBATCH", "-dNOPAUSE"});
        const Run done = start("/usr/bin/gs", arguments);
        EXPECT_EQ(done.status, 0);
        EXPECT_EQ(done.output + done.errors, "");
    }
};

/// Picks the watermark that keep() has stored.
inline const std::string kFirstMark = "panel Watermark\nrows TVRw:100 2\n";

// What the driver costs: the plan by the number of pages; the pages beside qpdf's; whole jobs beside the bare filters.
#include "bench/side_by_side.h"
#include "driver/plan/sheet_plan.h"

#include <cstdlib>
#include <fstream>
#include <string>

namespace {

constexpr int kRounds = 3;

void measurePlan() {
    for (const std::int64_t pages : {10, 1000, 1'000'000}) {
        JobInstructions job;
        job.sides = Sides::longEdge;
        job.frontCover = CoverInstruction{};
        const std::int64_t special = std::min<std::int64_t>(pages / 2, 10'000);
        for (std::int64_t i = 0; i < special; ++i) {
            const std::int64_t page = i * (pages / special) + 1;
            job.inserts.push_back({page, 1, {.color = "Blue"}});
            job.exceptions.push_back({.pages = {page, page}, .paper = {.color = "Yellow"}});
        }
        std::vector<double> times;
        std::size_t sheets = 0;
        for (int round = 0; round < 9; ++round) {
            times.push_back(bench::microseconds([&] { sheets = planSheets(job, pages).sheets.size(); }));
        }
        const double time = bench::medianOf(std::move(times));
        std::printf("plan of %7lld pages, %5lld inserts and exceptions: %zu sheets in %.1f us, %.1f ns a page\n",
                    static_cast<long long>(pages), static_cast<long long>(special), sheets, time,
                    1000 * time / static_cast<double>(pages));
    }
}

std::string quoted(const std::string& text) {
    return "'" + text + "'";
}

class Jobs {
public:
    Jobs(std::string program, std::string ppd, std::string place)
        : program_(std::move(program)), ppd_(std::move(ppd)), place_(std::move(place)) {}

    void measure(const char* title, const std::string& document, const std::string& settings,
                 const std::string& filterOptions) const {
        const std::string ticket = place_ + "/settings.plist";
        std::ofstream(ticket) << "<plist version=\"1.0\"><dict><key>PMPrintSettingsTicket</key><dict>" << settings
                              << "</dict></dict></plist>";
        const std::string ours = quoted(program_) + " --ppd " + quoted(ppd_) + " --print --ticket-in " +
                                 quoted(ticket) + " --job-out " + quoted(place_ + "/job.ps") + " " + quoted(document);
        const std::string filters = "/usr/lib/cups/filter/";
        const std::string arguments = " 1 user title 1 " + quoted(filterOptions) + " ";
        const std::string peer = "export PPD=" + quoted(ppd_) + " CONTENT_TYPE=application/pdf; " + filters +
                                 "pdftopdf" + arguments + quoted(document) + " 2>/dev/null | " + filters + "pdftops" +
                                 arguments + " 2>/dev/null >" + quoted(place_ + "/peer.ps");
        bench::compare(
            title, kRounds, "ours", [&] { run(ours); }, "bare filters", [&] { run(peer); });
    }

    static void run(const std::string& command) {
        if (std::system(command.c_str()) != 0) {
            std::fprintf(stderr, "failed: %s\n", command.c_str());
            std::exit(1);
        }
    }

private:
    std::string program_;
    std::string ppd_;
    std::string place_;
};

// In the print settings ticket.
constexpr const char* kSpecialPages = R"(
  <key>com.tavro.print.SpecialPages.FrontCover</key><dict><key>SidesImaged</key><integer>4</integer>
    <key>Stock</key><dict><key>Color</key><integer>2</integer></dict></dict>
  <key>com.tavro.print.SpecialPages.BackCover</key><dict><key>SidesImaged</key><integer>1</integer></dict>
  <key>com.tavro.print.SpecialPages.InsertList</key><array>
    <dict><key>StartPage</key><integer>100</integer><key>Quantity</key><integer>2</integer></dict>
    <dict><key>StartPage</key><integer>2000</integer><key>Quantity</key><integer>1</integer></dict></array>
  <key>com.tavro.print.SpecialPages.ExceptionList</key><array>
    <dict><key>StartPage</key><integer>300</integer><key>EndPage</key><integer>700</integer>
      <key>Stock</key><dict><key>Color</key><integer>3</integer></dict></dict></array>)";
constexpr const char* kWatermark =
    "<key>com.tavro.print.watermark.Watermark</key><string>Draft</string>"
    "<key>com.tavro.print.watermark.Option</key><integer>2</integer>";
constexpr const char* kBooklet = "<key>com.tavro.print.BookletLayout</key><true/>";

}  // namespace

int main(int argc, char** argv) {
    if (argc != 5) {
        std::fprintf(stderr, "usage: %s PROGRAM PPD DOCUMENT FOLDER\n", argv[0]);
        return 2;
    }
    measurePlan();
    const std::string document = argv[3];
    const Jobs jobs(argv[1], argv[2], argv[4]);
    jobs.measure("job as it is", document, "", "");
    jobs.measure("covers, inserts, exceptions", document, kSpecialPages, "");
    jobs.measure("watermark on each page", document, kWatermark, "");
    jobs.measure("booklet", document, kBooklet, "booklet=on");
    return 0;
}

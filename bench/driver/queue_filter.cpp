// What the filter of a queue costs: a plain job beside the server's own filters alone, and a booklet.
//
// usage: bench_queue_filter FILTER PPD FOLDER SETTINGS DOCUMENT...
#include "bench/side_by_side.h"

#include <cstdlib>
#include <string>

namespace {

constexpr int kRounds = 41;

void run(const std::string& command) {
    if (std::system(command.c_str()) != 0) {
        std::fprintf(stderr, "failed: %s\n", command.c_str());
        std::exit(EXIT_FAILURE);
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 6) {
        std::fputs("usage: bench_queue_filter FILTER PPD FOLDER SETTINGS DOCUMENT...\n", stderr);
        return EXIT_FAILURE;
    }
    const std::string filter = argv[1];
    const std::string folder = argv[3];
    setenv("PPD", argv[2], 1);
    setenv("CONTENT_TYPE", "application/pdf", 1);
    setenv("TMPDIR", folder.c_str(), 1);
    const std::string servers = "/usr/lib/cups/filter/";
    const std::string job = " 1 user title 1 ";
    for (int i = 5; i < argc; ++i) {
        const std::string document = " '" + std::string(argv[i]) + "'";
        const std::string end = " >'" + folder + "/job.ps' 2>/dev/null";
        const std::string plain = filter + job + "''" + document + end;
        const std::string peer =
            servers + "pdftopdf" + job + "''" + document + " 2>/dev/null | " + servers + "pdftops" + job + "''" + end;
        const std::string booklet = filter + job + "'tavro-settings=" + argv[4] + "'" + document + end;
        std::printf("%s\n", argv[i]);
        bench::compare(
            "  a plain job", kRounds, "ours", [&] { run(plain); }, "server's filters", [&] { run(peer); });
        bench::compare(
            "  a booklet", kRounds / 4, "ours", [&] { run(booklet); }, "server's, plain", [&] { run(peer); });
    }
    return EXIT_SUCCESS;
}

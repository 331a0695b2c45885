// Opening a printer's PPD through the compiled-PPD library against libcups alone, on the same files.
//
// usage: bench_ppd_open PPD...

#include "bench/side_by_side.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"
#include "platform/printing/CompiledPPD.h"
#include "platform/printing/PMPrinter.h"

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <cups/ppd.h>

#include <filesystem>

namespace {

constexpr int kRounds = 201;

/// Both libraries also mark the defaults, which every user of an opened PPD needs.
int openBoth(const char* path) {
    const auto text = CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, path, kCFStringEncodingUTF8));
    const auto url =
        CFRef<CFURLRef>::adopt(CFURLCreateWithFileSystemPath(nullptr, text.get(), kCFURLPOSIXPathStyle, false));
    PMPrinter printer = nullptr;
    PMTicketRef info = 0;
    if (PMPrinterCreateFromPPDFile(url.get(), &printer) != noErr ||
        PMTicketCreate(nullptr, kPDE_PMPrinterInfoKey, &info) != noErr ||
        PMPrinterWriteInfoTicket(printer, nullptr, info) != noErr) {
        std::fprintf(stderr, "%s: cannot be opened\n", path);
        return 1;
    }
    PMPrinterRelease(printer);  // or its PPD would be shared
    char title[64];
    std::snprintf(title, sizeof title, "open a PPD of %.0f KB",
                  static_cast<double>(std::filesystem::file_size(path)) / 1000);
    bench::compare(
        title, kRounds, "ours",
        [info] {
            PPDContext context = nullptr;
            ppdOpenCompiledPPDFromTicket(info, &context);
            ppdCloseCompiledPPDFromTicket(context);
        },
        "libcups",
        [path] {
            ppd_file_t* ppd = ppdOpenFile(path);
            ppdMarkDefaults(ppd);
            ppdClose(ppd);
        });
    PMTicketReleaseAndClear(&info);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    int status = argc > 1 ? 0 : 2;
    for (int i = 1; i < argc; ++i) {
        status |= openBoth(argv[i]);
    }
    return status;
}
#pragma GCC diagnostic pop

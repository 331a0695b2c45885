// A full Sync of all panels of the bundle, in either direction, as the dialog does it when it opens and when it
// commits.
//
// usage: bench_sync PPD PLUGIN HOST_BUNDLE

#include "bench/side_by_side.h"
#include "host/dialog_controls.h"
#include "host/plugin_host.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/Windows.h"

namespace {

constexpr int kRounds = 2001;

template <typename Work>
double median(Work work) {
    std::vector<double> times;
    for (int i = 0; i < kRounds; ++i) {
        times.push_back(bench::microseconds(work));
    }
    return bench::medianOf(times);
}

WindowRef openDialog(const char* hostBundle) {
    const auto path = CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, hostBundle, kCFStringEncodingUTF8));
    const auto url =
        CFRef<CFURLRef>::adopt(CFURLCreateWithFileSystemPath(nullptr, path.get(), kCFURLPOSIXPathStyle, true));
    const auto bundle = CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, url.get()));
    IBNibRef nib = nullptr;
    WindowRef window = nullptr;
    if (CreateNibReferenceWithCFBundle(bundle.get(), CFSTR("PrintDialog"), &nib) == noErr) {
        CreateWindowFromNib(nib, CFSTR("PrintDialog"), &window);
        DisposeNibReference(nib);
    }
    return window;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s PPD PLUGIN HOST_BUNDLE\n", argv[0]);
        return 2;
    }
    ToolboxInitialize(&argc, argv, true);
    auto printer = openPPD(argv[1]);
    auto plugin = PluginHost::load(argv[2]);
    const WindowRef window = openDialog(argv[3]);
    const ControlID placeID{kHostSignature, kMakersPlace};
    ControlRef place = nullptr;
    if (!printer || !plugin || GetControlByID(window, &placeID, &place) != noErr) {
        std::fprintf(stderr, "%s: the dialog cannot be opened\n", argv[0]);
        return 1;
    }
    PrintSession session(*printer, {}, nullptr, "bench");
    PluginHost& host = **plugin;
    if (host.start(place, session.get()) != PluginHost::Start::started) {
        std::fprintf(stderr, "%s: the plug-in refuses the printer\n", argv[1]);
        return 1;
    }
    const ControlID bannerID{FourCharCode("Tshl"), 632};
    ControlRef banner = nullptr;
    GetControlByID(window, &bannerID, &banner);
    const SInt32 before = GetControl32BitValue(banner);
    session.setChoice(CFSTR("JCLBanner"), CFSTR("True"));
    host.copyTicketsToControls();
    if (GetControl32BitValue(banner) == before) {
        std::fprintf(stderr, "%s: a changed ticket does not reach its control\n", argv[0]);
        return 1;
    }
    std::printf("Sync of all panels, %d rounds:  tickets to controls %.1f us   controls to tickets %.1f us\n", kRounds,
                median([&] { host.copyTicketsToControls(); }), median([&] { host.copyControlsToTickets(); }));
    host.stop(noErr);
    return 0;
}

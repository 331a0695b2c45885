// A full Sync of all panels of the bundle, in either direction, as the dialog does it when it opens, when the user
// pauses and when it commits; and what the dialog says about the settings at each pause. With the printer's defaults,
// and with a fax to a thousand people and ten thousand inserts.
//
// usage: bench_sync PPD PLUGIN HOST_BUNDLE

#include "bench/side_by_side.h"
#include "host/dialog/dialog_controls.h"
#include "host/dialog/plugin_host.h"
#include "host/settings/left_out.h"
#include "host/settings/summary.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFNumber.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/Windows.h"

namespace {

constexpr int kRecipients = 1000;
constexpr int kInserts = 10000;

template <typename Work>
double median(int rounds, Work work) {
    std::vector<double> times;
    times.reserve(static_cast<std::size_t>(rounds));
    for (int i = 0; i < rounds; ++i) {
        times.push_back(bench::microseconds(work));
    }
    return bench::medianOf(times);
}

CFRef<CFBundleRef> openBundle(const char* path) {
    return CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, makeFileURL(path, true).get()));
}

WindowRef openDialog(CFBundleRef bundle) {
    IBNibRef nib = nullptr;
    WindowRef window = nullptr;
    if (CreateNibReferenceWithCFBundle(bundle, CFSTR("PrintDialog"), &nib) == noErr) {
        CreateWindowFromNib(nib, CFSTR("PrintDialog"), &window);
        DisposeNibReference(nib);
    }
    return window;
}

CFRef<CFMutableDictionaryRef> makeDictionary() {
    return CFRef<CFMutableDictionaryRef>::adopt(
        CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
}

void setNumber(CFMutableDictionaryRef dictionary, CFStringRef key, SInt32 value) {
    CFDictionarySetValue(dictionary, key,
                         CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, kCFNumberSInt32Type, &value)).get());
}

template <typename Fill>
CFRef<CFMutableArrayRef> makeList(int count, Fill fill) {
    auto list = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
    for (int i = 1; i <= count; ++i) {
        const auto element = makeDictionary();
        fill(element.get(), i);
        CFArrayAppendValue(list.get(), element.get());
    }
    return list;
}

JobSettings makeManySettings() {
    const auto items = makeDictionary();
    const auto job = makeDictionary();
    constexpr SInt32 kFax = 5;
    setNumber(job.get(), CFSTR("JobType"), kFax);
    CFDictionarySetValue(items.get(), CFSTR("com.tavro.print.JobType"), job.get());
    const auto recipients = makeList(kRecipients, [](CFMutableDictionaryRef element, int i) {
        CFDictionarySetValue(element, CFSTR("FaxNumber"), makeString(std::to_string(i)).get());
    });
    CFDictionarySetValue(items.get(), CFSTR("com.tavro.print.FaxRecipientList"), recipients.get());
    const auto inserts = makeList(kInserts, [](CFMutableDictionaryRef element, int i) {
        setNumber(element, CFSTR("StartPage"), i);
        setNumber(element, CFSTR("Quantity"), 1);
    });
    CFDictionarySetValue(items.get(), CFSTR("com.tavro.print.SpecialPages.InsertList"), inserts.get());
    return {CFRef<CFDictionaryRef>::retain(items.get()), {}, {}};
}

struct Dialog {
    WindowRef window;
    ControlRef place;
    CFBundleRef texts;
};

/// Whether a change of the ticket reaches its control.
bool isConnected(const Dialog& dialog, PluginHost& host, PrintSession& session) {
    const ControlID bannerID{FourCharCode("Tshl"), 632};
    ControlRef banner = nullptr;
    GetControlByID(dialog.window, &bannerID, &banner);
    const SInt32 before = GetControl32BitValue(banner);
    session.setChoice(CFSTR("JCLBanner"), CFSTR("True"));
    host.copyTicketsToControls();
    return GetControl32BitValue(banner) != before;
}

/// False when the plug-in does not work on the settings.
bool measure(const char* title, int rounds, const Dialog& dialog, PluginHost& host, const Printer& printer,
             const JobSettings& settings) {
    PrintSession session(printer, settings, nullptr, "bench");
    const bool works =
        host.start(dialog.place, session.get()) == PluginHost::Start::started && isConnected(dialog, host, session);
    if (works) {
        std::printf(
            "%s, %d rounds:\n  tickets to controls %.1f us   controls to tickets %.1f us   summary %.1f us   "
            "left out %.1f us\n",
            title, rounds, median(rounds, [&] { host.copyTicketsToControls(); }),
            median(rounds, [&] { host.copyControlsToTickets(); }),
            median(rounds, [&] { summarize(session, 10, dialog.texts); }),
            median(rounds, [&] { tellLeftOut(session, 10, JobWay::queue, dialog.texts); }));
    }
    host.stop(noErr);
    return works;
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
    const auto bundle = openBundle(argv[3]);
    Dialog dialog{openDialog(bundle.get()), nullptr, bundle.get()};
    const ControlID placeID{kHostSignature, kMakersPlace};
    if (!printer || !plugin || GetControlByID(dialog.window, &placeID, &dialog.place) != noErr) {
        std::fprintf(stderr, "%s: the dialog cannot be opened\n", argv[0]);
        return 1;
    }
    constexpr int kRounds = 2001;
    constexpr int kFewRounds = 51;
    if (!measure("The printer's defaults", kRounds, dialog, **plugin, *printer, {}) ||
        !measure("A fax to 1,000 people, 10,000 inserts", kFewRounds, dialog, **plugin, *printer, makeManySettings())) {
        std::fprintf(stderr, "%s: the plug-in does not work on its settings\n", argv[1]);
        return 1;
    }
    return 0;
}

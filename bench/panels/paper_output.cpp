// The Paper and Output panel: opening it in a window, and both directions of its Sync with a long list of fax
// recipients, with the share of that list.
//
// usage: bench_paper_output PPD PLUGIN HOST_BUNDLE

#include "bench/side_by_side.h"
#include "core/features/installable_options.h"
#include "core/features/panel_interface.h"
#include "host/dialog/dialog_controls.h"
#include "jobtypes/records/fax_options.h"
#include "jobtypes/records/fax_recipient_list.h"
#include "model/settings/plugin_state.h"
#include "model/settings/ppd_ui_dictionary.h"
#include "model/settings/ticket_access.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFURL.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/Windows.h"

#include <cstdlib>
#include <string>

extern "C" OSStatus GetPaperOutputPanelInterface(PlugInIntf** interface);

namespace {

constexpr int kRounds = 501;
constexpr int kRecipients = 1000;

CFRef<CFURLRef> url(const char* path, bool isFolder) {
    const auto text = CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, path, kCFStringEncodingUTF8));
    return CFRef<CFURLRef>::adopt(CFURLCreateWithFileSystemPath(nullptr, text.get(), kCFURLPOSIXPathStyle, isFolder));
}

PMTicketRef addTicket(PMPrintSession session, CFStringRef kind) {
    PMTicketRef ticket = 0;
    PMTicketCreate(nullptr, kind, &ticket);
    const auto number = CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, kCFNumberSInt32Type, &ticket));
    PMSessionSetDataInSession(session, kind, number.get());
    return ticket;
}

template <typename Work>
double median(Work work) {
    std::vector<double> times;
    for (int i = 0; i < kRounds; ++i) {
        times.push_back(bench::microseconds(work));
    }
    return bench::medianOf(times);
}

void addRecipients(PMTicketRef ticket) {
    FaxRecipientList list;
    for (int i = 0; i < kRecipients; ++i) {
        const auto name = CFRef<CFStringRef>::adopt(
            CFStringCreateWithCString(nullptr, ("Recipient " + std::to_string(i)).c_str(), kCFStringEncodingUTF8));
        const auto number = CFRef<CFStringRef>::adopt(
            CFStringCreateWithCString(nullptr, std::to_string(5550000 + i).c_str(), kCFStringEncodingUTF8));
        list.append(FaxRecipientOwner(new FaxRecipient(name.get(), nullptr, number.get())).get());
    }
    PMTicketSetCFArray(ticket, kTicketCreator, kFaxRecipientListTicketKey, list.toTicket().get(), kPMUnlocked);
}

/// What the two directions do with the recipients.
void copyRecipients(PMTicketRef ticket) {
    CFArrayRef stored = nullptr;
    PMTicketGetCFArray(ticket, kPMTopLevel, kPMTopLevel, kFaxRecipientListTicketKey, &stored);
    const FaxRecipientList list(stored);
    PMTicketSetCFArray(ticket, kTicketCreator, kFaxRecipientListTicketKey, list.toTicket().get(), kPMUnlocked);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s PPD PLUGIN HOST_BUNDLE\n", argv[0]);
        return 2;
    }
    int count = 1;
    ToolboxInitialize(&count, argv, true);
    const auto plugin = CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, url(argv[2], true).get()));
    const auto host = CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, url(argv[3], true).get()));
    SetPDEBundle(plugin.get());
    PMPrinter printer = nullptr;
    PMPrintSession session = nullptr;
    PMCreateSession(&session);
    const PMTicketRef settings = addTicket(session, kPDE_PMPrintSettingsKey);
    const PMTicketRef info = addTicket(session, kPDE_PMPrinterInfoKey);
    PPDContext ppd = nullptr;
    IBNibRef nib = nullptr;
    WindowRef window = nullptr;
    ControlRef place = nullptr;
    const ControlID placeID{kHostSignature, kMakersPlace};
    if (PMPrinterCreateFromPPDFile(url(argv[1], false).get(), &printer) != noErr ||
        PMPrinterWriteInfoTicket(printer, nullptr, info) != noErr ||
        ppdOpenCompiledPPDFromTicket(info, &ppd) != noErr || PPDCreateGlobalUIDictionary(ppd) != noErr ||
        CreateNibReferenceWithCFBundle(host.get(), CFSTR("PrintDialog"), &nib) != noErr ||
        CreateWindowFromNib(nib, CFSTR("PrintDialog"), &window) != noErr ||
        GetControlByID(window, &placeID, &place) != noErr) {
        std::fprintf(stderr, "%s, %s or %s cannot be used\n", argv[1], argv[2], argv[3]);
        return 1;
    }
    LoadInstallableOptions(info, ppd, InstalledFeatures);
    ShowWindow(window);

    PlugInIntf* interface = nullptr;
    GetPaperOutputPanelInterface(&interface);
    const PDEOperations panel = interface->table->operations;
    std::free(interface->table);
    std::free(interface);
    std::vector<double> opening;
    PMPDEContext context = nullptr;
    for (int i = 0; i < 21; ++i) {
        OSType creator = 0;
        CFStringRef kind = nullptr;
        CFStringRef title = nullptr;
        UInt32 width = 0;
        UInt32 height = 0;
        if (context != nullptr) {
            panel.Terminate(context, noErr);
        }
        panel.Prologue(&context, &creator, &kind, &title, &width, &height);
        panel.Initialize(context, nullptr, nullptr, place, session);
        opening.push_back(bench::microseconds([&] { panel.Open(context); }));
    }
    std::printf("opening: %.1f ms (the first time %.1f ms)\n", bench::medianOf(opening) / 1000, opening[0] / 1000);

    const auto both = [&] {
        panel.Sync(context, session, true);
        panel.Sync(context, session, false);
    };
    std::printf("both directions of Sync without recipients: %.1f us\n", median(both));
    addRecipients(settings);
    std::printf("with %d recipients: %.1f us; copying them, when they have changed, takes %.1f us more   (%d rounds)\n",
                kRecipients, median(both), median([&] { copyRecipients(settings); }), kRounds);
    panel.Terminate(context, noErr);
    DisposeWindow(window);
    return 0;
}

#include "core/printer_features.h"

#include "core/feature_database.h"
#include "core/installable_options.h"
#include "core/panel_interface.h"
#include "model/ppd_option_maps.h"
#include "model/ppd_ui_dictionary.h"
#include "model/ticket_access.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <type_traits>

namespace {

struct CloseCompiledPPD {
    void operator()(PPDContext context) const { ppdCloseCompiledPPDFromTicket(context); }
};
using OpenPPD = std::unique_ptr<std::remove_pointer_t<PPDContext>, CloseCompiledPPD>;

bool IsTavroPrinter(PPDContext context) {
    static constexpr PPDKeyword kManufacturer = "Manufacturer";
    char maker[256];
    return ppdGetInvocationString(context, kManufacturer, maker, sizeof maker) == noErr &&
           std::strcmp(maker, "Tavro") == 0;
}

}  // namespace

OSStatus LoadPrinterFeatures(PMPrintSession session) {
    TDPInitialize();
    PMTicketRef printerInfo = 0;
    if (GetTicketFromSession(session, kPDE_PMPrinterInfoKey, &printerInfo) != noErr) {
        std::fputs("Initialize()::GetTicketFromSession() failed.\n", stderr);
        return kPMInvalidPDEContext;
    }
    PPDContext context = nullptr;
    if (ppdOpenCompiledPPDFromTicket(printerInfo, &context) != noErr) {
        std::fputs("Initialize()::ppdOpenCompiledPPDFromTicket() failed.\n", stderr);
        return kPMInvalidPDEContext;
    }
    const OpenPPD ppd(context);
    PPDCreateGlobalUIDictionary(context);
    LoadInstallableOptions(printerInfo, context, InstalledFeatures);
    if (!IsTavroPrinter(context)) {
        std::fputs("Initialize() not a Tavro PDE.\n", stderr);
        return kPMInvalidPDEContext;
    }
    return noErr;
}

void UnloadPrinterFeatures() {
    UnloadInstallableOptions();
    PPDReleaseGlobalUIDictionary();
    TDPFinalize();
}

#include "core/features/printer_features.h"

#include "core/features/feature_database.h"
#include "core/features/installable_options.h"
#include "core/features/panel_interface.h"
#include "core/features/printer_model.h"
#include "model/settings/plugin_state.h"
#include "model/settings/ppd_option_maps.h"
#include "model/settings/ppd_ui_dictionary.h"
#include "model/settings/ticket_access.h"

#include <array>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

namespace {

struct CloseCompiledPPD {
    void operator()(PPDContext context) const { ppdCloseCompiledPPDFromTicket(context); }
};
using OpenPPD = std::unique_ptr<std::remove_pointer_t<PPDContext>, CloseCompiledPPD>;

constexpr std::string_view kMaker = "Tavro";

/// A quoted value of the PPD, such as its model's name; empty when it has none.
std::string InvocationString(PPDContext context, ConstPPDString mainKeyword) {
    std::array<char, 256> value{};
    return ppdGetInvocationString(context, mainKeyword, value.data(), value.size()) == noErr ? value.data() : "";
}

bool IsTavroPrinter(PPDContext context) {
    static constexpr PPDKeyword kManufacturer = "Manufacturer";
    return InvocationString(context, kManufacturer) == kMaker;
}

}  // namespace

std::string ModelOfPrinter(PPDContext context) {
    static constexpr PPDKeyword kModelName = "ModelName";
    std::string name = InvocationString(context, kModelName);
    if (name.starts_with(kMaker) && name.size() > kMaker.size() && name[kMaker.size()] == ' ') {
        name.erase(0, kMaker.size() + 1);
    }
    return name;
}

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
    const bool isOurs = IsTavroPrinter(context);
    LoadInstallableOptions(printerInfo, context,
                           isOurs ? LoadPrinterModel(ModelOfPrinter(context)) : InstalledFeatures);
    SetShowsStockDetails(HasModelFeature(CFSTR("StockLibrary")));
    if (!isOurs) {
        std::fputs("Initialize() not a Tavro PDE.\n", stderr);
        return kPMInvalidPDEContext;
    }
    return noErr;
}

void UnloadPrinterFeatures() {
    UnloadInstallableOptions();
    SetShowsStockDetails(false);
    UnloadPrinterModel();
    PPDReleaseGlobalUIDictionary();
    TDPFinalize();
}

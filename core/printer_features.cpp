#include "core/printer_features.h"

#include "core/feature_database.h"
#include "core/installable_options.h"
#include "core/model_features.h"
#include "core/panel_interface.h"
#include "model/ppd_option_maps.h"
#include "model/ppd_ui_dictionary.h"
#include "model/ticket_access.h"

#include <array>
#include <cstdio>
#include <memory>
#include <optional>
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

/// The model's name without the maker's.
std::string ModelOf(PPDContext context) {
    static constexpr PPDKeyword kModelName = "ModelName";
    std::string name = InvocationString(context, kModelName);
    if (name.starts_with(kMaker) && name.size() > kMaker.size() && name[kMaker.size()] == ' ') {
        name.erase(0, kMaker.size() + 1);
    }
    return name;
}

std::optional<ModelFeatures> gModelFeatures;

/// The features of the printer's model. The two office models have theirs in code, and so has, as the nearest, a model
/// that the database does not know.
const InstalledFeature* TableOf(PPDContext context) {
    const std::string model = ModelOf(context);
    if (model == "ZR410" || model == "ZR420") {
        return InstalledFeatures;
    }
    gModelFeatures.emplace(CFStringMakeConstant(model.c_str()));
    return gModelFeatures->isKnown() ? gModelFeatures->table() : InstalledFeatures;
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
    LoadInstallableOptions(printerInfo, context, TableOf(context));
    if (!IsTavroPrinter(context)) {
        std::fputs("Initialize() not a Tavro PDE.\n", stderr);
        return kPMInvalidPDEContext;
    }
    return noErr;
}

void UnloadPrinterFeatures() {
    UnloadInstallableOptions();
    gModelFeatures.reset();
    PPDReleaseGlobalUIDictionary();
    TDPFinalize();
}

bool HasModelFeature(CFStringRef feature) {
    return gModelFeatures && gModelFeatures->has(feature);
}

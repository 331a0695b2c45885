// What a printer puts into tickets.
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFString.h"
#include "platform/printing/PMPrinter.h"
#include "platform/printing/last_error.h"
#include "platform/printing/printer_info.h"
#include "platform/printing/printer_record.h"
#include "platform/printing/text.h"

#include <algorithm>

namespace {

#define kPrinterClient CFSTR("com.tavro.print.platform")

/// Whether the option takes the value: one of its choices, or "Custom.…" where it has a custom one.
bool accepts(const PPDOption& option, std::string_view value) {
    return option.findChoice(value) || (value.starts_with("Custom.") && option.findChoice("Custom"));
}

/// What is set when nobody chooses: the queue's own, else what the PPD marks; empty when it marks nothing.
std::string defaultOf(const OpaquePMPrinter& printer, const PPDOption& option) {
    for (const auto& [name, value] : printer.queueDefaults) {
        if (name == option.keyword && accepts(option, value)) {
            return value;
        }
    }
    const auto marked = std::ranges::find(option.choices, true, &PPDChoice::marked);
    return marked == option.choices.end() ? std::string() : marked->keyword;
}

}  // namespace

OSStatus PMPrinterWriteDefaultSettings(PMPrinter printer, PMTicketRef printSettings) {
    clearLastError();
    if (printer == nullptr) {
        return failWith(paramErr, "settings", "no printer to take them from");
    }
    CFMutableDictionaryRef pairs = nullptr;
    if (const OSStatus status = PMTicketGetPPDDict(printSettings, kPMTopLevel, &pairs); status != noErr) {
        return failWith(status, utf8Text(printer->name.get()), "no ticket for its settings");
    }
    for (const PPDOption& option : printer->ppd.options) {
        const std::string value = option.installable ? std::string() : defaultOf(*printer, option);
        if (!value.empty()) {
            CFDictionaryAddValue(pairs, makeString(option.keyword).get(), makeString(value).get());
        }
    }
    return noErr;
}

OSStatus PMPrinterWriteInfoTicket(PMPrinter printer, CFDictionaryRef installedOptions, PMTicketRef printerInfo) {
    clearLastError();
    if (printer == nullptr) {
        return failWith(paramErr, "printer info", "no printer to describe");
    }
    OSStatus status = PMTicketSetCFString(printerInfo, kPrinterClient, kPMPrinterDescriptionPathKey,
                                          makeString(printer->ppdPath).get(), kPMUnlocked);
    if (status == noErr && installedOptions != nullptr) {
        status =
            PMTicketSetCFDictionary(printerInfo, kPrinterClient, kPMInstalledOptionsKey, installedOptions, kPMUnlocked);
    } else if (status == noErr) {
        PMTicketReleaseItem(printerInfo, kPMTopLevel, kPMInstalledOptionsKey);  // of a printer described before
    }
    return status == noErr ? noErr : failWith(status, utf8Text(printer->name.get()), "no ticket for its description");
}

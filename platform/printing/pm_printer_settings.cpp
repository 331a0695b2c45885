// What a printer puts into tickets.
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFNumber.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"
#include "platform/foundation/text.h"
#include "platform/printing/PMPrinter.h"
#include "platform/printing/last_error.h"
#include "platform/printing/page_options.h"
#include "platform/printing/printer_info.h"
#include "platform/printing/printer_record.h"

#include <algorithm>

namespace {

#define kPrinterClient CFSTR("com.tavro.print.platform")

/// What is set when nobody chooses: the queue's own, else what the PPD marks; empty when it marks nothing.
std::string defaultOf(const OpaquePMPrinter& printer, const PPDOption& option) {
    if (const std::string* const choice = findOption(printer.start.choices, option.keyword)) {
        return *choice;
    }
    const auto marked = std::ranges::find(option.choices, true, &PPDChoice::marked);
    return marked == option.choices.end() ? std::string() : marked->keyword;
}

void addNumber(PMTicketRef ticket, CFStringRef key, std::optional<SInt32> value) {
    CFNumberRef present = nullptr;
    if (value && PMTicketGetCFNumber(ticket, kPMTopLevel, kPMTopLevel, key, &present) == kPMKeyNotFound) {
        const auto number = CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, kCFNumberSInt32Type, &*value));
        PMTicketSetCFNumber(ticket, kPrinterClient, key, number.get(), kPMUnlocked);
    }
}

void addPageOptions(PMTicketRef printSettings, const OptionList& options) {
    const auto saved = CFRef<CFMutableDictionaryRef>::adopt(
        CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    for (const auto& [name, value] : options) {
        if (isPageOption(name)) {
            CFDictionarySetValue(saved.get(), makeString(name).get(), makeString(value).get());
        }
    }
    CFDictionaryRef present = nullptr;
    if (CFDictionaryGetCount(saved.get()) > 0 &&
        PMTicketGetCFDictionary(printSettings, kPMTopLevel, kPMTopLevel, kPMPageOptionsKey, &present) ==
            kPMKeyNotFound) {
        PMTicketSetCFDictionary(printSettings, kPrinterClient, kPMPageOptionsKey, saved.get(), kPMUnlocked);
    }
}

/// What came with an option, and anybody may have written: a secret, or an option of the printer, is none of it.
void addSavedSettings(CFDictionaryRef saved, PMTicketRef printSettings) {
    const void* const items = saved == nullptr ? nullptr : CFDictionaryGetValue(saved, kPDE_PMPrintSettingsKey);
    if (items == nullptr || CFGetTypeID(items) != CFDictionaryGetTypeID()) {
        return;
    }
    const auto taken = CFRef<CFMutableDictionaryRef>::adopt(
        CFDictionaryCreateMutableCopy(nullptr, 0, static_cast<CFDictionaryRef>(items)));
    CFDictionaryRemoveValue(taken.get(), CFSTR("PPDDict"));
    CFDictionaryRemoveValue(taken.get(), kPMJobPasscodeKey);
    PMTicketSetItems(printSettings, taken.get());
}

bool isEmpty(PMTicketRef ticket) {
    const auto items = CFRef<CFDictionaryRef>::adopt(PMTicketCopyItems(ticket));
    return CFDictionaryGetCount(items.get()) == 0;
}

}  // namespace

OSStatus PMPrinterWriteDefaultSettings(PMPrinter printer, PMTicketRef printSettings, PMTicketRef pageFormat) {
    clearLastError();
    if (printer == nullptr) {
        return failWith(paramErr, "settings", "no printer to take them from");
    }
    const bool hadSettings = !isEmpty(printSettings);
    if (!hadSettings) {
        addSavedSettings(printer->start.settings.get(), printSettings);
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
    addNumber(printSettings, kPMCopiesKey, printer->start.copies);
    if (!hadSettings && !printer->start.pageRange.empty()) {  // settings without a range ask for all pages
        PMTicketSetCFString(printSettings, kPrinterClient, kPMPageRangeKey, makeString(printer->start.pageRange).get(),
                            kPMUnlocked);
    }
    addPageOptions(printSettings, printer->start.others);
    addNumber(pageFormat, kPMOrientationKey, printer->start.orientation);
    return noErr;
}

CFDictionaryRef PMPrinterGetSavedSettings(PMPrinter printer) {
    return printer == nullptr ? nullptr : printer->start.settings.get();
}

OSStatus PMPrinterWriteInfoTicket(PMPrinter printer, CFDictionaryRef installedOptions, PMTicketRef printerInfo) {
    clearLastError();
    if (printer == nullptr) {
        return failWith(paramErr, "printer info", "no printer to describe");
    }
    const auto path = makeString(printer->ppdPath);
    const bool isLossless = utf8Text(path.get()) == printer->ppdPath;
    OSStatus status = PMTicketSetCFString(printerInfo, kPrinterClient, kPMPrinterDescriptionPathKey,
                                          isLossless ? path.get() : CFURLGetString(printer->ppdURL.get()), kPMUnlocked);
    if (status == noErr && installedOptions != nullptr) {
        status =
            PMTicketSetCFDictionary(printerInfo, kPrinterClient, kPMInstalledOptionsKey, installedOptions, kPMUnlocked);
    } else if (status == noErr) {
        PMTicketReleaseItem(printerInfo, kPMTopLevel, kPMInstalledOptionsKey);  // of a printer described before
    }
    return status == noErr ? noErr : failWith(status, utf8Text(printer->name.get()), "no ticket for its description");
}

// Conflicts between the settings of tickets.
#include "platform/printing/PMPrinter.h"

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFNumber.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/text.h"
#include "platform/printing/last_error.h"
#include "platform/printing/ppd_conflicts.h"
#include "platform/printing/printer_info.h"
#include "platform/printing/printer_record.h"

#include <algorithm>
#include <set>

namespace {

std::string optionIn(CFDictionaryRef pairs, const std::string& keyword) {
    const CFTypeRef value = pairs == nullptr ? nullptr : CFDictionaryGetValue(pairs, makeString(keyword).get());
    return CFGetTypeID(value) == CFStringGetTypeID() ? utf8Text(static_cast<CFStringRef>(value)) : std::string();
}

/// What is installed: the PPD's marked defaults, and on top of them what the ticket says.
std::string installedOption(const PPDOption& option, CFDictionaryRef installed) {
    std::string chosen = optionIn(installed, option.keyword);
    if (option.findChoice(chosen)) {
        return chosen;
    }
    const auto marked = std::ranges::find(option.choices, true, &PPDChoice::marked);
    return marked == option.choices.end() ? std::string() : marked->keyword;
}

OSStatus readSettings(PMPrinter printer, PMTicketRef printSettings, PMTicketRef printerInfo, PPDSettings* settings) {
    CFMutableDictionaryRef pairs = nullptr;
    if (const OSStatus status = PMTicketGetPPDDict(printSettings, kPMTopLevel, &pairs); status != noErr) {
        return failWith(status, utf8Text(printer->name.get()), "no ticket with its settings");
    }
    CFDictionaryRef installed = nullptr;
    PMTicketGetCFDictionary(printerInfo, kPMTopLevel, kPMTopLevel, kPMInstalledOptionsKey, &installed);
    const auto count = static_cast<std::size_t>(CFDictionaryGetCount(pairs));
    std::vector<const void*> keys(count);
    CFDictionaryGetKeysAndValues(pairs, keys.data(), nullptr);
    for (const void* const key : keys) {
        const std::string keyword =
            CFGetTypeID(key) == CFStringGetTypeID() ? utf8Text(static_cast<CFStringRef>(key)) : std::string();
        const PPDOption* const option = printer->ppd.findOption(keyword);
        if (option != nullptr && !option->installable) {
            settings->emplace(option->keyword, optionIn(pairs, keyword));
        }
    }
    for (const PPDOption& option : printer->ppd.options) {
        if (option.installable) {
            settings->emplace(option.keyword, installedOption(option, installed));
        }
    }
    std::erase_if(*settings, [](const auto& setting) { return setting.second.empty(); });  // chosen by nobody
    CFStringRef passcode = nullptr;
    if (PMTicketGetCFString(printSettings, kPMTopLevel, kPMTopLevel, kPMJobPasscodeKey, &passcode) == noErr) {
        settings->insert_or_assign(printer->ppd.passcodeKeyword, "Custom");
    }
    return noErr;
}

CFRef<CFDictionaryRef> makeSide(const OpaquePMPrinter& printer, const std::string& keyword,
                                const PPDSettings& settings) {
    const PPDOption* const option = printer.ppd.findOption(keyword);
    const bool isInstalled = option != nullptr && option->installable;
    auto side = CFRef<CFMutableDictionaryRef>::adopt(
        CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    CFDictionarySetValue(side.get(), kPMSettingKeywordKey, makeString(keyword).get());
    CFDictionarySetValue(side.get(), kPMSettingOptionKey, makeString(settings.at(keyword)).get());
    CFDictionarySetValue(side.get(), kPMSettingIsInstalledKey, isInstalled ? kCFBooleanTrue : kCFBooleanFalse);
    bool isNothing = false;
    if (option != nullptr) {
        const auto choice = option->findChoice(settings.at(keyword));
        isNothing = choice && option->choices[*choice].isNothing;
    }
    CFDictionarySetValue(side.get(), kPMSettingIsNothingKey, isNothing ? kCFBooleanTrue : kCFBooleanFalse);
    return CFRef<CFDictionaryRef>::adopt(side.leak());
}

std::set<std::string> keywordsIn(CFArrayRef strings) {
    std::set<std::string> keywords;
    for (CFIndex i = 0; i < CFArrayGetCount(strings); ++i) {
        keywords.insert(utf8Text(static_cast<CFStringRef>(CFArrayGetValueAtIndex(strings, i))));
    }
    return keywords;
}

}  // namespace

OSStatus PMPrinterCopyConflicts(PMPrinter printer, PMTicketRef printSettings, PMTicketRef printerInfo,
                                CFArrayRef* conflicts) {
    clearLastError();
    if (printer == nullptr || conflicts == nullptr) {
        return failWith(paramErr, "conflicts", "no printer, or no place for them");
    }
    PPDSettings settings;
    if (const OSStatus status = readSettings(printer, printSettings, printerInfo, &settings); status != noErr) {
        return status;
    }
    auto found = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
    for (const PPDConflict& conflict : findConflicts(printer->ppd, settings)) {
        const auto sides = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
        for (const std::string& keyword : conflict) {
            CFArrayAppendValue(sides.get(), makeSide(*printer, keyword, settings).get());
        }
        CFArrayAppendValue(found.get(), sides.get());
    }
    *conflicts = found.leak();
    return noErr;
}

OSStatus PMPrinterCopyRemedy(PMPrinter printer, PMTicketRef printSettings, PMTicketRef printerInfo, CFArrayRef keep,
                             CFDictionaryRef* changes) {
    clearLastError();
    if (printer == nullptr || changes == nullptr) {
        return failWith(paramErr, "remedy", "no printer, or no place for it");
    }
    PPDSettings settings;
    if (const OSStatus status = readSettings(printer, printSettings, printerInfo, &settings); status != noErr) {
        return status;
    }
    auto made = CFRef<CFMutableDictionaryRef>::adopt(
        CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    const auto remedy = resolveConflicts(printer->ppd, settings, keywordsIn(keep));
    for (const auto& [keyword, option] : remedy.value_or(PPDSettings())) {
        CFDictionarySetValue(made.get(), makeString(keyword).get(), makeString(option).get());
    }
    *changes = made.leak();
    return noErr;
}

OSStatus PMPrinterCopyOptionWithoutConflict(PMPrinter printer, PMTicketRef printSettings, PMTicketRef printerInfo,
                                            CFStringRef mainKeyword, CFStringRef* option) {
    clearLastError();
    if (printer == nullptr || mainKeyword == nullptr || option == nullptr) {
        return failWith(paramErr, "remedy", "no printer, no main keyword, or no place for the option");
    }
    PPDSettings settings;
    if (const OSStatus status = readSettings(printer, printSettings, printerInfo, &settings); status != noErr) {
        return status;
    }
    const auto found = choiceWithoutConflict(printer->ppd, settings, utf8Text(mainKeyword));
    *option = found ? makeString(*found).leak() : nullptr;
    return noErr;
}

#include "driver/job/printer_abilities.h"

#include "platform/printing/text.h"

bool hasOption(PMPrinter printer, const std::string& mainKeyword, const std::string& option) {
    CFStringRef title = nullptr;
    CFStringRef optionTitle = nullptr;
    const OSStatus status = PMPrinterCopySettingTitles(printer, makeString(mainKeyword).get(), makeString(option).get(),
                                                       &title, &optionTitle);
    if (status != noErr) {
        return false;
    }
    CFRelease(title);
    CFRelease(optionTitle);
    return true;
}

PrinterAbilities abilitiesOf(PMPrinter printer) {
    return {PMPrinterReadsPostScript(printer) != 0, hasOption(printer, kMirrorKeyword, "True"),
            hasOption(printer, kRotateKeyword, "True"), hasOption(printer, kNegativeKeyword, "True")};
}

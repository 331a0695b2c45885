#include "driver/job/printer_abilities.h"

#include "model/finishing.h"
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

bool isInstalled(PMPrinter printer, PMTicketRef printerInfo, const std::string& mainKeyword,
                 const std::string& option) {
    JobTicket alone;
    alone.choose(mainKeyword, option);
    CFArrayRef conflicts = nullptr;
    return hasOption(printer, mainKeyword, option) &&
           PMPrinterCopyConflicts(printer, alone.get(), printerInfo, &conflicts) == noErr &&
           CFArrayGetCount(CFRef<CFArrayRef>::adopt(conflicts).get()) == 0;
}

PaperShape shapeOf(PMPrinter printer, const Paper& paper) {
    PMPaper found{};
    if (PMPrinterGetPaper(printer, makeString(paper.size).get(), &found) != noErr) {
        return {kUsualPage, 0, 0, kUsualPage.width, kUsualPage.height};
    }
    return {{found.width, found.height}, found.left, found.bottom, found.right, found.top};
}

PrinterAbilities abilitiesOf(PMPrinter printer) {
    return {PMPrinterReadsPostScript(printer) != 0, hasOption(printer, kMirrorKeyword, "True"),
            hasOption(printer, kRotateKeyword, "True"), hasOption(printer, kNegativeKeyword, "True"),
            hasOption(printer, kFinishingMainKeywords.front(), kNoFinishingOption)};
}

#include "platform/foundation/message.h"
#include "platform/printing/PMPrinter.h"

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"
#include "platform/foundation/text.h"
#include "platform/printing/cups_server.h"
#include "platform/printing/custom_size.h"
#include "platform/printing/last_error.h"
#include "platform/printing/printer_info.h"
#include "platform/printing/printer_record.h"
#include "platform/printing/saved_options.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace {

bool isDestinationName(const std::string& name) {
    // The characters that no queue's name has would lead to other places of the server.
    return !queueOf(name).empty() && name.back() != '/' && name.find_first_of("?#% \t\r\n") == std::string::npos &&
           std::ranges::count(name, '/') <= 1;
}

}  // namespace

OpaquePMPrinter::OpaquePMPrinter(std::shared_ptr<const PPDFile> file, std::string path, const std::string& destination)
    : ppdFile(std::move(file)), ppd(*ppdFile), ppdPath(std::move(path)), queue(queueOf(destination)) {
    const std::string shownName = !destination.empty() ? destination
                                  : !ppd.name.empty()  ? ppd.name
                                                       : std::filesystem::path(ppdPath).filename().string();
    name = makeString(shownName);
    id = destination.empty() ? nullptr : makeString(destination);
    maker = makeString(ppd.attribute("Manufacturer"));
    ppdURL = makeFileURL(ppdPath);
    for (const PPDPaper& paper : ppd.papers) {
        papers.push_back({makeString(paper.keyword), makeString(paper.title)});
    }
}

OSStatus PMPrinterCreateFromPPDFile(CFURLRef ppd, PMPrinter* printer) {
    clearLastError();
    const std::string path = filePath(ppd);
    if (printer == nullptr || path.empty()) {
        return failWith(paramErr, "PPD", messageText("no file is named"));
    }
    std::string reason;
    auto read = openPPDFile(path, &reason);
    if (!read) {
        return failWith(kPMUnusableDescription, path, reason);
    }
    *printer = new OpaquePMPrinter(std::move(read), path, {});
    return noErr;
}

OSStatus PMPrinterCreateFromPrinterID(CFStringRef destination, PMPrinter* printer) {
    clearLastError();
    const std::string name = utf8Text(destination);
    if (printer == nullptr) {
        return failWith(paramErr, name, "no place for the printer");
    }
    if (!isDestinationName(name)) {
        return failWith(kPMNoSuchPrinter, name, messageText("is not the name of a queue"));
    }
    const ServerAnswer<QueueDescription> answer = fetchQueue(name);
    if (answer.status != noErr) {
        return failWith(answer.status, name, answer.reason);
    }
    *printer = new OpaquePMPrinter(answer.value.file, answer.value.ppd->path(), name);
    (*printer)->ppdCopy = answer.value.ppd;
    (*printer)->start = answer.value.start;
    return noErr;
}

OSStatus PMPrinterCreateForJob(CFURLRef ppd, CFStringRef options, PMPrinter* printer) {
    if (const OSStatus status = PMPrinterCreateFromPPDFile(ppd, printer); status != noErr) {
        return status;
    }
    (*printer)->start = sortOptions((*printer)->ppd, (*printer)->ppdPath, optionsInFilterText(utf8Text(options)));
    const std::string fault = (*printer)->start.settingsFault;
    if (fault.empty()) {
        return noErr;
    }
    PMPrinterRelease(std::exchange(*printer, nullptr));
    return failWith(paramErr, "settings", fault);
}

OSStatus PMPrinterRetain(PMPrinter printer) {
    if (printer == nullptr) {
        return paramErr;
    }
    ++printer->owners;
    return noErr;
}

OSStatus PMPrinterRelease(PMPrinter printer) {
    if (printer == nullptr) {
        return paramErr;
    }
    if (--printer->owners == 0) {
        delete printer;
    }
    return noErr;
}

CFStringRef PMPrinterGetName(PMPrinter printer) {
    return printer == nullptr ? nullptr : printer->name.get();
}

CFStringRef PMPrinterGetID(PMPrinter printer) {
    return printer == nullptr ? nullptr : printer->id.get();
}

CFStringRef PMPrinterGetMaker(PMPrinter printer) {
    return printer == nullptr ? nullptr : printer->maker.get();
}

OSStatus PMPrinterGetDescriptionURL(PMPrinter printer, CFStringRef type, CFURLRef* url) {
    if (printer == nullptr || url == nullptr || !CFEqual(type, kPMPPDDescriptionType)) {
        return paramErr;
    }
    *url = printer->ppdURL.get();
    return noErr;
}

CFIndex PMPrinterCountPapers(PMPrinter printer) {
    return printer == nullptr ? 0 : static_cast<CFIndex>(printer->papers.size());
}

OSStatus PMPrinterGetIndPaper(PMPrinter printer, CFIndex index, PMPaper* paper) {
    if (paper == nullptr || index < 0 || index >= PMPrinterCountPapers(printer)) {
        return paramErr;
    }
    const auto position = static_cast<std::size_t>(index);
    const PPDPaper& found = printer->ppd.papers[position];
    const auto& strings = printer->papers[position];
    *paper = {strings.name.get(), strings.title.get(), found.width, found.height,
              found.left,         found.bottom,        found.right, found.top};
    return noErr;
}

OSStatus PMPrinterGetPaper(PMPrinter printer, CFStringRef option, PMPaper* paper) {
    if (printer == nullptr || paper == nullptr) {
        return paramErr;
    }
    for (CFIndex i = 0; i < PMPrinterCountPapers(printer); ++i) {
        PMPrinterGetIndPaper(printer, i, paper);
        if (option != nullptr && CFEqual(paper->name, option)) {
            return noErr;
        }
    }
    const auto size = readCustomSize(utf8Text(option));
    const auto& limits = printer->ppd.customSizes;
    if (!size || !limits) {
        return kPMKeyNotFound;
    }
    const double width = size->width * size->pointsPerUnit();
    const double height = size->height * size->pointsPerUnit();
    *paper = {
        nullptr, nullptr, width, height, limits->left, limits->bottom, width - limits->right, height - limits->top};
    return noErr;
}

CFStringRef PMCopyCustomPaperText(CFStringRef option) {
    const auto size = readCustomSize(utf8Text(option));
    return size ? makeString(customSizeText(*size)).leak() : nullptr;
}

Boolean PMCopyCustomPaperLimits(const char* ppdPath, float* minWidth, float* minHeight, float* maxWidth,
                                float* maxHeight) {
    std::string reason;
    const auto ppd = ppdPath == nullptr ? nullptr : openPPDFile(ppdPath, &reason);
    if (!ppd || !ppd->customSizes) {
        return false;
    }
    *minWidth = ppd->customSizes->minWidth;
    *minHeight = ppd->customSizes->minHeight;
    *maxWidth = ppd->customSizes->maxWidth;
    *maxHeight = ppd->customSizes->maxHeight;
    return true;
}

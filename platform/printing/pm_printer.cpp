#include "platform/printing/PMPrinter.h"

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"
#include "platform/printing/last_error.h"
#include "platform/printing/printer_info.h"
#include "platform/printing/printer_record.h"
#include "platform/printing/text.h"

#include <filesystem>

namespace {

/// Makes the printer of a PPD; with a queue's name, the PPD is a copy that goes with the printer.
OSStatus makePrinter(const std::string& ppdPath, const std::string& queue, PMPrinter* printer) {
    std::string reason;
    auto ppd = readPPDFile(ppdPath, &reason);
    if (!ppd) {
        return failWith(kPMUnusableDescription, queue.empty() ? ppdPath : queue,
                        queue.empty() ? reason : "its PPD " + reason);
    }
    *printer = new OpaquePMPrinter(std::move(*ppd), ppdPath, queue);
    return noErr;
}

}  // namespace

OpaquePMPrinter::OpaquePMPrinter(PPDFile file, std::string path, std::string queueName)
    : ppd(std::move(file)), ppdPath(std::move(path)), queue(std::move(queueName)) {
    const std::string shownName = !queue.empty()      ? queue
                                  : !ppd.name.empty() ? ppd.name
                                                      : std::filesystem::path(ppdPath).filename().string();
    name = makeString(shownName);
    id = queue.empty() ? nullptr : makeString(queue);
    maker = makeString(ppd.attribute("Manufacturer"));
    ppdURL = CFRef<CFURLRef>::adopt(
        CFURLCreateWithFileSystemPath(nullptr, makeString(ppdPath).get(), kCFURLPOSIXPathStyle, false));
    for (const PPDPaper& paper : ppd.papers) {
        papers.push_back({makeString(paper.keyword), makeString(paper.title)});
    }
}

OpaquePMPrinter::~OpaquePMPrinter() {
    if (!queue.empty()) {
        std::error_code ignored;
        std::filesystem::remove(ppdPath, ignored);
    }
}

OSStatus PMPrinterCreateFromPPDFile(CFURLRef ppd, PMPrinter* printer) {
    clearLastError();
    const std::string path = filePath(ppd);
    if (printer == nullptr || path.empty()) {
        return failWith(paramErr, "PPD", "no file is named");
    }
    return makePrinter(path, {}, printer);
}

OSStatus PMPrinterCreateFromPrinterID(CFStringRef queue, PMPrinter* printer) {
    clearLastError();
    const std::string name = utf8Text(queue);
    if (printer == nullptr) {
        return failWith(paramErr, name, "no place for the printer");
    }
    // The characters that no queue's name has would lead to other places of the server.
    if (name.empty() || name.find_first_of("/?#% \t\r\n") != std::string::npos) {
        return failWith(kPMNoSuchPrinter, name, "is not the name of a queue");
    }
    QueueDescription description;
    if (const OSStatus status = fetchQueue(name, &description); status != noErr) {
        return status;
    }
    const OSStatus status = makePrinter(description.ppdPath, name, printer);
    if (status == noErr) {
        (*printer)->queueDefaults = std::move(description.defaults);
    } else {
        std::error_code ignored;
        std::filesystem::remove(description.ppdPath, ignored);
    }
    return status;
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

OSStatus PMServerCopyPrinterIDs(UInt32 timeoutMilliseconds, CFArrayRef* queues) {
    clearLastError();
    if (queues == nullptr) {
        return failWith(paramErr, "queues", "no place for the list");
    }
    const CFMutableArrayRef names = CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks);
    for (const std::string& name : listQueues(static_cast<int>(timeoutMilliseconds))) {
        CFArrayAppendValue(names, makeString(name).get());
    }
    *queues = names;
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

Boolean PMCopyCustomPaperLimits(const char* ppdPath, float* minWidth, float* minHeight, float* maxWidth,
                                float* maxHeight) {
    std::string reason;
    const auto ppd = ppdPath == nullptr ? std::nullopt : readPPDFile(ppdPath, &reason);
    if (!ppd || !ppd->customSizes) {
        return false;
    }
    *minWidth = ppd->customSizes->minWidth;
    *minHeight = ppd->customSizes->minHeight;
    *maxWidth = ppd->customSizes->maxWidth;
    *maxHeight = ppd->customSizes->maxHeight;
    return true;
}

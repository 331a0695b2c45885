#include "host/settings/printer.h"

#include "platform/foundation/text.h"

namespace {

constexpr UInt32 kServerPatience = 500;  // milliseconds

Result<Printer> opened(OSStatus status, PMPrinter printer) {
    if (status != noErr) {
        return Failure{ExitStatus::unusableInput, utf8Text(PMGetLastErrorText())};
    }
    return Printer(printer);
}

}  // namespace

std::string Printer::name() const {
    return utf8Text(PMPrinterGetName(printer_));
}

std::string Printer::queue() const {
    return utf8Text(PMPrinterGetID(printer_));
}

std::string Printer::ppdPath() const {
    CFURLRef url = nullptr;
    PMPrinterGetDescriptionURL(printer_, kPMPPDDescriptionType, &url);
    return filePath(url);
}

bool Printer::isOfMaker() const {
    return utf8Text(PMPrinterGetMaker(printer_)) == kMaker;
}

Result<Printer> openPPD(const std::string& path) {
    PMPrinter printer = nullptr;
    const OSStatus status = PMPrinterCreateFromPPDFile(makeFileURL(path).get(), &printer);
    return opened(status, printer);
}

Result<Printer> openQueue(const std::string& queue) {
    PMPrinter printer = nullptr;
    const OSStatus status = PMPrinterCreateFromPrinterID(makeString(queue).get(), &printer);
    return opened(status, printer);
}

void askForPrinterAhead(const std::string& queue) {
    PMServerAskAhead(queue.empty() ? nullptr : makeString(queue).get(), kServerPatience);
}

Result<Printer> openDefaultPrinter(const std::string& samplePPD, bool isOfAnyMaker) {
    CFStringRef name = nullptr;
    if (PMServerCopyDefaultPrinterID(kServerPatience, &name) == noErr) {
        const auto owner = CFRef<CFStringRef>::adopt(name);
        if (Result<Printer> printer = openQueue(utf8Text(name)); printer && (isOfAnyMaker || printer->isOfMaker())) {
            return printer;
        }
    }
    return openPPD(samplePPD);
}

// Documents of other kinds on their way to a PDF.
#include "platform/foundation/message.h"
#include "platform/foundation/text.h"
#include "platform/printing/PMPrinter.h"
#include "platform/printing/filter_chain.h"
#include "platform/printing/filter_route.h"
#include "platform/printing/interruption.h"
#include "platform/printing/last_error.h"
#include "platform/printing/private_file.h"

#include <array>
#include <charconv>
#include <cmath>

namespace {

constexpr double kMargin = 36;  // of texts and pictures, in points

std::string number(double value) {
    std::array<char, 40> digits;
    const auto written = std::to_chars(digits.begin(), digits.end(), std::lround(value));
    return {digits.data(), written.ptr};
}

/// A printer that has the paper and nothing else: by no other way do all filters hear of a size.
std::string paperOnly(double width, double height) {
    const std::string ppd =
        "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*FileVersion: \"1.0\"\n*LanguageVersion: English\n"
        "*LanguageEncoding: ISOLatin1\n*PCFileName: \"PAPER.PPD\"\n*Manufacturer: \"Paper\"\n*Product: \"(Paper)\"\n"
        "*ModelName: \"Paper\"\n*ShortNickName: \"Paper\"\n*NickName: \"Paper\"\n*PSVersion: \"(3010.000) 0\"\n"
        "*LanguageLevel: \"3\"\n*ColorDevice: True\n*DefaultColorSpace: RGB\n"
        "*OpenUI *PageSize: PickOne\n*DefaultPageSize: Job\n*PageSize Job: \"\"\n*CloseUI: *PageSize\n"
        "*OpenUI *PageRegion: PickOne\n*DefaultPageRegion: Job\n*PageRegion Job: \"\"\n*CloseUI: *PageRegion\n";
    return ppd + "*DefaultImageableArea: Job\n*ImageableArea Job: \"" + number(kMargin) + " " + number(kMargin) + " " +
           number(width - kMargin) + " " + number(height - kMargin) +
           "\"\n*DefaultPaperDimension: Job\n*PaperDimension Job: \"" + number(width) + " " + number(height) + "\"\n";
}

/// Pictures become pages that are ready for the printer's paper at once.
std::optional<FilterRoute> routeToPDF(const std::string& type, std::string* reason) {
    return findRoute(type, type.starts_with("image/") ? kPrintablePDFType : kPDFType, reason);
}

OSStatus run(std::span<const std::string> filters, const FilterJob& job, const std::string& name, ByteSink& output) {
    const Interruption interruption;
    clearLastError();
    std::string reason;
    const OSStatus status = runFilters(filters, job, output, &reason);
    if (isInterrupted()) {
        return failWith(kPMFilterFailed, name, messageText("was stopped"));
    }
    return status == noErr || reason.empty() ? status : failWith(status, name, reason);
}

}  // namespace

Boolean PMCanWritePDF(CFStringRef contentType) {
    std::string ignored;
    return routeToPDF(utf8Text(contentType), &ignored).has_value();
}

OSStatus PMWritePDF(int file, CFURLRef document, CFStringRef contentType, double width, double height,
                    ByteSink* output) {
    const std::string type = utf8Text(contentType);
    const std::string name = filePath(document);
    std::string reason;
    const auto route = routeToPDF(type, &reason);
    if (!route) {
        return failWith(kPMFilterFailed, name, reason);
    }
    PrivateFile paper(PrivateFile::Place::memory);
    paper.write(paperOnly(width, height));
    if (!isKept(paper)) {
        return kPMCannotWriteOutput;
    }
    const FilterJob job{
        {{}, paper.descriptor()}, {}, "printer", type, route->finalContentType, {}, {}, 1, {}, {{}, file}};
    return run(route->filters, job, name, *output);
}

OSStatus PMWritePDFByProgram(int file, CFURLRef document, CFStringRef contentType, CFStringRef program,
                             CFStringRef setting, ByteSink* output) {
    const std::string name = filePath(document);
    const std::string filter = utf8Text(program);
    const FilterJob job{{}, {}, "printer", utf8Text(contentType), kPDFType, {}, {}, 1, utf8Text(setting), {{}, file}};
    return run({&filter, 1}, job, name, *output);
}

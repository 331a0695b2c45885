#include "host/portal/caller_settings.h"

#include "host/portal/request_keys.h"
#include "host/settings/custom_paper.h"
#include "host/settings/dictionary_values.h"
#include "host/settings/page_range.h"
#include "platform/files/url_access.h"
#include "platform/foundation/CFPropertyList.h"
#include "platform/foundation/message.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

namespace {

// Points. Programs write the sizes of paper in their own ways, up to a millimetre apart.
constexpr double kSamePaper = 3;

struct OrientationRow {
    SInt32 orientation;
    const char* inSettings;
    const char* inPageSetup;
};
constexpr std::array kOrientations{
    // item of the page format ticket, words of the callers
    OrientationRow{1, "portrait", "portrait"},
    OrientationRow{2, "landscape", "landscape"},
    OrientationRow{3, "reverse_landscape", "reverse-landscape"},
};

struct ChoiceRow {
    const char* key;
    const char* value;
    const char* mainKeyword;
    const char* option;
};
constexpr std::array kChoices{
    // key and value of the caller, what the PPD has for it
    ChoiceRow{"duplex", "simplex", "Duplex", "None"},
    ChoiceRow{"duplex", "horizontal", "Duplex", "DuplexNoTumble"},
    ChoiceRow{"duplex", "vertical", "Duplex", "DuplexTumble"},
    ChoiceRow{"collate", "true", "Collate", "True"},
    ChoiceRow{"collate", "false", "Collate", "False"},
    ChoiceRow{"use-color", "false", kColorCorrectionKeyword, kBlackAndWhiteCorrection},
};

struct OrderRow {
    const char* word;
    NumberUpOrder order;
};
constexpr std::array kOrders{
    OrderRow{"lrtb", NumberUpOrder::rightDown}, OrderRow{"tblr", NumberUpOrder::downRight},
    OrderRow{"rltb", NumberUpOrder::leftDown},  OrderRow{"tbrl", NumberUpOrder::downLeft},
    OrderRow{"lrbt", NumberUpOrder::rightUp},   OrderRow{"btlr", NumberUpOrder::upRight},
    OrderRow{"rlbt", NumberUpOrder::leftUp},    OrderRow{"btrl", NumberUpOrder::upLeft},
};

/// A number of a text; the fallback for anything else.
double numberOf(const std::string& text, double fallback) {
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : fallback;
}

std::string textOf(double number) {
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    return {text.data(), end};
}

double lengthIn(CFDictionaryRef dictionary, CFStringRef key) {
    double length = 0;
    const void* const value = CFDictionaryGetValue(dictionary, key);
    return CFGetTypeID(value) == CFNumberGetTypeID() &&
                   CFNumberGetValue(static_cast<CFNumberRef>(value), kCFNumberDoubleType, &length)
               ? inPoints(LengthUnit::millimeters, length)
               : 0;
}

/// The pages of a caller's ranges, which count from 0, as people count them.
std::string rangeOf(const std::string& written) {
    std::string range;
    for (std::size_t at = 0; at < written.size();) {
        const std::size_t end = std::min(written.find_first_of("-,", at), written.size());
        range += textOf(numberOf(written.substr(at, end - at), -1) + 1);
        range += end < written.size() ? written.substr(end, 1) : "";
        at = end + 1;
    }
    const PageRange read = readPageRange(range, kMostPlannedPages);
    return read.fault == PageRangeFault::none ? read.pages : std::string();
}

/// The printer's paper for the caller's: by the PPD's name when the size is right, else by the size.
void takePaper(const PortalRequest& request, PrintSession* session) {
    double width = lengthIn(request.pageSetup.get(), CFSTR("Width"));
    double height = lengthIn(request.pageSetup.get(), CFSTR("Height"));
    if (width <= 0 || height <= 0) {
        const auto ofSettings = [&](CFStringRef key) {
            return inPoints(LengthUnit::millimeters, numberOf(stringIn(request.settings.get(), key), 0));
        };
        width = ofSettings(CFSTR("paper-width"));
        height = ofSettings(CFSTR("paper-height"));
    }
    const auto isIt = [&](const PMPaper& paper) {
        return std::abs(paper.width - width) <= kSamePaper && std::abs(paper.height - height) <= kSamePaper;
    };
    const PMPrinter printer = session->printer().get();
    PMPaper paper{};
    const auto name = makeString(stringIn(request.pageSetup.get(), CFSTR("PPDName")));
    bool isFound = PMPrinterGetPaper(printer, name.get(), &paper) == noErr && isIt(paper);
    // The paper that the printer has by itself stays where it is of that size: PPDs have several for different edges.
    isFound =
        isFound || (PMPrinterGetPaper(printer, makeString(session->choice(CFSTR("PageSize"))).get(), &paper) == noErr &&
                    isIt(paper));
    for (CFIndex i = 0; !isFound && i < PMPrinterCountPapers(printer); ++i) {
        PMPrinterGetIndPaper(printer, i, &paper);
        isFound = isIt(paper);
    }
    if (isFound && paper.name != nullptr) {
        session->setChoice(CFSTR("PageSize"), paper.name);
        session->updatePaperRectangle();
    }
}

void takePages(CFDictionaryRef settings, JobInstructions* job) {
    const auto has = [&](CFStringRef key, const char* value) { return stringIn(settings, key) == value; };
    static constexpr std::array kNumbersUp{1, 2, 4, 6, 9, 16};
    const double numberUp = numberOf(stringIn(settings, CFSTR("number-up")), 0);
    const auto* const number = std::ranges::find(kNumbersUp, numberUp);
    job->numberUp = number != kNumbersUp.end() ? *number : job->numberUp;
    for (const OrderRow& row : kOrders) {
        job->numberUpOrder = has(CFSTR("number-up-layout"), row.word) ? row.order : job->numberUpOrder;
    }
    job->isReversed = job->isReversed || has(CFSTR("reverse"), "true");
    job->subset = has(CFSTR("page-set"), "even")  ? PageSubset::even
                  : has(CFSTR("page-set"), "odd") ? PageSubset::odd
                                                  : job->subset;
    const double scale = numberOf(stringIn(settings, CFSTR("scale")), 100);
    if (scale != 100 && scale >= 1 && scale <= 1000) {
        job->scaling = {Scaling::Kind::percent, scale};
    }
}

class Answer {
public:
    Answer()
        : values_(CFRef<CFMutableDictionaryRef>::adopt(CFDictionaryCreateMutable(
              nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks))) {}
    explicit Answer(CFDictionaryRef begun)
        : values_(begun == nullptr
                      ? Answer().values_
                      : CFRef<CFMutableDictionaryRef>::adopt(CFDictionaryCreateMutableCopy(nullptr, 0, begun))) {}

    void set(CFStringRef key, CFTypeRef value) { CFDictionarySetValue(values_.get(), key, value); }
    void setText(CFStringRef key, const std::string& text) { set(key, makeString(text).get()); }
    void setMillimeters(CFStringRef key, double points) {
        const double length = std::round(inUnit(LengthUnit::millimeters, points) * 1000) / 1000;
        set(key, CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, kCFNumberDoubleType, &length)).get());
    }
    void drop(CFStringRef key) { CFDictionaryRemoveValue(values_.get(), key); }
    CFDictionaryRef get() const { return values_.get(); }

private:
    CFRef<CFMutableDictionaryRef> values_;
};

PMPaper paperOf(const PrintSession& session) {
    PMPaper paper{};
    PMPrinterGetPaper(session.printer().get(), makeString(session.choice(CFSTR("PageSize"))).get(), &paper);
    return paper;
}

/// What the caller lays its pages out by.
Answer pageSetupFor(const PrintSession& session, const OrientationRow& orientation) {
    const PMPaper paper = paperOf(session);
    Answer setup;
    const std::string option = session.choice(CFSTR("PageSize"));
    setup.setText(CFSTR("PPDName"), option);
    setup.setText(CFSTR("DisplayName"), paper.title != nullptr ? utf8Text(paper.title) : option);
    setup.setMillimeters(CFSTR("Width"), paper.width);
    setup.setMillimeters(CFSTR("Height"), paper.height);
    setup.setMillimeters(CFSTR("MarginLeft"), paper.left);
    setup.setMillimeters(CFSTR("MarginRight"), paper.width - paper.right);
    setup.setMillimeters(CFSTR("MarginBottom"), paper.bottom);
    setup.setMillimeters(CFSTR("MarginTop"), paper.height - paper.top);
    setup.setText(CFSTR("Orientation"), orientation.inPageSetup);
    return setup;
}

/// The format of its document: what can be printed of what it can make.
const char* formatFor(const PortalRequest& request) {
    const std::string formats = " " + request.formats + " ";
    return !request.formats.empty() && formats.find(" pdf ") == std::string::npos &&
                   formats.find(" ps ") != std::string::npos
               ? "ps"
               : "pdf";
}

Answer settingsFor(const PortalRequest& request, const PrintSession& session, PagesAsked pages,
                   const OrientationRow& orientation) {
    Answer settings(request.settings.get());  // a program's own come back to it
    for (const char* key : {"page-ranges", "output-uri", "output-basename", "paper-format", "use-color", "duplex"}) {
        settings.drop(makeString(key).get());
    }
    struct LeftRow {
        const char* key;
        const char* value;
    };
    static constexpr LeftRow kLeftToPrinting[] = {
        {"n-copies", "1"}, {"collate", "true"}, {"reverse", "false"},         {"page-set", "all"},
        {"scale", "100"},  {"number-up", "1"},  {"number-up-layout", "lrtb"},
    };
    for (const LeftRow& row : kLeftToPrinting) {
        settings.setText(makeString(row.key).get(), row.value);
    }
    settings.setText(CFSTR("print-pages"), pages == PagesAsked::current    ? "current"
                                           : pages == PagesAsked::selected ? "selection"
                                                                           : "all");
    const PMPaper paper = paperOf(session);
    settings.setText(CFSTR("paper-width"), textOf(inUnit(LengthUnit::millimeters, paper.width)));
    settings.setText(CFSTR("paper-height"), textOf(inUnit(LengthUnit::millimeters, paper.height)));
    settings.setText(CFSTR("orientation"), orientation.inSettings);
    settings.setText(CFSTR("output-file-format"), formatFor(request));
    for (const ChoiceRow& row : kChoices) {
        if (std::strcmp(row.key, "duplex") == 0 && session.choice(makeString(row.mainKeyword).get()) == row.option) {
            settings.setText(makeString(row.key).get(), row.value);
        }
    }
    settings.setText(CFSTR("printer"), session.printer().queue());
    return settings;
}

}  // namespace

Result<Printer> printerOfCaller(const PortalRequest& request, const std::string& samplePPD) {
    if (!request.queue.empty()) {
        if (Result<Printer> printer = openQueue(request.queue); printer && printer->isOfMaker()) {
            return printer;
        }
    }
    return openDefaultPrinter(samplePPD, true);
}

JobSettings settingsOfCaller(const PortalRequest& request, const Printer& printer, CFDictionaryRef installedOptions) {
    PrintSession session(printer, {}, installedOptions, request.title);
    const CFDictionaryRef settings = request.settings.get();
    takePaper(request, &session);
    const std::string inPageSetup = stringIn(request.pageSetup.get(), CFSTR("Orientation"));
    const std::string inSettings = stringIn(settings, CFSTR("orientation"));
    for (const OrientationRow& row : kOrientations) {
        if (inPageSetup.empty() ? inSettings == row.inSettings : inPageSetup == row.inPageSetup) {
            session.setOrientation(row.orientation);
        }
    }
    for (const ChoiceRow& row : kChoices) {
        if (stringIn(settings, makeString(row.key).get()) == row.value &&
            session.choices().offers(row.mainKeyword, row.option)) {
            session.setChoice(makeString(row.mainKeyword).get(), makeString(row.option).get());
        }
    }
    const double copies = numberOf(stringIn(settings, CFSTR("n-copies")), 0);
    if (copies >= 1 && copies <= kMostCopies) {
        session.setCopies(static_cast<SInt32>(copies));
    }
    session.changePages([&](JobInstructions& job) { takePages(settings, &job); });
    if (stringIn(settings, CFSTR("print-pages")) == "ranges") {
        session.setPageRange(rangeOf(stringIn(settings, CFSTR("page-ranges"))));
    }
    return session.copySettings();
}

PagesOffered pagesOfCaller(const PortalRequest& request) {
    const std::string pages = stringIn(request.settings.get(), CFSTR("print-pages"));
    return {request.hasCurrentPage, request.hasSelectedPages,
            pages == "current" && request.hasCurrentPage       ? PagesAsked::current
            : pages == "selection" && request.hasSelectedPages ? PagesAsked::selected
            : pages == "ranges"                                ? PagesAsked::range
                                                               : PagesAsked::all};
}

std::optional<std::string> answerCaller(const PortalRequest& request, const PrintSession& session, PagesAsked pages) {
    const auto chosen = std::ranges::find(kOrientations, session.orientation(), &OrientationRow::orientation);
    // The other way round is how the page lies on its sheet, which is done when it is printed.
    const OrientationRow& orientation = kOrientations.at(chosen->orientation == kPortrait ? 0 : 1);
    Answer answer;
    answer.set(kPortalSettingsKey, settingsFor(request, session, pages, orientation).get());
    answer.set(kPortalPageSetupKey, pageSetupFor(session, orientation).get());
    answer.setText(kPortalQueueKey, session.printer().queue());
    const std::string path = request.file(portal::kAnswerFile);
    const auto data = CFRef<CFDataRef>::adopt(CFPropertyListCreateXMLData(nullptr, answer.get()));
    SInt32 error = 0;
    if (!CFURLWriteDataAndPropertiesToResource(makeFileURL(path).get(), data.get(), nullptr, &error)) {
        return path + ": " + systemMessage(error);
    }
    return writeSettingsFile(session.copySettings(), request.file(portal::kSettingsFile));
}

#include "driver/instructions/page_options.h"

#include "driver/instructions/ticket_values.h"
#include "platform/printing/PMPrinter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <string_view>

namespace {

struct OrderRow {
    std::string_view option;
    NumberUpOrder order;
};
constexpr std::array kOrders{
    // number-up-layout, with the letters for left, right, top and bottom
    OrderRow{"lrtb", NumberUpOrder::rightDown}, OrderRow{"tblr", NumberUpOrder::downRight},
    OrderRow{"rltb", NumberUpOrder::leftDown},  OrderRow{"tbrl", NumberUpOrder::downLeft},
    OrderRow{"lrbt", NumberUpOrder::rightUp},   OrderRow{"btlr", NumberUpOrder::upRight},
    OrderRow{"rlbt", NumberUpOrder::leftUp},    OrderRow{"btrl", NumberUpOrder::upLeft},
};

// Each once: what is read is what is written.
#define kNumberUp CFSTR("number-up")
#define kNumberUpLayout CFSTR("number-up-layout")
#define kPageBorder CFSTR("page-border")
#define kPrintScaling CFSTR("print-scaling")
#define kNaturalScaling CFSTR("natural-scaling")
#define kPageSet CFSTR("page-set")
#define kOutputOrder CFSTR("outputorder")

bool isYes(const std::string& value) {
    return value == "true" || value == "on" || value == "yes";
}

int numberOf(const std::string& value) {
    int number = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    return error == std::errc() && end == value.data() + value.size() ? number : 0;
}

void readScaling(CFDictionaryRef options, JobInstructions* job) {
    const std::string scaling = textIn(options, kPrintScaling);
    const int percent = numberOf(textIn(options, kNaturalScaling));
    if (percent >= 1 && percent <= 1000) {
        job->scaling = {Scaling::Kind::percent, static_cast<double>(percent)};
    } else if (scaling == "none") {
        job->scaling.kind = Scaling::Kind::actualSize;
    } else if (scaling == "fit" || scaling == "fill" || isYes(textIn(options, CFSTR("fit-to-page"))) ||
               isYes(textIn(options, CFSTR("fitplot")))) {
        job->scaling.kind = Scaling::Kind::fit;
    }
}

}  // namespace

void readPageOptions(PMTicketRef printSettings, JobInstructions* job) {
    const CFDictionaryRef options = dictionaryOf(printSettings, kPMPageOptionsKey);
    if (options == nullptr) {
        return;
    }
    constexpr std::array kNumbersUp{2, 4, 6, 9, 16};
    const int numberUp = numberOf(textIn(options, kNumberUp));
    job->numberUp = std::ranges::find(kNumbersUp, numberUp) == kNumbersUp.end() ? 1 : numberUp;
    const auto* const order =
        std::ranges::find(kOrders, std::string_view(textIn(options, kNumberUpLayout)), &OrderRow::option);
    job->numberUpOrder = order == kOrders.end() ? NumberUpOrder::rightDown : order->order;
    const std::string border = textIn(options, kPageBorder);
    job->hasBorders = !border.empty() && border != "none";
    readScaling(options, job);
    const std::string set = textIn(options, kPageSet);
    job->subset = set == "odd" ? PageSubset::odd : set == "even" ? PageSubset::even : PageSubset::all;
    job->isReversed = textIn(options, kOutputOrder) == "reverse";
    job->isMirrored = job->isMirrored || isYes(textIn(options, CFSTR("mirror")));
    if (isYes(textIn(options, CFSTR("booklet"))) && !job->booklet) {
        job->booklet = BookletInstruction{job->hasBorders, job->numberUpOrder == NumberUpOrder::leftDown, {}};
    }
}

namespace {

const char* subsetWord(PageSubset subset) {
    return subset == PageSubset::odd ? "odd" : subset == PageSubset::even ? "even" : "all";
}

class OptionWriter {
public:
    OptionWriter(CFDictionaryRef present, CFDictionaryRef usual)
        : usual_(usual),
          options_(CFRef<CFMutableDictionaryRef>::adopt(
              present == nullptr ? CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks,
                                                             &kCFTypeDictionaryValueCallBacks)
                                 : CFDictionaryCreateMutableCopy(nullptr, 0, present))) {}

    void write(CFStringRef name, bool saysNothing, const std::string& value) {
        if (saysNothing && (usual_ == nullptr || CFDictionaryContainsKey(usual_, name) == 0)) {
            drop(name);
        } else {
            CFDictionarySetValue(options_.get(), name, makeString(value).get());
        }
    }
    void drop(CFStringRef name) { CFDictionaryRemoveValue(options_.get(), name); }
    [[nodiscard]] CFDictionaryRef options() const { return options_.get(); }

private:
    CFDictionaryRef usual_;
    CFRef<CFMutableDictionaryRef> options_;
};

}  // namespace

void writePageOptions(const JobInstructions& job, CFDictionaryRef usual, PMTicketRef printSettings) {
    const CFDictionaryRef present = dictionaryOf(printSettings, kPMPageOptionsKey);
    OptionWriter writer(present, usual);
    writer.write(kNumberUp, job.numberUp == 1, std::to_string(job.numberUp));
    const auto* const order = std::ranges::find(kOrders, job.numberUpOrder, &OrderRow::order);
    writer.write(kNumberUpLayout, job.numberUpOrder == NumberUpOrder::rightDown, std::string(order->option));
    const std::string border = present == nullptr ? std::string() : textIn(present, kPageBorder);
    const bool hadBorder = !border.empty() && border != "none";
    writer.write(kPageBorder, !job.hasBorders, !job.hasBorders ? "none" : hadBorder ? border : "single");
    writer.write(kPageSet, job.subset == PageSubset::all, subsetWord(job.subset));
    writer.write(kOutputOrder, !job.isReversed, job.isReversed ? "reverse" : "normal");
    using enum Scaling::Kind;
    const Scaling::Kind scaling = job.scaling.kind;
    const bool isForced = scaling == actualSize || scaling == fit;
    writer.write(kPrintScaling, !isForced, !isForced ? "auto" : scaling == fit ? "fit" : "none");
    for (const CFStringRef other :
         {kNaturalScaling, CFSTR("fit-to-page"), CFSTR("fitplot"), CFSTR("fill"), CFSTR("scaling")}) {
        writer.drop(other);
    }
    if (scaling == percent) {
        writer.write(kNaturalScaling, false, std::to_string(std::lround(job.scaling.percent)));
    }
    if (CFDictionaryGetCount(writer.options()) == 0 && usual == nullptr) {
        PMTicketReleaseItem(printSettings, kPMTopLevel, kPMPageOptionsKey);
    } else {
        PMTicketSetCFDictionary(printSettings, kDriverClient, kPMPageOptionsKey, writer.options(), kPMUnlocked);
    }
}

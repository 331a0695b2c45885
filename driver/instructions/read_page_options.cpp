#include "driver/instructions/read_page_options.h"

#include "driver/instructions/ticket_values.h"
#include "platform/printing/PMPrinter.h"

#include <algorithm>
#include <array>
#include <charconv>
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

bool isYes(const std::string& value) {
    return value == "true" || value == "on" || value == "yes";
}

int numberOf(const std::string& value) {
    int number = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    return error == std::errc() && end == value.data() + value.size() ? number : 0;
}

void readScaling(CFDictionaryRef options, JobInstructions* job) {
    const std::string scaling = textIn(options, CFSTR("print-scaling"));
    const int percent = numberOf(textIn(options, CFSTR("natural-scaling")));
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
    const int numberUp = numberOf(textIn(options, CFSTR("number-up")));
    job->numberUp = std::ranges::find(kNumbersUp, numberUp) == kNumbersUp.end() ? 1 : numberUp;
    const auto* const order =
        std::ranges::find(kOrders, std::string_view(textIn(options, CFSTR("number-up-layout"))), &OrderRow::option);
    job->numberUpOrder = order == kOrders.end() ? NumberUpOrder::rightDown : order->order;
    const std::string border = textIn(options, CFSTR("page-border"));
    job->hasBorders = !border.empty() && border != "none";
    readScaling(options, job);
    const std::string set = textIn(options, CFSTR("page-set"));
    job->subset = set == "odd" ? PageSubset::odd : set == "even" ? PageSubset::even : PageSubset::all;
    job->isReversed = textIn(options, CFSTR("outputorder")) == "reverse";
    job->isMirrored = job->isMirrored || isYes(textIn(options, CFSTR("mirror")));
    if (isYes(textIn(options, CFSTR("booklet"))) && !job->booklet) {
        job->booklet = BookletInstruction{job->hasBorders, job->numberUpOrder == NumberUpOrder::leftDown, {}};
    }
}

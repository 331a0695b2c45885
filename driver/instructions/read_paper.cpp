#include "driver/instructions/read_paper.h"

#include "driver/instructions/ticket_values.h"
#include "model/settings/ppd_option_maps.h"
#include "model/stock/stock_attributes.h"

#include <algorithm>
#include <array>

namespace {

int known(SInt32 value) {
    return std::max(value, 0);
}

struct AttributeRow {
    StockAttribute attribute;
    int Paper::*part;
};
constexpr std::array kAttributes{
    // attribute, part
    AttributeRow{StockAttribute::weight, &Paper::weight},
    AttributeRow{StockAttribute::coatedSides, &Paper::sidesCoated},
    AttributeRow{StockAttribute::coating, &Paper::coating},
    AttributeRow{StockAttribute::finish, &Paper::finish},
    AttributeRow{StockAttribute::grain, &Paper::grain},
    AttributeRow{StockAttribute::tabs, &Paper::tabsInBank},
};
static_assert(kAttributes.size() == 6);  // holes are a flag

}  // namespace

std::string paperOption(CFStringRef mainKeyword, SInt32 value) {
    const std::string option =
        utf8Text(GetPPDOptionKeywordForTicketValue(GetPPDOptionMapForMainKeyword(mainKeyword), value));
    return option.empty() && value > 0 ? std::to_string(value) : option;
}

Paper readPaper(CFDictionaryRef ticket) {
    const Stock stock = StockWithDetails(ticket);
    Paper paper;
    paper.size =
        stock.size() == kStockSizeCustom ? CustomSizeOption(stock) : paperOption(CFSTR("PageSize"), stock.size());
    paper.color = paperOption(CFSTR("MediaColor"), StockColorOfMap(stock));
    if (stock.type() != kStockTypeSystemDefault) {
        paper.type = paperOption(CFSTR("MediaType"), StockTypeOfMap(stock));
    }
    paper.tabsInBank = known(stock.modulus());
    paper.weight = known(stock.weight());
    paper.isPunched = stock.punched() == kStockPunched;
    paper.sidesCoated = known(stock.sidesCoated());
    paper.coating = paper.sidesCoated > 0 ? known(stock.coatingType()) : 0;
    paper.finish = known(stock.finish());
    paper.grain = known(stock.grain());
    paper.colorName = utf8Text(stock.customColor());
    paper.typeName = utf8Text(stock.customType());
    paper.name = utf8Text(stock.customName());
    return paper;
}

std::vector<std::pair<const char*, std::string>> paperAttributes(const Paper& paper) {
    std::vector<std::pair<const char*, std::string>> options;
    const auto add = [&](StockAttribute attribute, int value) {
        const StockAttributeRow& row = StockAttributeRowOf(attribute);
        const std::string option = StockAttributeOption(row, value > 0 ? value : kTicketValueUnset);
        options.emplace_back(row.mainKeyword, option == kAnyStockOption ? std::string() : option);
    };
    for (const AttributeRow& row : kAttributes) {
        add(row.attribute, paper.*row.part);
    }
    add(StockAttribute::holes, paper.isPunched ? kStockPunched : 0);
    return options;
}

void takePaperAttributes(PMTicketRef printSettings, Paper* paper) {
    const auto choice = [&](StockAttribute attribute) {
        const StockAttributeRow& row = StockAttributeRowOf(attribute);
        return StockAttributeValue(row, choiceOf(printSettings, makeString(row.mainKeyword).get()));
    };
    for (const AttributeRow& row : kAttributes) {
        if (const SInt32 value = choice(row.attribute); value > 0) {
            paper->*row.part = value;
        }
    }
    if (const SInt32 holes = choice(StockAttribute::holes); holes > 0) {
        paper->isPunched = holes == kStockPunched;
    }
}

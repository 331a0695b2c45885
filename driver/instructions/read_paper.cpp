#include "driver/instructions/read_paper.h"

#include "driver/instructions/ticket_values.h"
#include "model/ppd_option_maps.h"

#include <algorithm>

namespace {

/// Types that no option of the PPD stands for have one that they are made of.
std::string typeOption(const Stock& stock) {
    switch (stock.type()) {
        case kStockTypePrecutTab:
        case kStockTypeFullCutTab:
            return paperOption(CFSTR("MediaType"), kStockTypeTabStock);
        case kStockTypeOrdered:
        case kStockTypeCustom:
            return paperOption(CFSTR("MediaType"), kStockTypeOther);
        case kStockTypeSystemDefault:
            return {};
        default:
            return paperOption(CFSTR("MediaType"), stock.type());
    }
}

int known(SInt32 value) {
    return std::max(value, 0);
}

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
    paper.color =
        paperOption(CFSTR("MediaColor"), stock.color() == kStockColorCustom ? kStockColorOther : stock.color());
    paper.type = typeOption(stock);
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

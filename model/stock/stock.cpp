#include "model/stock/stock.h"

#include "model/settings/plugin_state.h"
#include "model/settings/record_ticket.h"

#include <array>
#include <charconv>
#include <cmath>

namespace {

bool HasModulusInTicket(SInt32 type) {
    return type == kStockTypePrecutTab || type == kStockTypeOrdered;
}

bool SameText(CFStringRef left, CFStringRef right) {
    return left != nullptr && right != nullptr &&
           CFStringCompare(left, right, kCFCompareCaseInsensitive) == kCFCompareEqualTo;
}

}  // namespace

Stock::Stock() : Stock(nullptr) {
    size_ = 1;
    color_ = kStockColorWhite;
}

Stock::Stock(CFDictionaryRef ticket) {
    const auto empty = CFRef<CFStringRef>::retain(CFSTR(""));
    customType_ = empty;
    customColor_ = empty;
    description_ = empty;
    customName_ = empty;
    comment_ = empty;
    if (ticket == nullptr) {
        return;
    }
    // Past the coupled setters: what a ticket says of each field stands by itself.
    if (ReadTicketValue(ticket, CFSTR("Size"), &size_) && size_ == kStockSizeCustom) {
        ReadTicketValue(ticket, CFSTR("Width"), &width_);
        ReadTicketValue(ticket, CFSTR("Length"), &length_);
    }
    if (ReadTicketValue(ticket, CFSTR("Type"), &type_) && HasModulusInTicket(type_)) {
        ReadTicketValue(ticket, CFSTR("Modulus"), &modulus_);
    }
    ReadTicketValue(ticket, CFSTR("Color"), &color_);
}

Stock& Stock::operator=(const Stock& other) {
    if (this != &other) {
        // The order matters where setters are coupled.
        setSize(other.size_);
        setWidth(other.width_);
        setLength(other.length_);
        setColor(other.color_);
        setCustomColor(other.customColor());
        setType(other.type_);
        setCustomType(other.customType());
        setModulus(other.modulus_);
        setPunched(other.punched_);
        setWeight(other.weight_);
        setDescription(other.description());
        setSidesCoated(other.sidesCoated_);
        setCoatingType(other.coatingType_);
        setFinish(other.finish_);
        setGrain(other.grain_);
        setCustomName(other.customName());
        setCustomNameOnly(other.customNameOnly_);
        setComment(other.comment());
    }
    return *this;
}

bool Stock::operator==(const Stock& other) const {
    return size_ == other.size_ && width_ == other.width_ && length_ == other.length_ && color_ == other.color_ &&
           type_ == other.type_ && modulus_ == other.modulus_ && punched_ == other.punched_ &&
           weight_ == other.weight_ && sidesCoated_ == other.sidesCoated_ && coatingType_ == other.coatingType_ &&
           finish_ == other.finish_ && grain_ == other.grain_ && customNameOnly_ == other.customNameOnly_ &&
           SameText(customColor(), other.customColor()) && SameText(customType(), other.customType()) &&
           SameText(description(), other.description()) && SameText(customName(), other.customName()) &&
           SameText(comment(), other.comment());
}

CFRef<CFMutableDictionaryRef> Stock::asTicket() const {
    auto made = CreateRecordDictionary();
    const CFMutableDictionaryRef ticket = made.get();
    WriteIfSet(ticket, CFSTR("Size"), size_);
    if (size_ == kStockSizeCustom) {
        WriteTicketValue(ticket, CFSTR("Width"), width_);
        WriteTicketValue(ticket, CFSTR("Length"), length_);
    }
    WriteIfSet(ticket, CFSTR("Type"), type_);
    WriteIfNotEmpty(ticket, CFSTR("CustomType"), customType());
    WriteIfSet(ticket, CFSTR("Modulus"), modulus_);
    WriteIfSet(ticket, CFSTR("Color"), color_);
    WriteIfNotEmpty(ticket, CFSTR("CustomColor"), customColor());
    WriteIfSet(ticket, CFSTR("Weight"), weight_);
    WriteIfSet(ticket, CFSTR("Punched"), punched_);
    WriteIfNotEmpty(ticket, CFSTR("Description"), description());
    if (sidesCoated_ != kTicketValueUnset) {
        WriteTicketValue(ticket, CFSTR("SidesCoated"), sidesCoated_);
        WriteTicketValue(ticket, CFSTR("kCoatingType"), coatingType_);
    }
    WriteIfSet(ticket, CFSTR("Finish"), finish_);
    WriteIfSet(ticket, CFSTR("kGrain"), grain_);
    WriteIfNotEmpty(ticket, CFSTR("CustomName"), customName());
    if (customNameOnly_) {
        CFDictionarySetValue(ticket, CFSTR("CustomNameOnly"), kCFBooleanTrue);
    }
    WriteIfNotEmpty(ticket, CFSTR("CustomComment"), comment());
    return made;
}

void Stock::setSize(SInt32 size) {
    size_ = size;
    if (size != kStockSizeCustom) {
        width_ = kTicketValueUnset;
        length_ = kTicketValueUnset;
    }
}

void Stock::setWidth(SInt32 width) {
    width_ = width;
    if (width != kTicketValueUnset) {
        setSize(kStockSizeCustom);
    }
}

void Stock::setLength(SInt32 length) {
    length_ = length;
    if (length != kTicketValueUnset) {
        setSize(kStockSizeCustom);
    }
}

void Stock::setType(SInt32 type) {
    type_ = type;
    if (type == kStockTypeTransparency) {
        color_ = kStockColorClear;
    }
}

Stock StockWithDetails(CFDictionaryRef ticket) {
    Stock stock(ticket);
    const auto number = [ticket](CFStringRef key) {
        SInt32 value = kTicketValueUnset;
        ReadTicketValue(ticket, key, &value);
        return value;
    };
    const auto text = [ticket](CFStringRef key) {
        const CFStringRef value = GetRecordString(ticket, key);
        return value != nullptr ? value : CFSTR("");
    };
    stock.setCustomType(text(CFSTR("CustomType")));
    stock.setModulus(number(CFSTR("Modulus")));
    stock.setCustomColor(text(CFSTR("CustomColor")));
    stock.setWeight(number(CFSTR("Weight")));
    stock.setPunched(number(CFSTR("Punched")));
    stock.setDescription(text(CFSTR("Description")));
    stock.setSidesCoated(number(CFSTR("SidesCoated")));
    if (stock.sidesCoated() != kTicketValueUnset) {
        stock.setCoatingType(number(CFSTR("kCoatingType")));
    }
    stock.setFinish(number(CFSTR("Finish")));
    stock.setGrain(number(CFSTR("kGrain")));
    stock.setCustomName(text(CFSTR("CustomName")));
    stock.setCustomNameOnly(CFDictionaryGetValue(ticket, CFSTR("CustomNameOnly")) == kCFBooleanTrue);
    stock.setComment(text(CFSTR("CustomComment")));
    return stock;
}

Stock StockOfTicket(CFDictionaryRef ticket) {
    return ticket != nullptr && ShowsStockDetails() ? StockWithDetails(ticket) : Stock(ticket);
}

SInt32 StockColorOfMap(const Stock& stock) {
    return stock.color() == kStockColorCustom ? kStockColorOther : stock.color();
}

SInt32 StockTypeOfMap(const Stock& stock) {
    switch (stock.type()) {
        case kStockTypePrecutTab:
        case kStockTypeFullCutTab:
            return kStockTypeTabStock;
        case kStockTypeOrdered:
        case kStockTypeCustom:
            return kStockTypeOther;
        default:
            return stock.type();
    }
}

std::string CustomSizeOption(const Stock& stock) {
    constexpr double kPointsInUnit = 72.0 / 2540;  // a hundredth of a millimetre
    if (stock.width() <= 0 || stock.length() <= 0) {
        return {};
    }
    const auto points = [](SInt32 length) {
        std::array<char, 32> text{};
        const double hundredths = std::round(length * kPointsInUnit * 100);
        return std::string(text.data(), std::to_chars(text.begin(), text.end(), hundredths / 100).ptr);
    };
    return "Custom." + points(stock.width()) + "x" + points(stock.length());
}

void DefaultStock(Stock* stock, JobContext context) {
    const bool isConcrete = context == JobContext::job || context == JobContext::cover;
    stock->setSize(isConcrete ? 1 : kTicketValueUnset);
    stock->setColor(isConcrete ? kStockColorWhite : kTicketValueUnset);
    stock->setType(isConcrete ? SInt32{kStockTypeStandard} : kTicketValueUnset);
    stock->setPunched(kTicketValueUnset);
    stock->setWeight(kTicketValueUnset);
    stock->setModulus(kTicketValueUnset);
    stock->setCustomType(CFSTR(""));
    stock->setCustomColor(CFSTR(""));
    stock->setDescription(CFSTR(""));
    stock->setCustomName(CFSTR(""));
    stock->setCustomNameOnly(false);
}

#include "model/stock_summary.h"

#include "model/ppd_ui_dictionary.h"
#include "platform/foundation/CFBundle.h"

#include <string>

namespace {

std::u16string Text(CFStringRef string) {
    std::u16string text(static_cast<std::size_t>(CFStringGetLength(string)), u'\0');
    CFStringGetCharacters(string, {0, CFStringGetLength(string)}, text.data());
    return text;
}

std::u16string Localized(CFBundleRef bundle, CFStringRef key) {
    return Text(CFRef<CFStringRef>::adopt(
                    CFBundleCopyLocalizedString(bundle, key, CFSTR("STRING NOT FOUND"), CFSTR("Localizable")))
                    .get());
}

std::u16string WithModulus(std::u16string name, SInt32 modulus) {
    const std::string digits = std::to_string(modulus);
    return std::move(name) + u" (" + std::u16string(digits.begin(), digits.end()) + u')';
}

/// A custom size is none of the map's, so the PPD's own word for it is not found by its value.
std::u16string SizeText(CFBundleRef bundle, const Stock& stock) {
    if (stock.size() != kStockSizeCustom) {
        return Text(GetPPDOptionAliasForTicketValue(CFSTR("PageSize"), stock.size()));
    }
    const auto option = CFRef<CFStringRef>::adopt(
        CFStringCreateWithCString(nullptr, CustomSizeOption(stock).c_str(), kCFStringEncodingUTF8));
    const auto numbers = CFRef<CFStringRef>::adopt(PMCopyCustomPaperText(option.get()));
    std::u16string text = Localized(bundle, CFSTR("StockSizeCustom"));
    return numbers ? std::move(text) + u" (" + Text(numbers.get()) + u')' : text;
}

/// The paper's color or type in the PPD's words; what the record does not hold was set beside it.
std::u16string PaperText(CFBundleRef bundle, CFStringRef mainKeyword, SInt32 value) {
    return value == kTicketValueUnset ? Localized(bundle, CFSTR("Unknown Option Set"))
                                      : Text(GetPPDOptionAliasForTicketValue(mainKeyword, value));
}

std::u16string ColorText(CFBundleRef bundle, const Stock& stock) {
    return stock.color() == kStockColorCustom ? Text(stock.customColor())
                                              : PaperText(bundle, CFSTR("MediaColor"), stock.color());
}

std::u16string TypeText(CFBundleRef bundle, const Stock& stock) {
    switch (stock.type()) {
        case kStockTypeOrdered:
            return WithModulus(Text(stock.customType()), stock.modulus());
        case kStockTypePrecutTab:
            return WithModulus(Localized(bundle, CFSTR("StockTypePrecutTab")), stock.modulus());
        case kStockTypeCustom:
            return Text(stock.customType());
        default:
            break;
    }
    std::u16string name = PaperText(bundle, CFSTR("MediaType"), stock.type());
    const bool hasTabs = stock.type() == kStockTypeTabStock || stock.type() == kStockTypeHeavyTabStock;
    return hasTabs && stock.modulus() > 0 ? WithModulus(std::move(name), stock.modulus()) : name;
}

}  // namespace

CFRef<CFStringRef> GenerateStockSummary(CFBundleRef bundle, JobContext context, const Stock& stock,
                                        CFStringRef separator) {
    const bool isJob = context == JobContext::job;
    std::u16string summary;
    const auto addLine = [&](CFStringRef labelKey, const std::u16string& text) {
        if (!summary.empty()) {
            summary += Text(separator);
        }
        summary += Localized(bundle, labelKey) + Localized(bundle, CFSTR(":")) + text;
    };
    if (!stock.customNameOnly()) {
        if (stock.size() != kTicketValueUnset && !isJob) {
            addLine(CFSTR("StockSize"), SizeText(bundle, stock));
        }
        if (stock.color() != kTicketValueUnset || isJob) {
            addLine(CFSTR("StockColor"), ColorText(bundle, stock));
        }
        if (stock.type() != kTicketValueUnset || isJob) {
            addLine(CFSTR("StockType"), TypeText(bundle, stock));
        }
    }
    return CFRef<CFStringRef>::adopt(
        CFStringCreateWithCharacters(kCFAllocatorDefault, summary.data(), static_cast<CFIndex>(summary.size())));
}

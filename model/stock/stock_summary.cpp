#include "model/stock/stock_summary.h"

#include "model/settings/plugin_state.h"
#include "model/settings/ppd_ui_dictionary.h"
#include "model/stock/stock_attributes.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/text.h"

#include <string>
#include <utility>
#include <vector>

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
    const CFRef<CFStringRef> option = makeString(CustomSizeOption(stock));
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

/// The bank of tabs stands with the type.
std::u16string AttributesText(CFBundleRef bundle, const Stock& stock) {
    std::u16string text;
    for (const StockAttributeRow& row : StockAttributes()) {
        const std::u16string words = row.attribute == StockAttribute::tabs
                                         ? std::u16string()
                                         : StockAttributeWords(bundle, row, StockAttributeOf(stock, row));
        text += (text.empty() || words.empty() ? u"" : Localized(bundle, CFSTR("List Comma"))) + words;
    }
    return text;
}

CFRef<CFStringRef> String(const std::u16string& text) {
    return CFRef<CFStringRef>::adopt(
        CFStringCreateWithCharacters(kCFAllocatorDefault, text.data(), static_cast<CFIndex>(text.size())));
}

struct Line {
    CFStringRef labelKey;
    std::u16string text;
};

std::vector<Line> Lines(CFBundleRef bundle, JobContext context, const Stock& stock) {
    const bool isJob = context == JobContext::job;
    std::vector<Line> lines;
    if (stock.size() != kTicketValueUnset && !isJob) {
        lines.push_back({CFSTR("StockSize"), SizeText(bundle, stock)});
    }
    if (stock.color() != kTicketValueUnset || isJob) {
        lines.push_back({CFSTR("StockColor"), ColorText(bundle, stock)});
    }
    if (stock.type() != kTicketValueUnset || isJob) {
        lines.push_back({CFSTR("StockType"), TypeText(bundle, stock)});
    }
    return lines;
}

CFRef<CFStringRef> Joined(const std::vector<std::u16string>& parts, CFStringRef separator) {
    std::u16string all;
    for (const std::u16string& part : parts) {
        all += (all.empty() || part.empty() ? std::u16string() : Text(separator)) + part;
    }
    return String(all);
}

std::vector<std::u16string> LabeledLines(CFBundleRef bundle, JobContext context, const Stock& stock) {
    std::vector<std::u16string> texts;
    if (!stock.customNameOnly()) {
        for (const Line& line : Lines(bundle, context, stock)) {
            texts.push_back(Localized(bundle, line.labelKey) + Localized(bundle, CFSTR(":")) + line.text);
        }
    }
    return texts;
}

}  // namespace

CFRef<CFStringRef> GenerateStockSummary(CFBundleRef bundle, JobContext context, const Stock& stock,
                                        CFStringRef separator) {
    return Joined(LabeledLines(bundle, context, stock), separator);
}

CFRef<CFStringRef> GenerateStockDescription(CFBundleRef bundle, JobContext context, const Stock& stock,
                                            CFStringRef separator) {
    std::vector<std::u16string> parts = LabeledLines(bundle, context, stock);
    if (!ShowsStockDetails()) {
        return Joined(parts, separator);
    }
    if (const std::u16string name = Text(stock.customName()); !name.empty()) {
        parts.insert(parts.begin(), Localized(bundle, CFSTR("StockName")) + Localized(bundle, CFSTR(":")) + name);
    }
    parts.push_back(AttributesText(bundle, stock));
    return Joined(parts, separator);
}

CFRef<CFStringRef> GenerateStockWords(CFBundleRef bundle, const Stock& stock, CFStringRef separator) {
    std::vector<std::u16string> parts;
    for (Line& line : Lines(bundle, JobContext::cover, stock)) {
        parts.push_back(std::move(line.text));
    }
    parts.push_back(AttributesText(bundle, stock));
    return Joined(parts, separator);
}

CFRef<CFStringRef> GenerateStockPart(CFBundleRef bundle, const Stock& stock, StockPart part) {
    switch (part) {
        case StockPart::size:
            return String(stock.size() == kTicketValueUnset ? std::u16string() : SizeText(bundle, stock));
        case StockPart::color:
            return String(stock.color() == kTicketValueUnset ? std::u16string() : ColorText(bundle, stock));
        case StockPart::type:
            break;
    }
    return String(stock.type() == kTicketValueUnset ? std::u16string() : TypeText(bundle, stock));
}

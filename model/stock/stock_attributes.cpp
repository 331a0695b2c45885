#include "model/stock/stock_attributes.h"

#include "model/settings/number_text.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFString.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>

namespace {

// clang-format off
constexpr StockAttributeChoice kCoatedSides[] = {
    // value          option        key of its name
    {kStockUncoated,  "None",       "Stock Uncoated"},
    {2,               "One",        "Stock Coated on One Side"},
    {3,               "Both",       "Stock Coated on Both Sides"},
};
constexpr StockAttributeChoice kCoatings[] = {
    {1,               "Gloss",      "Stock Gloss"},
    {2,               "HighGloss",  "Stock High Gloss"},
    {3,               "Satin",      "Stock Satin"},
    {4,               "Matte",      "Stock Matte"},
};
constexpr StockAttributeChoice kFinishes[] = {
    {1,               "Smooth",     "Stock Smooth"},
    {2,               "Vellum",     "Stock Vellum"},
    {3,               "Linen",      "Stock Linen"},
    {4,               "Laid",       "Stock Laid"},
    {5,               "Felt",       "Stock Felt"},
};
constexpr StockAttributeChoice kGrains[] = {
    {1,               "Long",       "Stock Long Grain"},
    {2,               "Short",      "Stock Short Grain"},
};
constexpr StockAttributeChoice kHoles[] = {
    {1,               "False",      "Stock Without Holes"},
    {kStockPunched,   "True",       "Stock With Holes"},
};

constexpr StockAttributeRow kAttributes[] = {
    // attribute                  main keyword          reader               writer                  choices       from, to
    {StockAttribute::weight,      "TRMediaWeight",      &Stock::weight,      &Stock::setWeight,      {},           40, 400},
    {StockAttribute::coatedSides, "TRMediaCoatedSides", &Stock::sidesCoated, &Stock::setSidesCoated, kCoatedSides, 0, 0},
    {StockAttribute::coating,     "TRMediaCoating",     &Stock::coatingType, &Stock::setCoatingType, kCoatings,    0, 0},
    {StockAttribute::finish,      "TRMediaFinish",      &Stock::finish,      &Stock::setFinish,      kFinishes,    0, 0},
    {StockAttribute::grain,       "TRMediaGrain",       &Stock::grain,       &Stock::setGrain,       kGrains,      0, 0},
    {StockAttribute::holes,       "TRMediaPrepunched",  &Stock::punched,     &Stock::setPunched,     kHoles,       0, 0},
    {StockAttribute::tabs,        "TRMediaTabs",        &Stock::modulus,     &Stock::setModulus,     {},           1, 31},
};
static_assert(std::size(kAttributes) == 7);
// clang-format on

constexpr std::string_view kCustomOption = "Custom.";

const StockAttributeChoice* FindChoice(const StockAttributeRow& row, SInt32 value) {
    const auto found = std::ranges::find(row.choices, value, &StockAttributeChoice::value);
    return found != row.choices.end() ? &*found : nullptr;
}

std::u16string CharactersOf(CFStringRef text) {
    std::u16string characters(static_cast<std::size_t>(CFStringGetLength(text)), u'\0');
    CFStringGetCharacters(text, {0, CFStringGetLength(text)}, characters.data());
    return characters;
}

std::u16string Localized(CFBundleRef bundle, const char* key) {
    return CharactersOf(
        CFRef<CFStringRef>::adopt(CFBundleCopyLocalizedString(bundle, CFStringMakeConstant(key),
                                                              CFSTR("STRING NOT FOUND"), CFSTR("Localizable")))
            .get());
}

}  // namespace

std::span<const StockAttributeRow> StockAttributes() {
    return kAttributes;
}

const StockAttributeRow& StockAttributeRowOf(StockAttribute attribute) {
    return *std::ranges::find(kAttributes, attribute, &StockAttributeRow::attribute);
}

std::string StockAttributeOption(const StockAttributeRow& row, SInt32 value) {
    if (const auto* const choice = FindChoice(row, value)) {
        return choice->option;
    }
    const bool isNumber = row.choices.empty() && value >= row.minimum && value <= row.maximum;
    return isNumber ? std::string(kCustomOption) + std::to_string(value) : kAnyStockOption;
}

SInt32 StockAttributeValue(const StockAttributeRow& row, std::string_view option) {
    const auto choice = std::ranges::find(row.choices, option, &StockAttributeChoice::option);
    if (choice != row.choices.end()) {
        return choice->value;
    }
    SInt32 value = kTicketValueUnset;
    if (row.choices.empty()) {
        // A number that the PPD has among its choices stands there by itself.
        const std::string_view digits = option.substr(option.starts_with(kCustomOption) ? kCustomOption.size() : 0);
        std::from_chars(digits.data(), digits.data() + digits.size(), value);
    }
    return value;
}

std::u16string StockAttributeWords(CFBundleRef bundle, const StockAttributeRow& row, SInt32 value) {
    if (const auto* const choice = FindChoice(row, value)) {
        return Localized(bundle, choice->nameKey);
    }
    if (!row.choices.empty() || value <= 0) {
        return {};
    }
    std::u16string words =
        Localized(bundle, row.attribute == StockAttribute::weight ? "Stock Grams" : "Stock Tabs in Bank");
    const std::size_t place = words.find(u"%d");
    if (place != std::u16string::npos) {
        words.replace(
            place, 2,
            CharactersOf(CFRef<CFStringRef>::adopt(CreateLocalizedCFStringFromNumberWithDecimals(value, 0)).get()));
    }
    return words;
}

SInt32 StockAttributeOf(const Stock& stock, const StockAttributeRow& row) {
    const bool isMissing = row.attribute == StockAttribute::coating &&
                           (stock.sidesCoated() == kTicketValueUnset || stock.sidesCoated() == kStockUncoated);
    return isMissing ? kTicketValueUnset : (stock.*row.get)();
}

// What a production printer wants to know of paper beyond its size, color and type: each attribute with its values, its
// option of the printer's PPD, and the keys of its words in the table "Localizable".
#pragma once

#include "model/stock/stock.h"

#include <span>
#include <string>
#include <string_view>

enum class StockAttribute { weight, coatedSides, coating, finish, grain, holes, tabs };

/// A value that has a name.
struct StockAttributeChoice {
    SInt32 value;
    const char* option;   // of the PPD's main keyword
    const char* nameKey;  // of its name alone, as a menu shows it
};

struct StockAttributeRow {
    StockAttribute attribute;
    const char* mainKeyword;
    SInt32 (Stock::*get)() const;
    void (Stock::*set)(SInt32);
    std::span<const StockAttributeChoice> choices;  // none for a number
    SInt32 minimum;                                 // of a number
    SInt32 maximum;
};

/// All of them, in the order in which people are told of them.
std::span<const StockAttributeRow> StockAttributes();
const StockAttributeRow& StockAttributeRowOf(StockAttribute attribute);

/// The option of each attribute's main keyword that stands for a value that is not set.
inline constexpr const char* kAnyStockOption = "Any";

/// The option that stands for a value: a name, or a number as "Custom.250"; kAnyStockOption where no option does.
std::string StockAttributeOption(const StockAttributeRow& row, SInt32 value);
/// The value that an option stands for; kTicketValueUnset for kAnyStockOption and for one that stands for none.
SInt32 StockAttributeValue(const StockAttributeRow& row, std::string_view option);

/// A value in words: "250 g/m²", "Gloss". Empty for one that is not set or has no name.
[[nodiscard]] std::u16string StockAttributeWords(CFBundleRef bundle, const StockAttributeRow& row, SInt32 value);

/// The stock's value, kTicketValueUnset when it is not set; a coating is one of sides that are coated.
SInt32 StockAttributeOf(const Stock& stock, const StockAttributeRow& row);

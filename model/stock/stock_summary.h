// Paper in a few words, for summaries and lists.
#pragma once

#include "model/stock/stock.h"

/// One text of the stock's size, colour and type, as far as they are set ("Size: A4", "Color: Blue", "Type: Tab Stock
/// (5)"), joined by the separator. The job's own paper shows no size, which is the page setup's matter, but always a
/// colour and a type. Empty for a stock that is known by its name alone.
///
/// Names come from the PPD (model/settings/ppd_ui_dictionary.h), words from the bundle's table "Localizable".
[[nodiscard]] CFRef<CFStringRef> GenerateStockSummary(CFBundleRef bundle, JobContext context, const Stock& stock,
                                                      CFStringRef separator);

/// All that is known of the stock: its name, that summary, and its attributes ("250 g/m², Coated on both sides,
/// Gloss"), each as far as it is set.
[[nodiscard]] CFRef<CFStringRef> GenerateStockDescription(CFBundleRef bundle, JobContext context, const Stock& stock,
                                                          CFStringRef separator);

/// One of its parts, without a label; empty when that is not set.
enum class StockPart { size, color, type };
[[nodiscard]] CFRef<CFStringRef> GenerateStockPart(CFBundleRef bundle, const Stock& stock, StockPart part);

/// What the stock is, with its size and without labels: "A4 (210 x 297 mm), Blue, Card Stock, 250 g/m²".
[[nodiscard]] CFRef<CFStringRef> GenerateStockWords(CFBundleRef bundle, const Stock& stock, CFStringRef separator);

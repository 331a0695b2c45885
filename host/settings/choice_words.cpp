#include "host/settings/choice_words.h"

#include "host/script/text.h"
#include "host/settings/texts.h"

#include <algorithm>
#include <iterator>

namespace {

struct FinishingRow {
    SInt32 first;  // of the numbers that choose its place on the sheet, or way of folding
    SInt32 last;
    const char* text;
};
// clang-format off
constexpr FinishingRow kFinishing[] = {
    // first last text
    {2,      2,   "Finishing Custom"},
    {3,      3,   "Finishing Signature Booklet"},
    {10,     13,  "Finishing 1 Staple"},
    {20,     23,  "Finishing 2 Staples"},
    {30,     33,  "Finishing Center Staple"},
    {40,     40,  "Finishing Bind"},
    {50,     53,  "Finishing 2 Holes"},
    {60,     63,  "Finishing 3 Holes"},
    {70,     73,  "Finishing 4 Holes"},
    {80,     87,  "Finishing Fold"},
    {90,     91,  "Finishing Half Sheet Fold"},
};
static_assert(std::size(kFinishing) == 11);
// clang-format on

constexpr SInt32 kCustomFinishing = 2;
// Several together: two decimal digits for each, behind a one.
constexpr SInt32 kSeveral = 1'000'000;

std::string words(SInt32 finishing, CFBundleRef texts) {
    const auto* const row = std::ranges::find_if(kFinishing, [finishing](const FinishingRow& candidate) {
        return finishing >= candidate.first && finishing <= candidate.last;
    });
    return row == std::end(kFinishing) ? std::string() : utf8(localized(texts, CFStringMakeConstant(row->text)).get());
}

}  // namespace

std::string pagesOf(const PanelChoices::Exception& exception) {
    const std::string first = std::to_string(exception.firstPage);
    return exception.lastPage == exception.firstPage ? first : first + "-" + std::to_string(exception.lastPage);
}

std::string finishingWords(const PanelChoices& choices, CFBundleRef texts) {
    if (choices.finishing == kCustomFinishing && !choices.customFinishing.empty()) {
        return choices.customFinishing;
    }
    if (choices.finishing < kSeveral) {
        return words(choices.finishing, texts);
    }
    std::string all;
    for (SInt32 rest = choices.finishing < 2 * kSeveral ? choices.finishing - kSeveral : 0; rest > 0; rest /= 100) {
        const std::string part = words(rest % 100, texts);
        all += all.empty() || part.empty() ? part : ", " + part;
    }
    return all;
}

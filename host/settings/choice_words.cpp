#include "host/settings/choice_words.h"

#include "driver/job/instruction_values.h"
#include "host/settings/texts.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

constexpr std::string_view kCustom = "tavro-custom";

struct FinishingRow {
    std::string_view
        start;  // of the names of finishings; what follows is the place on the sheet, or the way of folding
    const char* text;
};
// clang-format off
constexpr std::array kFinishings{
    // start                               text
    FinishingRow{kCustom,                  "Finishing Custom"},
    FinishingRow{"booklet-maker",          "Finishing Signature Booklet"},
    FinishingRow{"staple-dual-",           "Finishing 2 Staples"},
    FinishingRow{"staple-",                "Finishing 1 Staple"},
    FinishingRow{"tavro-staple-center-",   "Finishing Center Staple"},
    FinishingRow{"bind-",                  "Finishing Bind"},
    FinishingRow{"punch-dual-",            "Finishing 2 Holes"},
    FinishingRow{"punch-triple-",          "Finishing 3 Holes"},
    FinishingRow{"punch-quad-",            "Finishing 4 Holes"},
    FinishingRow{"tavro-fold-half-z-",     "Finishing Half Sheet Fold"},
    FinishingRow{"tavro-fold-",            "Finishing Fold"},
    FinishingRow{"saddle-stitch",          "Finishing Fold"},
};
// clang-format on

std::string words(const std::string& name, CFBundleRef texts) {
    const auto* const row =
        std::ranges::find_if(kFinishings, [&name](const FinishingRow& each) { return name.starts_with(each.start); });
    return row == kFinishings.end() ? std::string() : utf8Text(localized(texts, CFStringMakeConstant(row->text)).get());
}

}  // namespace

std::string pagesOf(const PageSpan& pages) {
    const std::string first = std::to_string(pages.first);
    return pages.last == pages.first ? first : first + "-" + std::to_string(pages.last);
}

std::string finishingWords(const FinishingInstruction& finishing, CFBundleRef texts) {
    std::string all;
    for (const std::string& name : finishingsOf(finishing.value)) {
        const std::string part = name == kCustom && !finishing.custom.empty() ? finishing.custom : words(name, texts);
        all += all.empty() || part.empty() ? part : ", " + part;
    }
    return all;
}

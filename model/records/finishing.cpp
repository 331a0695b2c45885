#include "model/records/finishing.h"

#include "model/settings/ppd_access.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

constexpr const char* kStaple = kFinishingMainKeywords[0];
constexpr const char* kPunch = kFinishingMainKeywords[1];
constexpr const char* kFold = kFinishingMainKeywords[2];
constexpr const char* kBind = kFinishingMainKeywords[3];
constexpr const char* kBooklet = kFinishingMainKeywords[4];

// clang-format off
constexpr Finishing kFinishings[] = {
    // value                          part                          main keyword option                  name
    {kFinishingValueNone,             FinishingPart::none,          nullptr,     nullptr,                "none"},
    {kFinishingValueCustom,           FinishingPart::none,          kBooklet,    "SquareFold",           "tavro-custom"},
    {kFinishingValueSignatureBooklet, FinishingPart::none,          kBooklet,    "SBM",                  "booklet-maker"},
    {10,                              FinishingPart::staple,        kStaple,     "1StapleTL",            "staple-top-left"},
    {11,                              FinishingPart::staple,        kStaple,     "1StapleTR",            "staple-top-right"},
    {12,                              FinishingPart::staple,        kStaple,     "1StapleBR",            "staple-bottom-right"},
    {13,                              FinishingPart::staple,        kStaple,     "1StapleBL",            "staple-bottom-left"},
    {20,                              FinishingPart::staple,        kStaple,     "2StaplesT",            "staple-dual-top"},
    {21,                              FinishingPart::staple,        kStaple,     "2StaplesR",            "staple-dual-right"},
    {22,                              FinishingPart::staple,        kStaple,     "2StaplesB",            "staple-dual-bottom"},
    {23,                              FinishingPart::staple,        kStaple,     "2StaplesL",            "staple-dual-left"},
    {30,                              FinishingPart::staple,        kStaple,     "1StapleT",             "tavro-staple-center-top"},
    {31,                              FinishingPart::staple,        kStaple,     "1StapleR",             "tavro-staple-center-right"},
    {32,                              FinishingPart::staple,        kStaple,     "1StapleB",             "tavro-staple-center-bottom"},
    {33,                              FinishingPart::staple,        kStaple,     "1StapleL",             "tavro-staple-center-left"},
    {40,                              FinishingPart::none,          kBind,       "BindLeft",             "bind-left"},
    {50,                              FinishingPart::punch,         kPunch,      "2HolePunchL",          "punch-dual-left"},
    {51,                              FinishingPart::punch,         kPunch,      "2HolePunchT",          "punch-dual-top"},
    {52,                              FinishingPart::punch,         kPunch,      "2HolePunchR",          "punch-dual-right"},
    {53,                              FinishingPart::punch,         kPunch,      "2HolePunchB",          "punch-dual-bottom"},
    {60,                              FinishingPart::punch,         kPunch,      "3HolePunchL",          "punch-triple-left"},
    {61,                              FinishingPart::punch,         kPunch,      "3HolePunchT",          "punch-triple-top"},
    {62,                              FinishingPart::punch,         kPunch,      "3HolePunchR",          "punch-triple-right"},
    {63,                              FinishingPart::punch,         kPunch,      "3HolePunchB",          "punch-triple-bottom"},
    {70,                              FinishingPart::punch,         kPunch,      "4HolePunchL",          "punch-quad-left"},
    {71,                              FinishingPart::punch,         kPunch,      "4HolePunchT",          "punch-quad-top"},
    {72,                              FinishingPart::punch,         kPunch,      "4HolePunchR",          "punch-quad-right"},
    {73,                              FinishingPart::punch,         kPunch,      "4HolePunchB",          "punch-quad-bottom"},
    {80,                              FinishingPart::none,          kFold,       "BiFoldMultiple",       "tavro-fold-booklet"},
    {81,                              FinishingPart::none,          kFold,       "BiFoldStapleMultiple", "saddle-stitch"},
    {82,                              FinishingPart::none,          kFold,       "BiFoldSingleInside",   "tavro-fold-half-inside"},
    {83,                              FinishingPart::none,          kFold,       "BiFoldSingleOutside",  "tavro-fold-half-outside"},
    {84,                              FinishingPart::none,          kFold,       "CFoldSingleInside",    "tavro-fold-letter-inside"},
    {85,                              FinishingPart::none,          kFold,       "CFoldSingleOutside",   "tavro-fold-letter-outside"},
    {86,                              FinishingPart::none,          kFold,       "ZFoldSingleInside",    "tavro-fold-z-inside"},
    {87,                              FinishingPart::none,          kFold,       "ZFoldSingleOutside",   "tavro-fold-z-outside"},
    {90,                              FinishingPart::halfSheetFold, kFold,       "ZFoldHalfLeft",        "tavro-fold-half-z-left"},
    {91,                              FinishingPart::halfSheetFold, kFold,       "ZFoldHalfRight",       "tavro-fold-half-z-right"},
};
static_assert(std::size(kFinishings) == 38);
// clang-format on

// Several together: two decimal digits for each part, behind a one that no single row has.
constexpr SInt32 kSeveral = 1'000'000;
constexpr SInt32 kStapleDigits = 1;
constexpr SInt32 kPunchDigits = 100;
constexpr SInt32 kHalfSheetFoldDigits = 10'000;
static_assert(std::ranges::all_of(kFinishings, [](const Finishing& row) { return row.value < 100; }));

/// Whether the value is a row of the part, or 0 for none.
bool IsOfPart(SInt32 value, FinishingPart part) {
    const Finishing* row = FindFinishing(value);
    return value == 0 || (row != nullptr && row->part == part);
}

bool IsOf(const Finishing& row, std::string_view mainKeyword) {
    return row.mainKeyword != nullptr && row.mainKeyword == mainKeyword;
}

/// The row of an option; null for one that is none, and for "None".
const Finishing* FindOption(const char* mainKeyword, CFStringRef option) {
    if (CFEqual(option, CFStringMakeConstant(kNoFinishingOption))) {
        return nullptr;
    }
    const auto* const row = std::ranges::find_if(kFinishings, [=](const Finishing& each) {
        return IsOf(each, mainKeyword) && CFEqual(CFStringMakeConstant(each.option), option);
    });
    return row != std::end(kFinishings) ? row : nullptr;
}

}  // namespace

std::span<const Finishing> Finishings() {
    return kFinishings;
}

const Finishing* FindFinishing(SInt32 value) {
    const auto* const row = std::ranges::find(kFinishings, value, &Finishing::value);
    return row != std::end(kFinishings) ? row : nullptr;
}

SInt32 FinishingValueOf(const MultipleFinishing& parts) {
    const SInt32 count = (parts.staple != 0) + (parts.punch != 0) + (parts.halfSheetFold != 0);
    if (count < 2) {
        return count == 0 ? kFinishingValueNone : parts.staple + parts.punch + parts.halfSheetFold;
    }
    return kSeveral + parts.staple * kStapleDigits + parts.punch * kPunchDigits +
           parts.halfSheetFold * kHalfSheetFoldDigits;
}

std::optional<MultipleFinishing> SplitFinishingValue(SInt32 value) {
    if (const Finishing* row = FindFinishing(value)) {
        switch (row->part) {
            case FinishingPart::staple:
                return MultipleFinishing{.staple = value};
            case FinishingPart::punch:
                return MultipleFinishing{.punch = value};
            case FinishingPart::halfSheetFold:
                return MultipleFinishing{.halfSheetFold = value};
            case FinishingPart::none:
                return std::nullopt;
        }
    }
    const MultipleFinishing parts{value / kStapleDigits % 100, value / kPunchDigits % 100,
                                  value / kHalfSheetFoldDigits % 100};
    const bool isWhole = FinishingValueOf(parts) == value && IsOfPart(parts.staple, FinishingPart::staple) &&
                         IsOfPart(parts.punch, FinishingPart::punch) &&
                         IsOfPart(parts.halfSheetFold, FinishingPart::halfSheetFold);
    return isWhole ? std::optional(parts) : std::nullopt;
}

std::vector<const Finishing*> FinishingsOf(SInt32 value) {
    if (const Finishing* row = FindFinishing(value)) {
        return {row};
    }
    std::vector<const Finishing*> rows;
    if (const auto parts = SplitFinishingValue(value)) {
        for (const SInt32 part : {parts->staple, parts->punch, parts->halfSheetFold}) {
            if (part != 0) {
                rows.push_back(FindFinishing(part));
            }
        }
    }
    return rows;
}

const char* FinishingOptionOf(std::span<const Finishing* const> rows, const char* mainKeyword) {
    const auto row = std::ranges::find_if(rows, [=](const Finishing* each) { return IsOf(*each, mainKeyword); });
    return row != rows.end() ? (*row)->option : kNoFinishingOption;
}

SInt32 ReadPPDFinishing(PMTicketRef ticket) {
    std::vector<const Finishing*> rows;
    for (const char* const mainKeyword : kFinishingMainKeywords) {
        CFStringRef option = nullptr;
        if (PPDGetMainKeywordValue(ticket, CFStringMakeConstant(mainKeyword), &option) != noErr) {
            continue;
        }
        if (const Finishing* row = FindOption(mainKeyword, option)) {
            rows.push_back(row);
        }
    }
    if (rows.size() == 1) {
        return rows.front()->value;
    }
    MultipleFinishing parts;
    for (const Finishing* row : rows) {
        const auto part = SplitFinishingValue(row->value);
        if (!part) {
            return kFinishingValueDefault;
        }
        parts.staple += part->staple;
        parts.punch += part->punch;
        parts.halfSheetFold += part->halfSheetFold;
    }
    return rows.empty() ? kFinishingValueDefault : FinishingValueOf(parts);
}

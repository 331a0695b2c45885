#include "panels/paper_output/finishing_choices.h"

#include "core/installable_options.h"
#include "panels/paper_output/finishing_offset_dialog.h"
#include "ui/localization.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace {

constexpr OSType kOneStaple = FourCharCode("Stp1");
constexpr OSType kTwoStaples = FourCharCode("Stp2");
constexpr OSType kCenterStaple = FourCharCode("CStp");
constexpr OSType kBind = FourCharCode("Bind");
constexpr OSType kTwoHoles = FourCharCode("Hpn2");
constexpr OSType kThreeHoles = FourCharCode("Hpn3");
constexpr OSType kFourHoles = FourCharCode("Hpn4");
constexpr OSType kHalfSheetFold = FourCharCode("Zfol");

// clang-format off
constexpr FinishingKind kKinds[] = {
    // command                    part                          text in the menu         name
    {kFinishingDefault,           FinishingPart::none,          "Printer Default",       "Printer Default"},
    {kFinishingNone,              FinishingPart::none,          "None",                  "None"},
    {kOneStaple,                  FinishingPart::staple,        "1 Staple...",           "Finishing Name 1 Staple"},
    {kTwoStaples,                 FinishingPart::staple,        "2 Staples...",          "Finishing Name 2 Staples"},
    {kCenterStaple,               FinishingPart::staple,        "Center Staple...",      "Finishing Name Center Staple"},
    {kBind,                       FinishingPart::none,          "Bind...",               "Finishing Name Bind"},
    {kTwoHoles,                   FinishingPart::punch,         "2 Hole Punch...",       "Finishing Name 2 Hole Punch"},
    {kThreeHoles,                 FinishingPart::punch,         "3 Hole Punch...",       "Finishing Name 3 Hole Punch"},
    {kFourHoles,                  FinishingPart::punch,         "4 Hole Punch...",       "Finishing Name 4 Hole Punch"},
    {kFinishingFold,              FinishingPart::none,          "Fold...",               "Finishing Name Fold"},
    {kHalfSheetFold,              FinishingPart::halfSheetFold, "Z Fold Half Sheet...",  "Finishing Name Z Fold Half Sheet"},
    {kFinishingMultiple,          FinishingPart::none,          "Multiple Finishing...", "Finishing Name Multiple"},
    {kFinishingSignatureBooklet,  FinishingPart::none,          "SignatureBooklet",      "SignatureBooklet"},
    {kFinishingCustom,            FinishingPart::none,          "Custom...",             "Finishing Name Custom"},
};
static_assert(std::size(kKinds) == 14);

constexpr FinishingChoice kChoices[] = {
    // value                          kind                         feature                 position                         picture
    {kFinishingValueDefault,          kFinishingDefault,           nullptr,                nullptr,                         nullptr},
    {kFinishingValueNone,             kFinishingNone,              nullptr,                nullptr,                         nullptr},
    {kFinishingValueCustom,           kFinishingCustom,            "Custom",               nullptr,                         nullptr},
    {kFinishingValueSignatureBooklet, kFinishingSignatureBooklet,  "SBM",                  nullptr,                         nullptr},
    {10,                              kOneStaple,                  "1StapleTL",            "Finishing Top Left",            "Finishing/1StapleTL.gif"},
    {11,                              kOneStaple,                  "1StapleTR",            "Finishing Top Right",           "Finishing/1StapleTR.gif"},
    {12,                              kOneStaple,                  "1StapleBR",            "Finishing Bottom Right",        "Finishing/1StapleBR.gif"},
    {13,                              kOneStaple,                  "1StapleBL",            "Finishing Bottom Left",         "Finishing/1StapleBL.gif"},
    {20,                              kTwoStaples,                 "2StaplesT",            "Finishing Top",                 "Finishing/2StaplesT.gif"},
    {21,                              kTwoStaples,                 "2StaplesR",            "Finishing Right",               "Finishing/2StaplesR.gif"},
    {22,                              kTwoStaples,                 "2StaplesB",            "Finishing Bottom",              "Finishing/2StaplesB.gif"},
    {23,                              kTwoStaples,                 "2StaplesL",            "Finishing Left",                "Finishing/2StaplesL.gif"},
    {30,                              kCenterStaple,               "1StapleT",             "Finishing Top",                 "Finishing/1StapleT.gif"},
    {31,                              kCenterStaple,               "1StapleR",             "Finishing Right",               "Finishing/1StapleR.gif"},
    {32,                              kCenterStaple,               "1StapleB",             "Finishing Bottom",              "Finishing/1StapleB.gif"},
    {33,                              kCenterStaple,               "1StapleL",             "Finishing Left",                "Finishing/1StapleL.gif"},
    {40,                              kBind,                       "BindLeft",             "Finishing Left",                "Finishing/BindLeft.gif"},
    {50,                              kTwoHoles,                   "2HolePunchL",          "Finishing Left",                "Finishing/2HolePunchL.gif"},
    {51,                              kTwoHoles,                   "2HolePunchT",          "Finishing Top",                 "Finishing/2HolePunchT.gif"},
    {52,                              kTwoHoles,                   "2HolePunchR",          "Finishing Right",               "Finishing/2HolePunchR.gif"},
    {53,                              kTwoHoles,                   "2HolePunchB",          "Finishing Bottom",              "Finishing/2HolePunchB.gif"},
    {60,                              kThreeHoles,                 "3HolePunchL",          "Finishing Left",                "Finishing/3HolePunchL.gif"},
    {61,                              kThreeHoles,                 "3HolePunchT",          "Finishing Top",                 "Finishing/3HolePunchT.gif"},
    {62,                              kThreeHoles,                 "3HolePunchR",          "Finishing Right",               "Finishing/3HolePunchR.gif"},
    {63,                              kThreeHoles,                 "3HolePunchB",          "Finishing Bottom",              "Finishing/3HolePunchB.gif"},
    {70,                              kFourHoles,                  "4HolePunchL",          "Finishing Left",                "Finishing/4HolePunchL.gif"},
    {71,                              kFourHoles,                  "4HolePunchT",          "Finishing Top",                 "Finishing/4HolePunchT.gif"},
    {72,                              kFourHoles,                  "4HolePunchR",          "Finishing Right",               "Finishing/4HolePunchR.gif"},
    {73,                              kFourHoles,                  "4HolePunchB",          "Finishing Bottom",              "Finishing/4HolePunchB.gif"},
    {80,                              kFinishingFold,              "BiFoldMultiple",       "Finishing Booklet Fold",        "Finishing/BiFoldMultiple.gif"},
    {81,                              kFinishingFold,              "BiFoldStapleMultiple", "Finishing Booklet Fold Staple", "Finishing/BiFoldStapleMultiple.gif"},
    {82,                              kFinishingFold,              "BiFoldSingleInside",   "Finishing Half Fold Inside",    "Finishing/BiFoldSingleInside.gif"},
    {83,                              kFinishingFold,              "BiFoldSingleOutside",  "Finishing Half Fold Outside",   "Finishing/BiFoldSingleOutside.gif"},
    {84,                              kFinishingFold,              "CFoldSingleInside",    "Finishing C Fold Inside",       "Finishing/CFoldSingleInside.gif"},
    {85,                              kFinishingFold,              "CFoldSingleOutside",   "Finishing C Fold Outside",      "Finishing/CFoldSingleOutside.gif"},
    {86,                              kFinishingFold,              "ZFoldSingleInside",    "Finishing Z Fold Inside",       "Finishing/ZFoldSingleInside.gif"},
    {87,                              kFinishingFold,              "ZFoldSingleOutside",   "Finishing Z Fold Outside",      "Finishing/ZFoldSingleOutside.gif"},
    {90,                              kHalfSheetFold,              "ZFoldHalfLeft",        "Finishing Left",                "Finishing/ZFoldHalfLeft.gif"},
    {91,                              kHalfSheetFold,              "ZFoldHalfRight",       "Finishing Right",               "Finishing/ZFoldHalfRight.gif"},
};
static_assert(std::size(kChoices) == 39);
// clang-format on

// Several together: two decimal digits for each part, behind a one that no single choice has.
constexpr SInt32 kSeveral = 1'000'000;
constexpr SInt32 kStapleDigits = 1;
constexpr SInt32 kPunchDigits = 100;
constexpr SInt32 kHalfSheetFoldDigits = 10'000;
static_assert(std::ranges::all_of(kChoices, [](const FinishingChoice& choice) { return choice.value < 100; }));

FinishingPart PartOf(const FinishingChoice& choice) {
    return FindFinishingKind(choice.kind)->part;
}

bool IsInstalled(const FinishingChoice& choice) {
    return choice.feature == nullptr || getInstalledFeature(CFStringMakeConstant(choice.feature));
}

bool IsAnyInstalled(FinishingPart part) {
    return std::ranges::any_of(
        kChoices, [part](const FinishingChoice& choice) { return PartOf(choice) == part && IsInstalled(choice); });
}

bool IsAnyInstalled(OSType kind) {
    return std::ranges::any_of(
        kChoices, [kind](const FinishingChoice& choice) { return choice.kind == kind && IsInstalled(choice); });
}

/// Whether the value is a choice of the part, or 0 for none.
bool IsOfPart(SInt32 value, FinishingPart part) {
    const FinishingChoice* choice = FindFinishingChoice(value);
    return value == 0 || (choice != nullptr && PartOf(*choice) == part);
}

// ---- In words

std::u16string Text(CFStringRef string) {
    const CFIndex length = string != nullptr ? CFStringGetLength(string) : 0;
    std::u16string text(static_cast<std::size_t>(length), u'\0');
    if (length > 0) {
        CFStringGetCharacters(string, {0, length}, text.data());
    }
    return text;
}

CFRef<CFStringRef> CopyString(const std::u16string& text) {
    return CFRef<CFStringRef>::adopt(
        CFStringCreateWithCharacters(kCFAllocatorDefault, text.data(), static_cast<CFIndex>(text.size())));
}

class Words {
public:
    explicit Words(CFBundleRef bundle) : bundle_(bundle) {}

    std::u16string operator()(const char* key) const {
        return Text(CopyLocalizedText(bundle_, CFStringMakeConstant(key)).get());
    }
    /// A choice: its kind, and which of the kind's.
    std::u16string operator()(const FinishingChoice& choice) const {
        const std::u16string name = (*this)(FindFinishingKind(choice.kind)->name);
        return choice.position != nullptr ? name + (*this)(":") + (*this)(choice.position) : name;
    }

private:
    CFBundleRef bundle_;
};

std::u16string FinishingText(const Words& words, const FinishingSettings& settings) {
    const FinishingChoice* choice = FindFinishingChoice(settings.options);
    if (choice != nullptr) {
        const std::u16string custom =
            choice->value == kFinishingValueCustom ? Text(settings.custom.get()) : std::u16string();
        return custom.empty() ? words(*choice) : words(*choice) + words(":") + custom;
    }
    const auto parts = SplitFinishingValue(settings.options);
    if (!parts) {
        return words(*FindFinishingChoice(kFinishingValueDefault));
    }
    std::u16string text;
    for (const SInt32 value : {parts->staple, parts->punch, parts->halfSheetFold}) {
        if (value != 0) {
            text += (text.empty() ? u"" : u"\n") + words(*FindFinishingChoice(value));
        }
    }
    return text;
}

std::u16string OffsetText(const Words& words, const FinishingSettings& settings) {
    switch (OffsetItem(settings)) {
        case kOffsetItemSets:
            return u"\n" + words("Finishing Offset Sets");
        case kOffsetItemSubsets: {
            const std::string pages = std::to_string(ShownPagesPerSubset(settings));
            return u"\n" + words("Finishing Offset Subsets") + words(":") + std::u16string(pages.begin(), pages.end());
        }
        default:
            return {};
    }
}

}  // namespace

std::span<const FinishingKind> FinishingKinds() {
    return kKinds;
}

std::span<const FinishingChoice> FinishingChoices() {
    return kChoices;
}

const FinishingKind* FindFinishingKind(OSType command) {
    const auto* kind = std::ranges::find(kKinds, command, &FinishingKind::command);
    return kind != std::end(kKinds) ? kind : nullptr;
}

const FinishingChoice* FindFinishingChoice(SInt32 value) {
    const auto* choice = std::ranges::find(kChoices, value, &FinishingChoice::value);
    return choice != std::end(kChoices) ? choice : nullptr;
}

std::vector<const FinishingChoice*> InstalledFinishingChoices(OSType kind) {
    std::vector<const FinishingChoice*> installed;
    for (const FinishingChoice& choice : kChoices) {
        if (choice.kind == kind && IsInstalled(choice)) {
            installed.push_back(&choice);
        }
    }
    return installed;
}

std::vector<const FinishingChoice*> InstalledFinishingChoices(FinishingPart part) {
    std::vector<const FinishingChoice*> installed;
    for (const FinishingChoice& choice : kChoices) {
        if (PartOf(choice) == part && IsInstalled(choice)) {
            installed.push_back(&choice);
        }
    }
    return installed;
}

bool IsFinishingOffered(OSType kind) {
    switch (kind) {
        case kFinishingMultiple:
            return IsAnyInstalled(FinishingPart::staple) + IsAnyInstalled(FinishingPart::punch) +
                       IsAnyInstalled(FinishingPart::halfSheetFold) >=
                   2;
        case kFinishingCustom:
            return IsAnyInstalled(kFinishingCustom) && !IsAnyInstalled(kFinishingSignatureBooklet);
        default:
            return IsAnyInstalled(kind);
    }
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
    if (const FinishingChoice* choice = FindFinishingChoice(value)) {
        switch (PartOf(*choice)) {
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

CFRef<CFStringRef> CopyFinishingChoiceText(CFBundleRef bundle, const FinishingChoice& choice) {
    return CopyString(Words(bundle)(choice));
}

OSType FinishingKindOfValue(SInt32 value) {
    if (const FinishingChoice* choice = FindFinishingChoice(value)) {
        return choice->kind;
    }
    return SplitFinishingValue(value) ? kFinishingMultiple : kFinishingDefault;
}

void CreateFinishingString(CFBundleRef bundle, const FinishingSettings& settings, CFStringRef* text) {
    const Words words(bundle);
    std::u16string lines = FinishingText(words, settings);
    if (settings.slipSheet == kSlipSheetsOn) {
        lines += u"\n" + words("Slip Sheets");
    }
    lines += OffsetText(words, settings);
    *text = CopyString(lines).leak();
}

#include "panels/paper_output/finishing_choices.h"

#include "core/features/installable_options.h"
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
    // command                    text in the menu         name
    {kFinishingDefault,           "Printer Default",       "Printer Default"},
    {kFinishingNone,              "None",                  "None"},
    {kOneStaple,                  "1 Staple...",           "Finishing Name 1 Staple"},
    {kTwoStaples,                 "2 Staples...",          "Finishing Name 2 Staples"},
    {kCenterStaple,               "Center Staple...",      "Finishing Name Center Staple"},
    {kBind,                       "Bind...",               "Finishing Name Bind"},
    {kTwoHoles,                   "2 Hole Punch...",       "Finishing Name 2 Hole Punch"},
    {kThreeHoles,                 "3 Hole Punch...",       "Finishing Name 3 Hole Punch"},
    {kFourHoles,                  "4 Hole Punch...",       "Finishing Name 4 Hole Punch"},
    {kFinishingFold,              "Fold...",               "Finishing Name Fold"},
    {kHalfSheetFold,              "Z Fold Half Sheet...",  "Finishing Name Z Fold Half Sheet"},
    {kFinishingMultiple,          "Multiple Finishing...", "Finishing Name Multiple"},
    {kFinishingSignatureBooklet,  "SignatureBooklet",      "SignatureBooklet"},
    {kFinishingCustom,            "Custom...",             "Finishing Name Custom"},
};
static_assert(std::size(kKinds) == 14);

constexpr FinishingChoice kChoices[] = {
    // value                          kind                         position                         picture
    {kFinishingValueDefault,          kFinishingDefault,           nullptr,                         nullptr},
    {kFinishingValueNone,             kFinishingNone,              nullptr,                         nullptr},
    {kFinishingValueCustom,           kFinishingCustom,            nullptr,                         nullptr},
    {kFinishingValueSignatureBooklet, kFinishingSignatureBooklet,  nullptr,                         nullptr},
    {10,                              kOneStaple,                  "Finishing Top Left",            "Finishing/1StapleTL.gif"},
    {11,                              kOneStaple,                  "Finishing Top Right",           "Finishing/1StapleTR.gif"},
    {12,                              kOneStaple,                  "Finishing Bottom Right",        "Finishing/1StapleBR.gif"},
    {13,                              kOneStaple,                  "Finishing Bottom Left",         "Finishing/1StapleBL.gif"},
    {20,                              kTwoStaples,                 "Finishing Top",                 "Finishing/2StaplesT.gif"},
    {21,                              kTwoStaples,                 "Finishing Right",               "Finishing/2StaplesR.gif"},
    {22,                              kTwoStaples,                 "Finishing Bottom",              "Finishing/2StaplesB.gif"},
    {23,                              kTwoStaples,                 "Finishing Left",                "Finishing/2StaplesL.gif"},
    {30,                              kCenterStaple,               "Finishing Top",                 "Finishing/1StapleT.gif"},
    {31,                              kCenterStaple,               "Finishing Right",               "Finishing/1StapleR.gif"},
    {32,                              kCenterStaple,               "Finishing Bottom",              "Finishing/1StapleB.gif"},
    {33,                              kCenterStaple,               "Finishing Left",                "Finishing/1StapleL.gif"},
    {40,                              kBind,                       "Finishing Left",                "Finishing/BindLeft.gif"},
    {50,                              kTwoHoles,                   "Finishing Left",                "Finishing/2HolePunchL.gif"},
    {51,                              kTwoHoles,                   "Finishing Top",                 "Finishing/2HolePunchT.gif"},
    {52,                              kTwoHoles,                   "Finishing Right",               "Finishing/2HolePunchR.gif"},
    {53,                              kTwoHoles,                   "Finishing Bottom",              "Finishing/2HolePunchB.gif"},
    {60,                              kThreeHoles,                 "Finishing Left",                "Finishing/3HolePunchL.gif"},
    {61,                              kThreeHoles,                 "Finishing Top",                 "Finishing/3HolePunchT.gif"},
    {62,                              kThreeHoles,                 "Finishing Right",               "Finishing/3HolePunchR.gif"},
    {63,                              kThreeHoles,                 "Finishing Bottom",              "Finishing/3HolePunchB.gif"},
    {70,                              kFourHoles,                  "Finishing Left",                "Finishing/4HolePunchL.gif"},
    {71,                              kFourHoles,                  "Finishing Top",                 "Finishing/4HolePunchT.gif"},
    {72,                              kFourHoles,                  "Finishing Right",               "Finishing/4HolePunchR.gif"},
    {73,                              kFourHoles,                  "Finishing Bottom",              "Finishing/4HolePunchB.gif"},
    {80,                              kFinishingFold,              "Finishing Booklet Fold",        "Finishing/BiFoldMultiple.gif"},
    {81,                              kFinishingFold,              "Finishing Booklet Fold Staple", "Finishing/BiFoldStapleMultiple.gif"},
    {82,                              kFinishingFold,              "Finishing Half Fold Inside",    "Finishing/BiFoldSingleInside.gif"},
    {83,                              kFinishingFold,              "Finishing Half Fold Outside",   "Finishing/BiFoldSingleOutside.gif"},
    {84,                              kFinishingFold,              "Finishing C Fold Inside",       "Finishing/CFoldSingleInside.gif"},
    {85,                              kFinishingFold,              "Finishing C Fold Outside",      "Finishing/CFoldSingleOutside.gif"},
    {86,                              kFinishingFold,              "Finishing Z Fold Inside",       "Finishing/ZFoldSingleInside.gif"},
    {87,                              kFinishingFold,              "Finishing Z Fold Outside",      "Finishing/ZFoldSingleOutside.gif"},
    {90,                              kHalfSheetFold,              "Finishing Left",                "Finishing/ZFoldHalfLeft.gif"},
    {91,                              kHalfSheetFold,              "Finishing Right",               "Finishing/ZFoldHalfRight.gif"},
};
static_assert(std::size(kChoices) == 39);
// clang-format on

FinishingPart PartOf(const FinishingChoice& choice) {
    const Finishing* row = FindFinishing(choice.value);
    return row != nullptr ? row->part : FinishingPart::none;
}

bool IsInstalled(const FinishingChoice& choice) {
    const char* const feature = FeatureOf(choice);
    return feature == nullptr || getInstalledFeature(CFStringMakeConstant(feature));
}

bool IsAnyInstalled(FinishingPart part) {
    return std::ranges::any_of(
        kChoices, [part](const FinishingChoice& choice) { return PartOf(choice) == part && IsInstalled(choice); });
}

bool IsAnyInstalled(OSType kind) {
    return std::ranges::any_of(
        kChoices, [kind](const FinishingChoice& choice) { return choice.kind == kind && IsInstalled(choice); });
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

/// Features are called as options are. But no option of a PPD can be "Custom", which CUPS has for values that users
/// type.
const char* FeatureOf(const FinishingChoice& choice) {
    if (choice.value == kFinishingValueCustom) {
        return "Custom";
    }
    const Finishing* row = FindFinishing(choice.value);
    return row != nullptr ? row->option : nullptr;
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

#include "driver/instructions/read_color.h"

#include "driver/instructions/ticket_values.h"
#include "model/records/color_choices.h"
#include "model/records/full_color_options.h"
#include "model/settings/ticket_items.h"

#include <algorithm>
#include <array>

namespace {

using Options = FullColorOptions;

const std::string kCustomOption = "Custom.";
constexpr SInt32 kMostTrapping = 20;

struct NumberRow {
    const char* name;
    const char* mainKeyword;
    OSStatus (Options::*get)(SInt32* value) const;
};
struct CastRow {
    const char* name;
    const char* mainKeyword;
};
struct ChoiceRow {
    const char* name;
    const char* mainKeyword;
    std::span<const ColorChoice> (*choices)();
    OSStatus (Options::*get)(SInt32* value) const;
};
struct ProfileRow {
    const char* name;
    std::span<const ColorChoice> (*choices)();
    SInt32 namedKind;
    OSStatus (Options::*get)(SInt32* kind, CFStringRef* name) const;
};
struct NameRow {
    const char* name;
    OSStatus (Options::*get)(CFStringRef* name) const;
};

// clang-format off
constexpr NumberRow kNumbers[] = {
    // name, main keyword, record
    {"tavro-lightness",  "TRLightness",   &Options::lightness},
    {"tavro-contrast",   "TRContrast",    &Options::contrast},
    {"tavro-saturation", "JCLSaturation", &Options::saturation},
};
constexpr CastRow kCasts[] = {
    // name, main keyword
    {"tavro-cyan-red",      "TRCyanRed"},
    {"tavro-magenta-green", "TRMagentaGreen"},
    {"tavro-yellow-blue",   "TRYellowBlue"},
};
constexpr ChoiceRow kChoices[] = {
    // name, main keyword, choices, record
    {"tavro-trapping",                  "JCLTrapping",         TrappingChoices,       &Options::trapping},
    {"tavro-black-overprint",           "JCLBlackOverprint",   BlackOverprintChoices, &Options::blackOverprint},
    {"tavro-images-rendering-intent",   "JCLImageRendering",   RenderingChoices,      &Options::imageObjectRendering},
    {"tavro-text-rendering-intent",     "JCLTextRendering",    RenderingChoices,      &Options::textObjectRendering},
    {"tavro-graphics-rendering-intent", "JCLGraphicRendering", RenderingChoices,      &Options::graphicObjectRendering},
};
// name, choices, kind with a name, record
constexpr ProfileRow kProfiles[] = {
    {"tavro-rgb-images-profile",  RGBProfileChoices,         kNamedRGBProfile,         &Options::rgbImagesProfile},
    {"tavro-rgb-text-profile",    RGBProfileChoices,         kNamedRGBProfile,         &Options::rgbTextAndGraphicsProfile},
    {"tavro-cmyk-images-profile", CMYKProfileChoices,        kNamedCMYKProfile,        &Options::cmykImagesProfile},
    {"tavro-cmyk-text-profile",   CMYKProfileChoices,        kNamedCMYKProfile,        &Options::cmykTextAndGraphicsProfile},
    {"tavro-destination-profile", DestinationProfileChoices, kNamedDestinationProfile, &Options::destinationProfile},
};
// name, record
constexpr NameRow kNames[] = {
    {"tavro-gray-images-profile", &Options::grayImagesProfile},
    {"tavro-gray-text-profile",   &Options::grayTextAndGraphicsProfile},
    {"tavro-tone-curve",          &Options::trc},
};
// clang-format on

/// A number that has no word is its own, and has no option.
ColorInstruction instructionOf(const char* name, std::span<const ColorChoice> choices, SInt32 value) {
    const auto choice = std::ranges::find(choices, value, &ColorChoice::ticketValue);
    return choice != choices.end() ? ColorInstruction{name, choice->word, {}, choice->option}
                                   : ColorInstruction{name, std::to_string(value), {}, {}};
}

class Reader {
public:
    explicit Reader(const Options& options) : options_(options) {}

    std::vector<ColorInstruction> read() {
        for (const NumberRow& row : kNumbers) {
            SInt32 value = kTicketValueUnset;
            (options_.*row.get)(&value);
            addNumber(row.name, row.mainKeyword, value);
        }
        readCast();
        for (const ProfileRow& row : kProfiles) {
            SInt32 kind = kTicketValueUnset;
            CFStringRef name = nullptr;
            (options_.*row.get)(&kind, &name);
            add(kind == row.namedKind ? ColorInstruction{row.name, utf8Text(name), {}, {}}
                                      : instructionOf(row.name, row.choices(), kind));
        }
        for (const NameRow& row : kNames) {
            CFStringRef name = nullptr;
            (options_.*row.get)(&name);
            add({row.name, utf8Text(name), {}, {}});
        }
        for (const ChoiceRow& row : kChoices) {
            SInt32 value = kTicketValueUnset;
            (options_.*row.get)(&value);
            add(instructionOf(row.name, row.choices(), value), row.mainKeyword);
        }
        readTrapping();
        return std::move(all_);
    }

private:
    void add(ColorInstruction color, const char* mainKeyword = "") {
        if (!color.value.empty()) {
            color.mainKeyword = color.option.empty() ? "" : mainKeyword;
            all_.push_back(std::move(color));
        }
    }
    /// A number of another edition has no option.
    void addNumber(const char* name, const char* mainKeyword, SInt32 value, SInt32 least = -100, SInt32 most = 100) {
        if (value != kTicketValueUnset) {
            const std::string number = std::to_string(value);
            add({name, number, {}, value >= least && value <= most ? kCustomOption + number : ""}, mainKeyword);
        }
    }

    /// Its axes are set together.
    void readCast() {
        std::array cast{kTicketValueUnset, kTicketValueUnset, kTicketValueUnset};
        options_.colorCast(&cast[0], &cast[1], &cast[2]);
        for (std::size_t i = 0; i < cast.size() && std::ranges::count(cast, kTicketValueUnset) == 0; ++i) {
            addNumber(kCasts[i].name, kCasts[i].mainKeyword, cast[i]);
        }
    }

    void readTrapping() {
        SInt32 trapping = kTicketValueUnset;
        SInt32 slow = kTicketValueUnset;
        SInt32 fast = kTicketValueUnset;
        options_.trapping(&trapping);
        options_.trappingAdjustment(&slow, &fast);
        if (trapping == kAdjustedTrapping) {
            addNumber("tavro-trapping-fast", "JCLTrapFast", fast, 0, kMostTrapping);
            addNumber("tavro-trapping-slow", "JCLTrapSlow", slow, 0, kMostTrapping);
        }
    }

    const Options& options_;
    std::vector<ColorInstruction> all_;
};

}  // namespace

std::vector<ColorInstruction> readColors(PMTicketRef printSettings) {
    const CFDictionaryRef dictionary = dictionaryOf(printSettings, kFullColorOptionsItem);
    return dictionary == nullptr ? std::vector<ColorInstruction>() : Reader(FullColorOptions(dictionary)).read();
}

std::vector<ColorInstruction> readColorOptions(PMTicketRef printSettings) {
    std::vector<ColorInstruction> all;
    const auto add = [&](const char* name, const char* mainKeyword) {
        const std::string option = choiceOf(printSettings, CFStringMakeConstant(mainKeyword));
        if (option.starts_with(kCustomOption)) {
            all.push_back({name, option.substr(kCustomOption.size()), mainKeyword, option});
        }
    };
    for (const NumberRow& row : kNumbers) {
        add(row.name, row.mainKeyword);
    }
    for (const CastRow& row : kCasts) {
        add(row.name, row.mainKeyword);
    }
    return all;
}

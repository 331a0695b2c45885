#include "driver/instructions/read_color.h"

#include "driver/instructions/ticket_values.h"
#include "model/color_choices.h"
#include "model/full_color_options.h"
#include "model/ticket_items.h"

#include <algorithm>
#include <array>

namespace {

using Options = FullColorOptions;

struct NumberRow {
    const char* name;
    OSStatus (Options::*get)(SInt32* value) const;
};
struct ChoiceRow {
    const char* name;
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
// name, record
constexpr NumberRow kNumbers[] = {
    {"tavro-lightness",  &Options::lightness},
    {"tavro-contrast",   &Options::contrast},
    {"tavro-saturation", &Options::saturation},
};
// name, choices, record
constexpr ChoiceRow kChoices[] = {
    {"tavro-trapping",                  TrappingChoices,       &Options::trapping},
    {"tavro-black-overprint",           BlackOverprintChoices, &Options::blackOverprint},
    {"tavro-images-rendering-intent",   RenderingChoices,      &Options::imageObjectRendering},
    {"tavro-text-rendering-intent",     RenderingChoices,      &Options::textObjectRendering},
    {"tavro-graphics-rendering-intent", RenderingChoices,      &Options::graphicObjectRendering},
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

std::string wordOf(std::span<const ColorChoice> choices, SInt32 value) {
    const auto choice = std::ranges::find(choices, value, &ColorChoice::ticketValue);
    return choice != choices.end() ? choice->word : std::to_string(value);
}

class Reader {
public:
    explicit Reader(const Options& options) : options_(options) {}

    std::vector<ColorInstruction> read() {
        for (const NumberRow& row : kNumbers) {
            SInt32 value = kTicketValueUnset;
            (options_.*row.get)(&value);
            add(row.name, value);
        }
        readCast();
        for (const ProfileRow& row : kProfiles) {
            SInt32 kind = kTicketValueUnset;
            CFStringRef name = nullptr;
            (options_.*row.get)(&kind, &name);
            add(row.name, kind == row.namedKind ? utf8Text(name) : wordOf(row.choices(), kind));
        }
        for (const NameRow& row : kNames) {
            CFStringRef name = nullptr;
            (options_.*row.get)(&name);
            add(row.name, utf8Text(name));
        }
        for (const ChoiceRow& row : kChoices) {
            SInt32 value = kTicketValueUnset;
            (options_.*row.get)(&value);
            add(row.name, wordOf(row.choices(), value));
        }
        readTrapping();
        return std::move(all_);
    }

private:
    void add(const char* name, const std::string& value) {
        if (!value.empty()) {
            all_.push_back({name, value});
        }
    }
    void add(const char* name, SInt32 value) {
        add(name, value == kTicketValueUnset ? std::string() : std::to_string(value));
    }

    /// Its axes are set together.
    void readCast() {
        SInt32 cyanRed = kTicketValueUnset;
        SInt32 magentaGreen = kTicketValueUnset;
        SInt32 yellowBlue = kTicketValueUnset;
        options_.colorCast(&cyanRed, &magentaGreen, &yellowBlue);
        if (std::ranges::count(std::array{cyanRed, magentaGreen, yellowBlue}, kTicketValueUnset) == 0) {
            add("tavro-cyan-red", cyanRed);
            add("tavro-magenta-green", magentaGreen);
            add("tavro-yellow-blue", yellowBlue);
        }
    }

    void readTrapping() {
        SInt32 trapping = kTicketValueUnset;
        SInt32 slow = kTicketValueUnset;
        SInt32 fast = kTicketValueUnset;
        options_.trapping(&trapping);
        options_.trappingAdjustment(&slow, &fast);
        if (trapping == kAdjustedTrapping) {
            add("tavro-trapping-fast", fast);
            add("tavro-trapping-slow", slow);
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

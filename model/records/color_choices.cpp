#include "model/records/color_choices.h"

#include "model/records/full_color_options.h"

namespace {

// clang-format off
// The first three number the spaces as the option map of JCLRGBColorSpace does.
constexpr ColorChoice kRGBProfiles[] = {
    // key               ticket value         word
    {"PrinterDefault",   kTicketValueUnset,   ""},
    {"ColorTavroRGB",    1,                   "tavro-rgb"},
    {"ColorSRGB",        2,                   "srgb"},
    {"ColorAppleRGB",    3,                   "apple-rgb"},
    {"ColorUnchanged",   4,                   "none"},
    {"ColorNamed",       kNamedRGBProfile,    ""},
};
constexpr ColorChoice kCMYKProfiles[] = {
    // key               ticket value         word
    {"PrinterDefault",   kTicketValueUnset,   ""},
    {"ColorAsPress",     1,                   "press"},
    {"ColorUnchanged",   2,                   "none"},
    {"ColorNamed",       kNamedCMYKProfile,   ""},
};
constexpr ColorChoice kDestinationProfiles[] = {
    // key               ticket value         word
    {"PrinterDefault",   kTicketValueUnset,   ""},
    {"ColorOfPaper",     1,                   "paper"},
    {"ColorNamed",       kNamedDestinationProfile, ""},
};
// As profiles number them.
constexpr ColorChoice kRenderings[] = {
    // key               ticket value         word                 option
    {"PrinterDefault",   kTicketValueUnset,   "",                  ""},
    {"ColorPerceptual",  0,                   "perceptual",        "Perceptual"},
    {"ColorRelative",    1,                   "relative",          "Relative"},
    {"ColorSaturation",  2,                   "saturation",        "Saturation"},
    {"ColorAbsolute",    3,                   "absolute",          "Absolute"},
};
constexpr ColorChoice kTrappings[] = {
    // key               ticket value         word                 option
    {"PrinterDefault",   kTicketValueUnset,   "",                  ""},
    {"ColorOff",         0,                   "off",               "Off"},
    {"ColorTrapNormal",  2,                   "normal",            "Normal"},
    {"ColorTrapAdjusted", kAdjustedTrapping,  "adjusted",          "Adjusted"},
};
constexpr ColorChoice kBlackOverprints[] = {
    // key               ticket value         word                 option
    {"PrinterDefault",   kTicketValueUnset,   "",                  ""},
    {"ColorOff",         0,                   "off",               "Off"},
    {"ColorOverprintText", 1,                 "text",              "Text"},
    {"ColorOverprintAll", 2,                  "text-and-graphics", "TextAndGraphics"},
};
// clang-format on

}  // namespace

std::span<const ColorChoice> RGBProfileChoices() {
    return kRGBProfiles;
}

std::span<const ColorChoice> CMYKProfileChoices() {
    return kCMYKProfiles;
}

std::span<const ColorChoice> DestinationProfileChoices() {
    return kDestinationProfiles;
}

std::span<const ColorChoice> RenderingChoices() {
    return kRenderings;
}

std::span<const ColorChoice> TrappingChoices() {
    return kTrappings;
}

std::span<const ColorChoice> BlackOverprintChoices() {
    return kBlackOverprints;
}

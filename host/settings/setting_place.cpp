#include "host/settings/setting_place.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr OSType kDialog = FourCharCode("Host");
constexpr OSType kPanels = FourCharCode("Tshl");
constexpr SInt32 kFinishingMenu = 108;
constexpr OSType kSpecialPages = FourCharCode("TSPg");

// clang-format off
constexpr SettingPlace kPlaces[] = {
    // main keyword               options    panel                     signature      number
    {"PageSize",               "",        nullptr,                  kDialog,       40},
    {"InputSlot",              "",        nullptr,                  kDialog,       42},
    {"Collate",                "",        nullptr,                  kDialog,       21},
    {"Collate",                "",        "Panel Paper and Output", kPanels,       111},
    {"MediaType",              "",        "Panel Paper and Output", kPanels,       104},
    {"MediaColor",             "",        "Panel Paper and Output", kPanels,       104},
    {"TRMediaWeight",           "",        "Panel Paper and Output", kPanels,       104},
    {"TRMediaCoatedSides",      "",        "Panel Paper and Output", kPanels,       104},
    {"TRMediaCoating",          "",        "Panel Paper and Output", kPanels,       104},
    {"TRMediaFinish",           "",        "Panel Paper and Output", kPanels,       104},
    {"TRMediaGrain",            "",        "Panel Paper and Output", kPanels,       104},
    {"TRMediaPrepunched",       "",        "Panel Paper and Output", kPanels,       104},
    {"TRMediaTabs",             "",        "Panel Paper and Output", kPanels,       104},
    {"Duplex",                 "",        "Panel Paper and Output", kPanels,       113},
    {"StapleLocation",         "",        "Panel Paper and Output", kPanels,       111},
    {"TRFoldOptions",          "Booklet", "Panel Paper and Output", kPanels,       112},
    {"TRFoldOptions",          "Booklet", "Panel Layout",           kPanels,       6013},
    {"TRFoldOptions",          "",        "Panel Paper and Output", kPanels,       111},
    {"TRStaple",               "",        "Panel Paper and Output", kPanels,       kFinishingMenu},
    {"TRPunch",                "",        "Panel Paper and Output", kPanels,       kFinishingMenu},
    {"TRFold",                 "",        "Panel Paper and Output", kPanels,       kFinishingMenu},
    {"TRBind",                 "",        "Panel Paper and Output", kPanels,       kFinishingMenu},
    {"TRBooklet",              "",        "Panel Paper and Output", kPanels,       kFinishingMenu},
    {"OutputBin",              "",        "Panel Paper and Output", kPanels,       110},
    {"JCLColorCorrection",     "",        "Panel Paper and Output", kPanels,       115},
    {"JCLColorCorrection",     "",        "Panel Color Options",    kPanels,       7010},
    {"JCLRGBColorSpace",       "",        "Panel Color Options",    kPanels,       7011},
    {"JCLCMYKColorSpace",      "",        "Panel Color Options",    kPanels,       7012},
    {"JCLPrintQuality",        "",        "Panel Color Options",    kPanels,       7013},
    {"JCLTrueGrayGraphics",    "",        "Panel Color Options",    kPanels,       7014},
    {"JCLTrueGrayImages",      "",        "Panel Color Options",    kPanels,       7015},
    {"JCLPasscode",            "",        "Panel Paper and Output", kPanels,       102},
    {"JCLCovers",              "",        "Panel Special Pages",    kSpecialPages, 100},
    {"JCLMediaType",           "",        "Panel Special Pages",    kSpecialPages, 100},
    {"JCLMediaColor",          "",        "Panel Special Pages",    kSpecialPages, 100},
    {"JCLFrontBackMediaType",  "",        "Panel Special Pages",    kSpecialPages, 100},
    {"JCLFrontBackMediaColor", "",        "Panel Special Pages",    kSpecialPages, 100},
    {"Resolution",             "",        "Panel Image Options",    kPanels,       941},
    {"TRImageQuality",         "",        "Panel Image Options",    kPanels,       981},
    {"TREconomode",            "",        "Panel Image Options",    kPanels,       988},
    {"JCLBanner",              "",        "Panel Advanced",         kPanels,       632},
    {"Jog",                    "",        "Panel Advanced",         kPanels,       634},
};
static_assert(std::size(kPlaces) == 42);
// clang-format on

/// What the items of the finishing menu change beside what stands there.
constexpr std::string_view kAlsoByFinishingMenu[] = {"Jog", "TRFoldOptions"};

}  // namespace

std::span<const SettingPlace> settingPlaces() {
    return kPlaces;
}

std::vector<SettingPlace> placesOfOption(std::string_view mainKeyword, std::string_view option) {
    std::vector<SettingPlace> own;
    std::vector<SettingPlace> ofAll;
    for (const SettingPlace& place : kPlaces) {
        if (place.mainKeyword == mainKeyword && option.starts_with(place.options)) {
            (place.options.empty() ? ofAll : own).push_back(place);
        }
    }
    return own.empty() ? ofAll : own;
}

const SettingPlace* placeOfSetting(std::string_view mainKeyword) {
    const auto* const place = std::ranges::find(kPlaces, mainKeyword, &SettingPlace::mainKeyword);
    return place == std::end(kPlaces) ? nullptr : place;
}

bool isChangedBy(std::string_view mainKeyword, OSType signature, SInt32 number) {
    if (signature == kPanels && number == kFinishingMenu &&
        std::ranges::find(kAlsoByFinishingMenu, mainKeyword) != std::end(kAlsoByFinishingMenu)) {
        return true;
    }
    return std::ranges::any_of(kPlaces, [&](const SettingPlace& place) {
        // All controls of the special pages work on one list.
        return place.mainKeyword == mainKeyword && place.signature == signature &&
               (place.number == number || signature == kSpecialPages);
    });
}

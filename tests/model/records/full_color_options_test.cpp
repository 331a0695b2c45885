#include "model/records/full_color_options.h"

#include "tests/platform/printing/printing_fixture.h"

#include <gtest/gtest.h>

namespace {

constexpr SInt32 kUnset = kTicketValueUnset;

/// The number under a key; -1 when there is none.
SInt32 number(CFDictionaryRef dictionary, const std::string& key) {
    SInt32 value = -1;
    CFDictionaryGetNumber(dictionary, cf(key).get(), &value, kCFNumberSInt32Type);
    return value;
}

CFDictionaryRef cast(CFDictionaryRef ticket) {
    return static_cast<CFDictionaryRef>(CFDictionaryGetValue(ticket, CFSTR("FCColorCast")));
}

TEST(FullColorOptions, SettersKeepTheirRanges) {
    FullColorOptions options;
    SInt32 value = 0;
    EXPECT_EQ(options.setLightness(101), paramErr);
    EXPECT_EQ(options.setContrast(-101), paramErr);
    EXPECT_EQ(options.setSaturation(100), noErr);
    EXPECT_EQ(options.setLightness(-100), noErr);
    EXPECT_EQ(options.setLightness(kUnset), noErr);
    EXPECT_EQ(options.lightness(&value), noErr);
    EXPECT_EQ(value, kUnset);
    EXPECT_EQ(options.lightness(nullptr), paramErr);

    EXPECT_EQ(options.setColorCast(1, 2, 3), noErr);
    EXPECT_EQ(options.setColorCast(4, 101, 5), paramErr);
    SInt32 cyanRed = 0;
    SInt32 yellowBlue = 0;
    EXPECT_EQ(options.colorCast(&cyanRed, nullptr, &yellowBlue), noErr);
    EXPECT_EQ(cyanRed, 1);
    EXPECT_EQ(yellowBlue, 3);
    EXPECT_EQ(options.colorCast(nullptr, nullptr, nullptr), paramErr);

    EXPECT_EQ(options.setTrappingAdjustment(0, 20), noErr);
    EXPECT_EQ(options.setTrappingAdjustment(21, 1), paramErr);
    EXPECT_EQ(options.setTrappingAdjustment(1, -1), paramErr);
    SInt32 fast = 0;
    EXPECT_EQ(options.trappingAdjustment(nullptr, &fast), noErr);
    EXPECT_EQ(fast, 20);
    EXPECT_EQ(options.trappingAdjustment(&value, nullptr), noErr);
    EXPECT_EQ(value, 0);
    EXPECT_EQ(options.trappingAdjustment(nullptr, nullptr), paramErr);
}

TEST(FullColorOptions, ProfilesHaveAKindOrAName) {
    FullColorOptions options;
    const auto name = cf(std::string(255, 'n'));
    const auto tooLong = cf(std::string(256, 'n'));
    SInt32 kind = 0;
    CFStringRef held = nullptr;
    EXPECT_EQ(options.setRGBImagesProfile(kNamedRGBProfile, nullptr), paramErr);
    EXPECT_EQ(options.setRGBImagesProfile(kNamedRGBProfile, tooLong.get()), paramErr);
    EXPECT_EQ(options.rgbImagesProfile(&kind, nullptr), noErr) << "no name is needed for a choice of the device";
    EXPECT_EQ(kind, kUnset);
    EXPECT_EQ(options.setRGBImagesProfile(kNamedRGBProfile, name.get()), noErr);
    EXPECT_EQ(options.rgbImagesProfile(&kind, nullptr), paramErr);
    EXPECT_EQ(options.rgbImagesProfile(&kind, &held), noErr);
    EXPECT_EQ(held, name.get());
    EXPECT_EQ(options.setRGBImagesProfile(kNamedRGBProfile, cf(text(held)).get()), noErr);
    EXPECT_EQ(options.rgbImagesProfile(&kind, &held), noErr);
    EXPECT_EQ(held, name.get()) << "an equal name is kept";

    // Another kind leaves the name alone, out of sight.
    EXPECT_EQ(options.setRGBImagesProfile(1, tooLong.get()), noErr);
    held = nullptr;
    EXPECT_EQ(options.rgbImagesProfile(&kind, &held), noErr);
    EXPECT_EQ(kind, 1);
    EXPECT_EQ(held, nullptr);
    EXPECT_EQ(number(options.asTicket().get(), "RGBImagesProfile"), 1);

    // The named kinds differ.
    EXPECT_EQ(options.setCMYKImagesProfile(kNamedCMYKProfile, nullptr), paramErr);
    EXPECT_EQ(options.setCMYKTextAndGraphicsProfile(kNamedRGBProfile, nullptr), noErr);
    EXPECT_EQ(options.setDestinationProfile(kNamedDestinationProfile, nullptr), paramErr);
    EXPECT_EQ(options.setGrayImagesProfile(nullptr), paramErr);
    EXPECT_EQ(options.setGrayTextAndGraphicsProfile(tooLong.get()), paramErr);
    EXPECT_EQ(options.setGrayTextAndGraphicsProfile(name.get()), noErr);
}

TEST(FullColorOptions, GoThroughATicket) {
    EXPECT_EQ(CFDictionaryGetCount(FullColorOptions().asTicket().get()), 0);
    FullColorOptions options;
    options.setLightness(1);
    options.setContrast(2);
    options.setSaturation(3);
    options.setColorCast(4, 5, 6);
    options.setTrapping(1);
    options.setTrappingAdjustment(7, 8);
    options.setBlackOverprint(9);
    options.setTRC(CFSTR("curve"));
    options.setRGBImagesProfile(5, CFSTR("rgb"));
    options.setRGBTextAndGraphicsProfile(10, nullptr);
    options.setCMYKImagesProfile(3, CFSTR("cmyk"));
    options.setCMYKTextAndGraphicsProfile(11, nullptr);
    options.setGrayImagesProfile(CFSTR("gray 1"));
    options.setGrayTextAndGraphicsProfile(CFSTR("gray 2"));
    options.setDestinationProfile(2, CFSTR("paper"));
    options.setImageObjectRendering(12);
    options.setTextObjectRendering(13);
    options.setGraphicObjectRendering(14);

    const auto ticket = options.asTicket();
    EXPECT_EQ(number(cast(ticket.get()), "FCMagentaGreen"), 5);
    EXPECT_EQ(number(ticket.get(), "FCTrappingSlowDirection"), 7);
    EXPECT_EQ(number(ticket.get(), "TextRendering"), 13);
    EXPECT_EQ(get(ticket.get(), "DestinationProfile"), "paper");
    EXPECT_EQ(CFDictionaryGetCount(ticket.get()), 19);
    EXPECT_TRUE(CFEqual(FullColorOptions(ticket.get()).asTicket().get(), ticket.get()));
}

TEST(FullColorOptions, WritesNoHalfSettings) {
    FullColorOptions options;
    options.setColorCast(1, kUnset, 3);
    options.setTrapping(2);
    options.setTrappingAdjustment(3, 4);
    const auto ticket = options.asTicket();
    EXPECT_EQ(number(ticket.get(), "FCTrapping"), 2);
    EXPECT_EQ(CFDictionaryGetCount(ticket.get()), 1);
}

TEST(FullColorOptions, TakesWhatATicketHolds) {
    FullColorOptions options;
    options.setContrast(7);
    options.setColorCast(1, 2, 3);
    options.setTrapping(1);
    options.setTrappingAdjustment(3, 4);
    options.setGrayImagesProfile(CFSTR("gray"));
    options.setCMYKImagesProfile(3, CFSTR("cmyk"));
    options.fromTicket(nullptr);
    EXPECT_EQ(number(options.asTicket().get(), "FCTrapping"), 1);

    const auto ticket = makeDictionary();
    WriteTicketValue(ticket.get(), CFSTR("FCLightness"), 1000);
    const auto axis = makeDictionary();
    WriteTicketValue(axis.get(), CFSTR("FCCyanRed"), 500);
    CFDictionarySetValue(ticket.get(), CFSTR("FCColorCast"), axis.get());
    set(ticket.get(), "RGBImagesProfile", std::string(300, 'n'));
    WriteTicketValue(ticket.get(), CFSTR("RGBTextAndGraphicsProfile"), kNamedRGBProfile);
    CFDictionarySetValue(ticket.get(), CFSTR("CMYKImagesProfile"), axis.get());
    WriteTicketValue(ticket.get(), CFSTR("GrayImagesProfile"), 1);
    WriteTicketValue(ticket.get(), CFSTR("FCTRC"), 1);
    options.fromTicket(ticket.get());

    const auto written = options.asTicket();
    EXPECT_EQ(number(written.get(), "FCLightness"), 1000) << "not checked";
    EXPECT_EQ(number(written.get(), "FCContrast"), 7) << "merged";
    EXPECT_EQ(number(cast(written.get()), "FCCyanRed"), 500);
    EXPECT_EQ(number(cast(written.get()), "FCYellowBlue"), 3);
    EXPECT_EQ(number(written.get(), "FCTrapping"), -1) << "gone with its directions";
    SInt32 slow = 0;
    EXPECT_EQ(options.trappingAdjustment(&slow, nullptr), noErr);
    EXPECT_EQ(slow, kUnset);
    EXPECT_EQ(get(written.get(), "CMYKImagesProfile"), "cmyk") << "no name, no number";
    EXPECT_EQ(get(written.get(), "GrayImagesProfile"), "gray");
    for (const char* key : {"RGBImagesProfile", "RGBTextAndGraphicsProfile", "FCTRC"}) {
        EXPECT_EQ(CFDictionaryGetValue(written.get(), cf(key).get()), nullptr) << key;
    }
}

}  // namespace

#include "model/records/full_color_options.h"

#include "model/settings/record_ticket.h"

#include <iterator>

/// Which key holds which field; the colour cast and trapping have rules of their own.
struct FullColorOptions::TicketKeys {
    struct NumberRow {
        const char* key;
        SInt32 FullColorOptions::*field;
    };
    struct ProfileRow {
        const char* key;
        Profile FullColorOptions::*field;
    };
    struct GrayRow {
        const char* key;
        Name FullColorOptions::*field;
    };

    // clang-format off
    static constexpr NumberRow numbers[] = {
        // key               field
        {"FCLightness",      &FullColorOptions::lightness_},
        {"FCContrast",       &FullColorOptions::contrast_},
        {"FCSaturation",     &FullColorOptions::saturation_},
        {"FCBlackOverprint", &FullColorOptions::blackOverprint_},
        {"ImageRendering",   &FullColorOptions::imageRendering_},
        {"TextRendering",    &FullColorOptions::textRendering_},
        {"GraphicRendering", &FullColorOptions::graphicRendering_},
    };
    static_assert(std::size(numbers) == 7);

    static constexpr NumberRow castAxes[] = {
        // key             field
        {"FCCyanRed",      &FullColorOptions::cyanRed_},
        {"FCMagentaGreen", &FullColorOptions::magentaGreen_},
        {"FCYellowBlue",   &FullColorOptions::yellowBlue_},
    };
    static_assert(std::size(castAxes) == 3);

    static constexpr NumberRow trappingDirections[] = {
        // key                      field
        {"FCTrappingFastDirection", &FullColorOptions::trappingFast_},
        {"FCTrappingSlowDirection", &FullColorOptions::trappingSlow_},
    };
    static_assert(std::size(trappingDirections) == 2);

    static constexpr ProfileRow profiles[] = {
        // key                         field
        {"RGBImagesProfile",           &FullColorOptions::rgbImages_},
        {"RGBTextAndGraphicsProfile",  &FullColorOptions::rgbTextAndGraphics_},
        {"CMYKImagesProfile",          &FullColorOptions::cmykImages_},
        {"CMYKTextAndGraphicsProfile", &FullColorOptions::cmykTextAndGraphics_},
        {"DestinationProfile",         &FullColorOptions::destination_},
    };
    static_assert(std::size(profiles) == 5);

    static constexpr GrayRow grayProfiles[] = {
        // key                         field
        {"GrayImagesProfile",          &FullColorOptions::grayImages_},
        {"GrayTextAndGraphicsProfile", &FullColorOptions::grayTextAndGraphics_},
    };
    static_assert(std::size(grayProfiles) == 2);
    // clang-format on
};

namespace {

constexpr SInt32 kTrappingAdjusted = 1;  // the value of trapping at which its directions count

bool IsUnsetOrWithin(SInt32 value, SInt32 minimum, SInt32 maximum) {
    return value == kTicketValueUnset || (value >= minimum && value <= maximum);
}

bool IsAdjustment(SInt32 value) {
    return IsUnsetOrWithin(value, -100, 100);
}

bool IsTrappingDistance(SInt32 value) {
    return IsUnsetOrWithin(value, 0, 20);
}

OSStatus Get(SInt32 field, SInt32* value) {
    if (value == nullptr) {
        return paramErr;
    }
    *value = field;
    return noErr;
}

OSStatus Get(const CFRef<CFStringRef>& field, CFStringRef* name) {
    if (name == nullptr) {
        return paramErr;
    }
    *name = field.get();
    return noErr;
}

OSStatus Set(SInt32* field, SInt32 value) {
    *field = value;
    return noErr;
}

OSStatus SetAdjustment(SInt32* field, SInt32 value) {
    return IsAdjustment(value) ? Set(field, value) : paramErr;
}

OSStatus SetProfileName(CFRef<CFStringRef>* field, CFStringRef name) {
    if (name == nullptr || CFStringGetLength(name) > kMaximumProfileNameLength) {
        return paramErr;
    }
    if (!CFEqual(field->get(), name)) {
        *field = CFRef<CFStringRef>::retain(name);
    }
    return noErr;
}

}  // namespace

OSStatus FullColorOptions::Profile::get(SInt32* outKind, CFStringRef* outName) const {
    const bool isNamed = kind == namedKind;
    if (outKind == nullptr || (isNamed && outName == nullptr)) {
        return paramErr;
    }
    *outKind = kind;
    if (isNamed) {
        *outName = name.get();
    }
    return noErr;
}

OSStatus FullColorOptions::Profile::set(SInt32 newKind, CFStringRef newName) {
    const OSStatus status = newKind == namedKind ? SetProfileName(&name, newName) : noErr;
    return status == noErr ? Set(&kind, newKind) : status;
}

CFRef<CFMutableDictionaryRef> FullColorOptions::asTicket() const {
    auto made = CreateRecordDictionary();
    const CFMutableDictionaryRef ticket = made.get();
    const auto write = [this](CFMutableDictionaryRef dictionary, const TicketKeys::NumberRow& row) {
        WriteIfSet(dictionary, CFStringMakeConstant(row.key), this->*row.field);
    };
    for (const auto& row : TicketKeys::numbers) {
        write(ticket, row);
    }
    if (cyanRed_ != kTicketValueUnset && magentaGreen_ != kTicketValueUnset && yellowBlue_ != kTicketValueUnset) {
        const auto cast = CreateRecordDictionary();
        for (const auto& row : TicketKeys::castAxes) {
            write(cast.get(), row);
        }
        CFDictionarySetValue(ticket, CFSTR("FCColorCast"), cast.get());
    }
    WriteIfSet(ticket, CFSTR("FCTrapping"), trapping_);
    if (trapping_ == kTrappingAdjusted) {
        for (const auto& row : TicketKeys::trappingDirections) {
            write(ticket, row);
        }
    }
    CFDictionarySetValue(ticket, CFSTR("FCTRC"), trc_.get());
    for (const auto& row : TicketKeys::profiles) {
        const Profile& profile = this->*row.field;
        if (profile.kind == profile.namedKind) {
            CFDictionarySetValue(ticket, CFStringMakeConstant(row.key), profile.name.get());
        } else {
            WriteIfSet(ticket, CFStringMakeConstant(row.key), profile.kind);
        }
    }
    for (const auto& row : TicketKeys::grayProfiles) {
        CFDictionarySetValue(ticket, CFStringMakeConstant(row.key), (this->*row.field).get());
    }
    return made;
}

void FullColorOptions::fromTicket(CFDictionaryRef ticket) {
    if (ticket == nullptr) {
        return;
    }
    const auto read = [this](CFDictionaryRef dictionary, const TicketKeys::NumberRow& row) {
        return ReadTicketValue(dictionary, CFStringMakeConstant(row.key), &(this->*row.field));
    };
    for (const auto& row : TicketKeys::numbers) {
        read(ticket, row);
    }
    for (const auto& row : TicketKeys::castAxes) {
        read(GetRecordDictionary(ticket, CFSTR("FCColorCast")), row);
    }
    const bool hasTrapping = ReadTicketValue(ticket, CFSTR("FCTrapping"), &trapping_);
    if (!hasTrapping) {
        trapping_ = kTicketValueUnset;
    }
    for (const auto& row : TicketKeys::trappingDirections) {
        if (!hasTrapping || !read(ticket, row)) {
            this->*row.field = kTicketValueUnset;
        }
    }
    if (const CFStringRef name = GetRecordString(ticket, CFSTR("FCTRC"))) {
        setTRC(name);
    }
    for (const auto& row : TicketKeys::profiles) {
        const CFStringRef key = CFStringMakeConstant(row.key);
        Profile& profile = this->*row.field;
        if (const CFStringRef name = GetRecordString(ticket, key)) {
            profile.set(profile.namedKind, name);
        } else {
            ReadTicketValue(ticket, key, &profile.kind);
        }
    }
    for (const auto& row : TicketKeys::grayProfiles) {
        SetProfileName(&(this->*row.field), GetRecordString(ticket, CFStringMakeConstant(row.key)));
    }
}

OSStatus FullColorOptions::lightness(SInt32* value) const {
    return Get(lightness_, value);
}
OSStatus FullColorOptions::setLightness(SInt32 value) {
    return SetAdjustment(&lightness_, value);
}

OSStatus FullColorOptions::contrast(SInt32* value) const {
    return Get(contrast_, value);
}
OSStatus FullColorOptions::setContrast(SInt32 value) {
    return SetAdjustment(&contrast_, value);
}

OSStatus FullColorOptions::saturation(SInt32* value) const {
    return Get(saturation_, value);
}
OSStatus FullColorOptions::setSaturation(SInt32 value) {
    return SetAdjustment(&saturation_, value);
}

OSStatus FullColorOptions::colorCast(SInt32* cyanRed, SInt32* magentaGreen, SInt32* yellowBlue) const {
    const bool hasCyanRed = Get(cyanRed_, cyanRed) == noErr;
    const bool hasMagentaGreen = Get(magentaGreen_, magentaGreen) == noErr;
    const bool hasYellowBlue = Get(yellowBlue_, yellowBlue) == noErr;
    return hasCyanRed || hasMagentaGreen || hasYellowBlue ? noErr : paramErr;
}
OSStatus FullColorOptions::setColorCast(SInt32 cyanRed, SInt32 magentaGreen, SInt32 yellowBlue) {
    if (!IsAdjustment(cyanRed) || !IsAdjustment(magentaGreen) || !IsAdjustment(yellowBlue)) {
        return paramErr;
    }
    cyanRed_ = cyanRed;
    magentaGreen_ = magentaGreen;
    yellowBlue_ = yellowBlue;
    return noErr;
}

OSStatus FullColorOptions::trapping(SInt32* value) const {
    return Get(trapping_, value);
}
OSStatus FullColorOptions::setTrapping(SInt32 value) {
    return Set(&trapping_, value);
}

OSStatus FullColorOptions::trappingAdjustment(SInt32* slow, SInt32* fast) const {
    const bool hasSlow = Get(trappingSlow_, slow) == noErr;
    const bool hasFast = Get(trappingFast_, fast) == noErr;
    return hasSlow || hasFast ? noErr : paramErr;
}
OSStatus FullColorOptions::setTrappingAdjustment(SInt32 slow, SInt32 fast) {
    if (!IsTrappingDistance(slow) || !IsTrappingDistance(fast)) {
        return paramErr;
    }
    trappingSlow_ = slow;
    trappingFast_ = fast;
    return noErr;
}

OSStatus FullColorOptions::blackOverprint(SInt32* value) const {
    return Get(blackOverprint_, value);
}
OSStatus FullColorOptions::setBlackOverprint(SInt32 value) {
    return Set(&blackOverprint_, value);
}

OSStatus FullColorOptions::trc(CFStringRef* name) const {
    return Get(trc_, name);
}
OSStatus FullColorOptions::setTRC(CFStringRef name) {
    trc_ = CFRef<CFStringRef>::retain(name);
    return noErr;
}

OSStatus FullColorOptions::rgbImagesProfile(SInt32* kind, CFStringRef* name) const {
    return rgbImages_.get(kind, name);
}
OSStatus FullColorOptions::setRGBImagesProfile(SInt32 kind, CFStringRef name) {
    return rgbImages_.set(kind, name);
}

OSStatus FullColorOptions::rgbTextAndGraphicsProfile(SInt32* kind, CFStringRef* name) const {
    return rgbTextAndGraphics_.get(kind, name);
}
OSStatus FullColorOptions::setRGBTextAndGraphicsProfile(SInt32 kind, CFStringRef name) {
    return rgbTextAndGraphics_.set(kind, name);
}

OSStatus FullColorOptions::cmykImagesProfile(SInt32* kind, CFStringRef* name) const {
    return cmykImages_.get(kind, name);
}
OSStatus FullColorOptions::setCMYKImagesProfile(SInt32 kind, CFStringRef name) {
    return cmykImages_.set(kind, name);
}

OSStatus FullColorOptions::cmykTextAndGraphicsProfile(SInt32* kind, CFStringRef* name) const {
    return cmykTextAndGraphics_.get(kind, name);
}
OSStatus FullColorOptions::setCMYKTextAndGraphicsProfile(SInt32 kind, CFStringRef name) {
    return cmykTextAndGraphics_.set(kind, name);
}

OSStatus FullColorOptions::destinationProfile(SInt32* kind, CFStringRef* name) const {
    return destination_.get(kind, name);
}
OSStatus FullColorOptions::setDestinationProfile(SInt32 kind, CFStringRef name) {
    return destination_.set(kind, name);
}

OSStatus FullColorOptions::grayImagesProfile(CFStringRef* name) const {
    return Get(grayImages_, name);
}
OSStatus FullColorOptions::setGrayImagesProfile(CFStringRef name) {
    return SetProfileName(&grayImages_, name);
}

OSStatus FullColorOptions::grayTextAndGraphicsProfile(CFStringRef* name) const {
    return Get(grayTextAndGraphics_, name);
}
OSStatus FullColorOptions::setGrayTextAndGraphicsProfile(CFStringRef name) {
    return SetProfileName(&grayTextAndGraphics_, name);
}

OSStatus FullColorOptions::imageObjectRendering(SInt32* value) const {
    return Get(imageRendering_, value);
}
OSStatus FullColorOptions::setImageObjectRendering(SInt32 value) {
    return Set(&imageRendering_, value);
}

OSStatus FullColorOptions::textObjectRendering(SInt32* value) const {
    return Get(textRendering_, value);
}
OSStatus FullColorOptions::setTextObjectRendering(SInt32 value) {
    return Set(&textRendering_, value);
}

OSStatus FullColorOptions::graphicObjectRendering(SInt32* value) const {
    return Get(graphicRendering_, value);
}
OSStatus FullColorOptions::setGraphicObjectRendering(SInt32 value) {
    return Set(&graphicRendering_, value);
}

// A job's full colour adjustments, for the colour features of the devices.
//
// Every number may be kTicketValueUnset: not set, and left out of the ticket. Getters answer paramErr for a null out
// variable, setters for a value out of their range; nothing is changed then. Texts are lent by getters and shared by
// setters. The meaning of kinds, trapping, overprint and rendering values is the device's.
#pragma once

#include "model/settings/ticket_access.h"
#include "platform/foundation/CFRef.h"

// The kinds that stand for a profile with a name; all others are choices of the device.
inline constexpr SInt32 kNamedRGBProfile = 5;
inline constexpr SInt32 kNamedCMYKProfile = 3;
inline constexpr SInt32 kNamedDestinationProfile = 2;
/// The longest name of a profile, in UTF-16 code units.
inline constexpr CFIndex kMaximumProfileNameLength = 255;

class FullColorOptions {
public:
    FullColorOptions() = default;
    explicit FullColorOptions(CFDictionaryRef ticket) { fromTicket(ticket); }

    /// A new dictionary of what is set. The colour cast is written only when its three axes are set, the trapping
    /// directions only when trapping is 1, and a named kind only with its name.
    [[nodiscard]] CFRef<CFMutableDictionaryRef> asTicket() const;
    /// Takes over what a dictionary holds, numbers unchecked; null changes nothing. Trapping and its directions become
    /// unset where they are missing, everything else stays.
    void fromTicket(CFDictionaryRef ticket);

    /// Each from -100 to 100.
    OSStatus lightness(SInt32* value) const;
    OSStatus setLightness(SInt32 value);
    OSStatus contrast(SInt32* value) const;
    OSStatus setContrast(SInt32 value);
    OSStatus saturation(SInt32* value) const;
    OSStatus setSaturation(SInt32 value);

    /// Along the three opponent axes, each from -100 to 100. Any of the out variables may be null, not all.
    OSStatus colorCast(SInt32* cyanRed, SInt32* magentaGreen, SInt32* yellowBlue) const;
    OSStatus setColorCast(SInt32 cyanRed, SInt32 magentaGreen, SInt32 yellowBlue);

    OSStatus trapping(SInt32* value) const;
    OSStatus setTrapping(SInt32 value);
    /// In the slow and fast directions, each from 0 to 20. One of the out variables may be null.
    OSStatus trappingAdjustment(SInt32* slow, SInt32* fast) const;
    OSStatus setTrappingAdjustment(SInt32 slow, SInt32 fast);
    OSStatus blackOverprint(SInt32* value) const;
    OSStatus setBlackOverprint(SInt32 value);

    /// The name of a tone reproduction curve; null for none.
    OSStatus trc(CFStringRef* name) const;
    OSStatus setTRC(CFStringRef name);

    // A profile is a kind, or the named kind and a name of at most kMaximumProfileNameLength. Getters write the name
    // only for the named kind, and take a null name variable for the others. Setters want a name for the named kind,
    // and keep the one that they have for the others.
    OSStatus rgbImagesProfile(SInt32* kind, CFStringRef* name) const;
    OSStatus setRGBImagesProfile(SInt32 kind, CFStringRef name);
    OSStatus rgbTextAndGraphicsProfile(SInt32* kind, CFStringRef* name) const;
    OSStatus setRGBTextAndGraphicsProfile(SInt32 kind, CFStringRef name);
    OSStatus cmykImagesProfile(SInt32* kind, CFStringRef* name) const;
    OSStatus setCMYKImagesProfile(SInt32 kind, CFStringRef name);
    OSStatus cmykTextAndGraphicsProfile(SInt32* kind, CFStringRef* name) const;
    OSStatus setCMYKTextAndGraphicsProfile(SInt32 kind, CFStringRef name);
    OSStatus destinationProfile(SInt32* kind, CFStringRef* name) const;
    OSStatus setDestinationProfile(SInt32 kind, CFStringRef name);

    /// Gray profiles have a name only; null before the first is set, and not to be set.
    OSStatus grayImagesProfile(CFStringRef* name) const;
    OSStatus setGrayImagesProfile(CFStringRef name);
    OSStatus grayTextAndGraphicsProfile(CFStringRef* name) const;
    OSStatus setGrayTextAndGraphicsProfile(CFStringRef name);

    OSStatus imageObjectRendering(SInt32* value) const;
    OSStatus setImageObjectRendering(SInt32 value);
    OSStatus textObjectRendering(SInt32* value) const;
    OSStatus setTextObjectRendering(SInt32 value);
    OSStatus graphicObjectRendering(SInt32* value) const;
    OSStatus setGraphicObjectRendering(SInt32 value);

private:
    struct Profile {
        SInt32 namedKind;
        SInt32 kind = kTicketValueUnset;
        CFRef<CFStringRef> name;

        [[nodiscard]] OSStatus get(SInt32* outKind, CFStringRef* outName) const;
        OSStatus set(SInt32 newKind, CFStringRef newName);
    };
    using Name = CFRef<CFStringRef>;
    struct TicketKeys;

    SInt32 lightness_ = kTicketValueUnset;
    SInt32 contrast_ = kTicketValueUnset;
    SInt32 saturation_ = kTicketValueUnset;
    SInt32 cyanRed_ = kTicketValueUnset;
    SInt32 magentaGreen_ = kTicketValueUnset;
    SInt32 yellowBlue_ = kTicketValueUnset;
    SInt32 trapping_ = kTicketValueUnset;
    SInt32 trappingFast_ = kTicketValueUnset;
    SInt32 trappingSlow_ = kTicketValueUnset;
    SInt32 blackOverprint_ = kTicketValueUnset;
    Name trc_;
    Profile rgbImages_{kNamedRGBProfile};
    Profile rgbTextAndGraphics_{kNamedRGBProfile};
    Profile cmykImages_{kNamedCMYKProfile};
    Profile cmykTextAndGraphics_{kNamedCMYKProfile};
    Name grayImages_;
    Name grayTextAndGraphics_;
    Profile destination_{kNamedDestinationProfile};
    SInt32 imageRendering_ = kTicketValueUnset;
    SInt32 textRendering_ = kTicketValueUnset;
    SInt32 graphicRendering_ = kTicketValueUnset;
};

#include "panels/color_options/color_options_controls.h"

#include "model/records/color_choices.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Menus.h"
#include "ui/localization.h"
#include "ui/panel_operations.h"
#include "ui/setting_menus.h"
#include "ui/spin_control.h"
#include "ui/text_input.h"

#include <algorithm>
#include <iterator>

namespace {

struct NumberRow {
    SInt32 field;  // its arrows have the next number, and its slider, if it has one, the one behind that
    bool hasSlider;
    SInt32 minimum;
    SInt32 maximum;
    SInt32 (*get)(const FullColorOptions& options);
    void (*set)(FullColorOptions* options, SInt32 value);
};

using Options = FullColorOptions;

struct Cast {
    SInt32 axis[3];
};
Cast CastOf(const Options& options) {
    Cast cast{};
    options.colorCast(&cast.axis[0], &cast.axis[1], &cast.axis[2]);
    return cast;
}

/// The record writes the three axes together: they are set or not set together, too.
void SetCast(Options* options, int axis, SInt32 value) {
    Cast cast = CastOf(*options);
    cast.axis[axis] = value;
    for (SInt32& each : cast.axis) {
        each = each == kTicketValueUnset ? 0 : each;
    }
    if (std::ranges::all_of(cast.axis, [](SInt32 each) { return each == 0; })) {
        std::ranges::fill(cast.axis, kTicketValueUnset);
    }
    options->setColorCast(cast.axis[0], cast.axis[1], cast.axis[2]);
}

struct Trap {
    SInt32 slow;
    SInt32 fast;
};
Trap TrapOf(const Options& options) {
    Trap trap{};
    options.trappingAdjustment(&trap.slow, &trap.fast);
    return trap;
}

template <OSStatus (Options::*getter)(SInt32*) const>
SInt32 Get(const Options& options) {
    SInt32 value = kTicketValueUnset;
    (options.*getter)(&value);
    return value;
}
template <OSStatus (Options::*setter)(SInt32)>
void Set(Options* options, SInt32 value) {
    (options->*setter)(value);
}
template <int axis>
SInt32 GetCast(const Options& options) {
    return CastOf(options).axis[axis];
}
template <int axis>
void SetCast(Options* options, SInt32 value) {
    SetCast(options, axis, value);
}

// clang-format off
constexpr NumberRow kNumbers[] = {
    // field, slider, range, record
    {7020, true,  -100, 100, Get<&Options::lightness>,  Set<&Options::setLightness>},
    {7023, true,  -100, 100, Get<&Options::contrast>,   Set<&Options::setContrast>},
    {7026, true,  -100, 100, Get<&Options::saturation>, Set<&Options::setSaturation>},
    {7030, true,  -100, 100, GetCast<0>,                SetCast<0>},
    {7033, true,  -100, 100, GetCast<1>,                SetCast<1>},
    {7036, true,  -100, 100, GetCast<2>,                SetCast<2>},
    {7081, false, 0,    20,  [](const Options& options) { return TrapOf(options).fast; },
     [](Options* options, SInt32 value) { options->setTrappingAdjustment(TrapOf(*options).slow, value); }},
    {7083, false, 0,    20,  [](const Options& options) { return TrapOf(options).slow; },
     [](Options* options, SInt32 value) { options->setTrappingAdjustment(value, TrapOf(*options).fast); }},
};

struct ChoiceRow {
    SInt32 popUp;
    std::span<const ColorChoice> (*choices)();
    SInt32 (*get)(const Options& options);
    void (*set)(Options* options, SInt32 value);
};
constexpr ChoiceRow kChoices[] = {
    // pop-up, choices, record
    {7070, RenderingChoices,      Get<&Options::imageObjectRendering>,   Set<&Options::setImageObjectRendering>},
    {7071, RenderingChoices,      Get<&Options::textObjectRendering>,    Set<&Options::setTextObjectRendering>},
    {7072, RenderingChoices,      Get<&Options::graphicObjectRendering>, Set<&Options::setGraphicObjectRendering>},
    {7080, TrappingChoices,       Get<&Options::trapping>,               Set<&Options::setTrapping>},
    {7085, BlackOverprintChoices, Get<&Options::blackOverprint>,         Set<&Options::setBlackOverprint>},
};
constexpr SInt32 kTrappingPopUp = 7080;
constexpr SInt32 kTrappingFields[] = {7081, 7082, 7083, 7084};

struct ProfileRow {
    SInt32 popUp;  // the field of the name has the next number
    SInt32 namedKind;
    std::span<const ColorChoice> (*choices)();
    OSStatus (Options::*get)(SInt32* kind, CFStringRef* name) const;
    OSStatus (Options::*set)(SInt32 kind, CFStringRef name);
};
constexpr ProfileRow kProfiles[] = {
    // pop-up, kind with a name, choices, record
    {7050, kNamedRGBProfile,          RGBProfileChoices,         &Options::rgbImagesProfile,           &Options::setRGBImagesProfile},
    {7052, kNamedRGBProfile,          RGBProfileChoices,         &Options::rgbTextAndGraphicsProfile,  &Options::setRGBTextAndGraphicsProfile},
    {7054, kNamedCMYKProfile,         CMYKProfileChoices,        &Options::cmykImagesProfile,          &Options::setCMYKImagesProfile},
    {7056, kNamedCMYKProfile,         CMYKProfileChoices,        &Options::cmykTextAndGraphicsProfile, &Options::setCMYKTextAndGraphicsProfile},
    {7060, kNamedDestinationProfile,  DestinationProfileChoices, &Options::destinationProfile,         &Options::setDestinationProfile},
};

struct NameRow {
    SInt32 field;
    OSStatus (Options::*get)(CFStringRef* name) const;
    OSStatus (Options::*set)(CFStringRef name);
};
constexpr NameRow kNames[] = {
    // field, record
    {7040, &Options::trc,                        &Options::setTRC},
    {7058, &Options::grayImagesProfile,          &Options::setGrayImagesProfile},
    {7059, &Options::grayTextAndGraphicsProfile, &Options::setGrayTextAndGraphicsProfile},
};
// clang-format on

void FillChoices(CFBundleRef bundle, ControlRef popUp, std::span<const ColorChoice> choices) {
    const MenuRef menu = GetControlPopupMenuHandle(popUp);
    DeleteMenuItems(menu, 1, CountMenuItems(menu));
    for (const ColorChoice& choice : choices) {
        MenuItemIndex item = 0;
        AppendMenuItemTextWithCFString(menu, CopyLocalizedText(bundle, CFStringMakeConstant(choice.key)).get(), 0, 0,
                                       &item);
        SetMenuItemRefCon(menu, item, choice.ticketValue);
    }
}

void ShowChoice(ControlRef popUp, SInt32 value) {
    SetControl32BitValue(popUp, 0);
    SetPopupButtonToTicketValue(popUp, value);
}

void SetSpinProperty(ControlRef control, OSType tag, SInt32 value) {
    SetControlProperty(control, kSpinControlCreator, tag, sizeof value, &value);
}

void PrepareNumber(const NumberRow& row, ControlRef pane) {
    const SInt32 arrowsNumber = row.field + 1;
    const SInt32 sliderNumber = row.field + 2;
    const ControlRef arrows = FindPanelControl(pane, arrowsNumber);
    SetControl32BitMinimum(arrows, row.minimum);
    SetControl32BitMaximum(arrows, row.maximum);
    SetSpinProperty(arrows, kSpinControlFieldTag, row.field);
    SetSpinProperty(FindPanelControl(pane, row.field), kSpinControlArrowsTag, arrowsNumber);
    if (row.hasSlider) {
        const ControlRef slider = FindPanelControl(pane, sliderNumber);
        SetSpinProperty(arrows, kSpinControlMirrorTag, sliderNumber);
        SetSpinProperty(slider, kSpinControlArrowsTag, arrowsNumber);
        SetControlAction(slider, SpinSliderActionProc);
    }
    CreateSpinControl(arrows);
}

SInt32 ShownNumber(const NumberRow& row, const Options& options) {
    const SInt32 value = row.get(options);
    return value == kTicketValueUnset ? 0 : std::clamp(value, row.minimum, row.maximum);
}

CFRef<CFStringRef> CopyFieldText(ControlRef field) {
    CFStringRef text = nullptr;
    GetControlData(field, kControlEntireControl, kControlEditTextCFStringTag, sizeof text, &text, nullptr);
    return text != nullptr ? CFRef<CFStringRef>::adopt(text) : CFRef<CFStringRef>::retain(CFSTR(""));
}

void ShowText(ControlRef field, CFStringRef text) {
    const CFStringRef shown = text != nullptr ? text : CFSTR("");
    SetControlData(field, kControlEntireControl, kControlEditTextCFStringTag, sizeof shown, &shown);
}

/// The name is null unless the kind has one.
struct ShownProfile {
    SInt32 kind = kTicketValueUnset;
    CFStringRef name = nullptr;
};
ShownProfile ProfileOf(const ProfileRow& row, const Options& options) {
    ShownProfile profile;
    (options.*row.get)(&profile.kind, &profile.name);
    return profile;
}

void TakeProfile(const ProfileRow& row, ControlRef pane, Options* options) {
    const ControlRef popUp = FindPanelControl(pane, row.popUp);
    if (GetControl32BitValue(popUp) == 0) {
        return;  // a kind of another edition
    }
    const ShownProfile before = ProfileOf(row, *options);
    const SInt32 kind = GetPopupButtonTicketValue(popUp);
    const auto name = CopyFieldText(FindPanelControl(pane, row.popUp + 1));
    if (kind != row.namedKind) {
        if (kind != before.kind) {
            (options->*row.set)(kind, nullptr);
        }
    } else if (CFStringGetLength(name.get()) == 0) {
        (options->*row.set)(kTicketValueUnset, nullptr);
    } else if (kind != before.kind || !CFEqual(before.name, name.get())) {
        (options->*row.set)(kind, name.get());
    }
}

void EnableIf(bool condition, ControlRef control) {
    condition ? EnableControl(control) : DisableControl(control);
}

}  // namespace

void PrepareColorControls(CFBundleRef bundle, ControlRef pane) {
    for (const NumberRow& row : kNumbers) {
        PrepareNumber(row, pane);
    }
    for (const ChoiceRow& row : kChoices) {
        FillChoices(bundle, FindPanelControl(pane, row.popUp), row.choices());
    }
    for (const ProfileRow& row : kProfiles) {
        FillChoices(bundle, FindPanelControl(pane, row.popUp), row.choices());
        LimitInputLength(FindPanelControl(pane, row.popUp + 1), kMaximumProfileNameLength);
    }
    for (const NameRow& row : kNames) {
        LimitInputLength(FindPanelControl(pane, row.field), kMaximumProfileNameLength);
    }
}

void ShowColorOptions(const FullColorOptions& options, ControlRef pane) {
    for (const NumberRow& row : kNumbers) {
        SetSpinControlValue(FindPanelControl(pane, row.field + 1), ShownNumber(row, options), false);
    }
    for (const ChoiceRow& row : kChoices) {
        ShowChoice(FindPanelControl(pane, row.popUp), row.get(options));
    }
    for (const ProfileRow& row : kProfiles) {
        const ShownProfile profile = ProfileOf(row, options);
        ShowChoice(FindPanelControl(pane, row.popUp), profile.kind);
        ShowText(FindPanelControl(pane, row.popUp + 1), profile.name);
    }
    for (const NameRow& row : kNames) {
        CFStringRef name = nullptr;
        (options.*row.get)(&name);
        ShowText(FindPanelControl(pane, row.field), name);
    }
    EnableColorControls(pane);
}

void TakeColorOptions(ControlRef pane, FullColorOptions* options) {
    for (const ChoiceRow& row : kChoices) {
        const ControlRef popUp = FindPanelControl(pane, row.popUp);
        if (GetControl32BitValue(popUp) != 0) {
            row.set(options, GetPopupButtonTicketValue(popUp));
        }
    }
    for (const NumberRow& row : kNumbers) {
        const SInt32 value = GetControl32BitValue(FindPanelControl(pane, row.field + 1));
        if (value != ShownNumber(row, *options)) {
            row.set(options, value == 0 ? kTicketValueUnset : value);
        }
    }
    for (const ProfileRow& row : kProfiles) {
        TakeProfile(row, pane, options);
    }
    for (const NameRow& row : kNames) {
        CFStringRef before = nullptr;
        (options->*row.get)(&before);
        const auto name = CopyFieldText(FindPanelControl(pane, row.field));
        if (!CFEqual(before != nullptr ? before : CFSTR(""), name.get())) {
            (options->*row.set)(name.get());
        }
    }
}

void EnableColorControls(ControlRef pane) {
    for (const ProfileRow& row : kProfiles) {
        EnableIf(GetPopupButtonTicketValue(FindPanelControl(pane, row.popUp)) == row.namedKind,
                 FindPanelControl(pane, row.popUp + 1));
    }
    const bool isAdjusted = GetPopupButtonTicketValue(FindPanelControl(pane, kTrappingPopUp)) == kAdjustedTrapping;
    for (const SInt32 number : kTrappingFields) {
        EnableIf(isAdjusted, FindPanelControl(pane, number));
    }
}

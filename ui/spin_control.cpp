#include "ui/spin_control.h"

#include "model/settings/plugin_state.h"
#include "platform/foundation/CFCharacterSet.h"
#include "platform/foundation/CFNumberFormatter.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Notices.h"
#include "platform/toolbox/Windows.h"
#include "ui/code_points.h"
#include "ui/localization.h"
#include "ui/message_text.h"
#include "ui/spin_text.h"
#include "ui/text_input.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace {

constexpr SInt32 kMaximumDecimals = 9;  // more do not fit beside a digit
constexpr EventTypeSpec kFieldEvents[] = {
    {kEventClassTextInput, kEventTextInputUnicodeForKeyEvent},
    {kEventClassControl, kEventControlSetFocusPart},
    {kEventClassKeyboard, kEventRawKeyDown},
    {kEventClassMouse, kEventMouseWheelMoved},
};

// ---- The parts and their properties

OSStatus GetProperty(ControlRef control, OSType tag, SInt32* value) {
    return GetControlProperty(control, kSpinControlCreator, tag, sizeof *value, nullptr, value);
}

SInt32 PropertyOr(ControlRef control, OSType tag, SInt32 absent) {
    SInt32 value = 0;
    return GetProperty(control, tag, &value) == noErr ? value : absent;
}

/// The control that a property names: one of the same window and signature.
OSStatus GetRelated(ControlRef control, OSType tag, ControlRef* related) {
    ControlID id{};
    OSStatus status = GetControlID(control, &id);
    if (status == noErr) {
        status = GetProperty(control, tag, &id.id);
    }
    return status == noErr ? GetControlByID(GetControlOwner(control), &id, related) : status;
}

ControlRef Related(ControlRef control, OSType tag) {
    ControlRef related = nullptr;
    return GetRelated(control, tag, &related) == noErr ? related : nullptr;
}

SpinTextFormat TextFormat(ControlRef arrows) {
    using enum SpinTextFormat::Suffix;
    SpinTextFormat format;
    format.decimals = std::clamp(PropertyOr(arrows, kSpinControlDecimalsTag, 0), SInt32{0}, kMaximumDecimals);
    if (PropertyOr(arrows, kSpinControlAngleTag, 0) != 0) {
        format.suffix = angle;
    } else if (PropertyOr(arrows, kSpinControlPercentTag, 0) != 0) {
        format.suffix = percent;
    }
    return format;
}

/// The number that the field's text is.
std::optional<SInt32> InputValue(ControlRef field, ControlRef arrows) {
    CFStringRef data = nullptr;
    if (GetControlData(field, kControlEntireControl, kControlEditTextCFStringTag, sizeof data, &data, nullptr) !=
        noErr) {
        return std::nullopt;
    }
    const auto text = CFRef<CFStringRef>::adopt(data);
    return SpinTextValue(text.get(), TextFormat(arrows));
}

// ---- What may stand in the field

/// The pattern with the smallest, the largest and the present value in its places.
CFRef<CFStringRef> CopyRangeMessage(ControlRef arrows, CFStringRef patternKey) {
    const auto text = [arrows](SInt32 value) {
        return CFRef<CFStringRef>::adopt(CreateSpinText(value, TextFormat(arrows)));
    };
    const auto pattern = CopyLocalizedText(GetPDEBundle(), patternKey);
    return CopyFilledInMessage(pattern.get(),
                               {text(GetControl32BitMinimum(arrows)).get(), text(GetControl32BitMaximum(arrows)).get(),
                                text(GetControl32BitValue(arrows)).get()});
}

/// Has the field say which values it takes, as a fault while something else stands there.
void ShowLimits(ControlRef field, ControlRef arrows, bool isValid) {
    const auto message = CopyRangeMessage(arrows, isValid ? CFSTR("Spin Control Limits") : CFSTR("Spin Control Fault"));
    HIViewSetFieldMessage(field, message.get(), !isValid);
    SendInputChange(field);
}

void SetValid(ControlRef arrows, bool valid) {
    const SInt32 flag = valid ? 1 : 0;
    SetControlProperty(arrows, kSpinControlCreator, kSpinControlValidTag, sizeof flag, &flag);
    if (ControlRef field = Related(arrows, kSpinControlFieldTag)) {
        ShowLimits(field, arrows, valid);
    }
}

// ---- What follows a value

void Redraw(ControlRef arrows) {
    Draw1Control(Related(arrows, kSpinControlRedrawTag));
}

void ShowText(ControlRef arrows) {
    ControlRef field = Related(arrows, kSpinControlFieldTag);
    if (field == nullptr) {
        return;
    }
    const auto text = CFRef<CFStringRef>::adopt(CreateSpinText(GetControl32BitValue(arrows), TextFormat(arrows)));
    const CFStringRef data = text.get();
    SetControlData(field, kControlEntireControl, kControlEditTextCFStringTag, sizeof data, &data);
    SetValid(arrows, true);
}

void Mirror(ControlRef arrows) {
    if (ControlRef mirror = Related(arrows, kSpinControlMirrorTag)) {
        SetControl32BitValue(mirror, GetControl32BitValue(arrows));
        Draw1Control(mirror);
    }
}

// ---- Events of the field

ControlRef FieldOf(EventRef event) {
    ControlRef field = nullptr;
    GetEventParameter(event, kEventParamDirectObject, typeControlRef, nullptr, sizeof field, nullptr, &field);
    return field;
}

std::u16string EventCharacters(EventRef event, EventParamName name) {
    ByteCount size = 0;
    GetEventParameter(event, name, typeUnicodeText, nullptr, 0, &size, nullptr);
    std::u16string characters(size / sizeof(UniChar), u'\0');
    GetEventParameter(event, name, typeUnicodeText, nullptr, size, nullptr, characters.data());
    return characters;
}

/// Tells at the field which values it takes, and that it has one of them again.
void TellRange(ControlRef field, ControlRef arrows) {
    HMDisplayTag(field, CopyRangeMessage(arrows, CFSTR("Spin Control Range")).get());
}

OSStatus HandleFocus(EventRef event) {
    ControlPartCode part = kControlFocusNoPart;
    GetEventParameter(event, kEventParamControlPart, typeControlPartCode, nullptr, sizeof part, nullptr, &part);
    const ControlRef field = FieldOf(event);
    ControlRef arrows = Related(field, kSpinControlArrowsTag);
    if (part == kControlFocusNoPart && arrows != nullptr) {
        const bool wasValid = SpinControlIsInputValid(arrows);
        SetSpinControlValue(arrows, GetControl32BitValue(arrows), false);
        if (!wasValid) {
            TellRange(field, arrows);
        }
    }
    return eventNotHandledErr;
}

/// Steps of the user's in the field go the arrows' road.
OSStatus Step(ControlRef field, SInt32 steps) {
    ControlRef arrows = Related(field, kSpinControlArrowsTag);
    if (arrows == nullptr || steps == 0) {
        return eventNotHandledErr;
    }
    return HIViewSimulateClick(arrows, steps > 0 ? kControlUpButtonPart : kControlDownButtonPart, 0, nullptr);
}

/// Of the locale that the process began with, as the formatter of the text.
const std::u16string& DecimalSign() {
    static const auto sign = [] {
        const auto locale = CFRef<CFLocaleRef>::adopt(CFLocaleCopyCurrent());
        const auto point = static_cast<CFStringRef>(CFLocaleGetValue(locale.get(), kCFLocaleDecimalSeparator));
        std::u16string listed(static_cast<std::size_t>(CFStringGetLength(point)), u'\0');
        CFStringGetCharacters(point, CFRangeMake(0, CFStringGetLength(point)), listed.data());
        return listed;
    }();
    return sign;
}

std::u16string WithLocaleDecimalSign(const std::u16string& text) {
    constexpr std::u16string_view kDecimalSigns = u".,\u066B";
    std::u16string localized;
    for (const char16_t unit : text) {
        localized += kDecimalSigns.find(unit) == std::u16string_view::npos ? std::u16string(1, unit) : DecimalSign();
    }
    return localized;
}

/// A number that is copied from a page comes with blanks, and with the end of its line.
std::u16string WithoutBlanksAround(const std::u16string& text) {
    constexpr std::u16string_view kBlanks = u" \u00A0\u2007\u202F\u3000";
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first == std::u16string::npos ? std::u16string()
                                         : text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

OSStatus HandleKey(EventRef event) {
    const std::u16string key = EventCharacters(event, kEventParamKeyUnicodes);
    if (key.size() != 1) {
        return eventNotHandledErr;
    }
    return Step(FieldOf(event), (key[0] == kUpArrowCharCode) - (key[0] == kDownArrowCharCode));
}

OSStatus HandleWheel(EventRef event) {
    SInt32 notches = 0;
    GetEventParameter(event, kEventParamMouseWheelDelta, typeSInt32, nullptr, sizeof notches, nullptr, &notches);
    return Step(FieldOf(event), notches);
}

}  // namespace

// ---- The control

OSStatus CreateSpinControl(ControlRef arrows) {
    if (arrows == nullptr) {
        return paramErr;
    }
    ControlRef field = nullptr;
    const OSStatus status = GetRelated(arrows, kSpinControlFieldTag, &field);
    if (status != noErr) {
        return status;
    }
    SetControlAction(arrows, NewControlActionUPP(SpinControlArrowsActionProc));
    return InstallControlEventHandler(field, NewEventHandlerUPP(SpinControlEventHandler), std::size(kFieldEvents),
                                      kFieldEvents, nullptr, nullptr);
}

void DisposeSpinControl(ControlRef) {}

OSStatus SetSpinControlValue(ControlRef arrows, SInt32 value, Boolean) {
    if (arrows == nullptr) {
        return paramErr;
    }
    SetControl32BitValue(arrows, value);
    if (GetControl32BitValue(arrows) != value) {
        SysBeep(1);
        SetValid(arrows, false);
        return paramErr;
    }
    Redraw(arrows);
    ShowText(arrows);
    Mirror(arrows);
    return noErr;
}

void ShowSpinControlInput(ControlRef arrows, SInt32 value) {
    if (arrows == nullptr) {
        return;
    }
    const SInt32 minimum = GetControl32BitMinimum(arrows);
    const SInt32 nearest = std::clamp(value, minimum, std::max(minimum, GetControl32BitMaximum(arrows)));
    SetSpinControlValue(arrows, nearest, false);
    ControlRef field = Related(arrows, kSpinControlFieldTag);
    if (nearest != value && field != nullptr) {
        const auto text = CFRef<CFStringRef>::adopt(CreateSpinText(value, TextFormat(arrows)));
        const CFStringRef data = text.get();
        SetControlData(field, kControlEntireControl, kControlEditTextCFStringTag, sizeof data, &data);
        SetValid(arrows, false);
    }
}

SInt32 SpinControlInput(ControlRef arrows) {
    return InputValue(Related(arrows, kSpinControlFieldTag), arrows).value_or(GetControl32BitValue(arrows));
}

Boolean SpinControlIsInputValid(ControlRef arrows) {
    return PropertyOr(arrows, kSpinControlValidTag, 1) != 0;
}

// ---- Text

Boolean SpinControlValidateInput(const UniChar* characters, CFIndex length) {
    static const std::u16string signs = DecimalSign() + u'-';
    const auto belongsTo = [](CFCharacterSetPredefinedSet set) {
        return [set](UInt32 c) { return CFCharacterSetIsLongCharacterMember(CFCharacterSetGetPredefined(set), c); };
    };
    const auto isAllowed = [isDigit = belongsTo(kCFCharacterSetDecimalDigit)](UInt32 c) {
        return isDigit(c) || (c <= 0xFFFF && signs.find(static_cast<UniChar>(c)) != std::u16string::npos);
    };
    const std::u16string_view text(characters, static_cast<std::size_t>(length));
    return AllCodePoints(text, belongsTo(kCFCharacterSetControl)) || AllCodePoints(text, isAllowed);
}

void SpinControlValidate(ControlRef field) {
    ControlRef arrows = Related(field, kSpinControlArrowsTag);
    if (arrows == nullptr) {
        return;
    }
    const std::optional<SInt32> value = InputValue(field, arrows);
    const bool valid = value && *value >= GetControl32BitMinimum(arrows) && *value <= GetControl32BitMaximum(arrows);
    if (valid) {
        SetControl32BitValue(arrows, *value);
    }
    SetValid(arrows, valid);
    Redraw(arrows);
    Mirror(arrows);
}

OSStatus SpinControlTextInputEventHandler(EventHandlerCallRef next, EventRef event, void*) {
    ControlRef field = FieldOf(event);
    std::u16string text = EventCharacters(event, kEventParamTextInputSendText);
    // To drop the decimal sign of another country would make a number ten times as large. Where there are no decimals,
    // the sign is more likely to part thousands.
    if (ControlRef arrows = Related(field, kSpinControlArrowsTag); arrows && TextFormat(arrows).decimals > 0) {
        text = WithLocaleDecimalSign(text);
    }
    text = WithoutBlanksAround(text);
    SetEventParameter(event, kEventParamTextInputSendText, typeUnicodeText, text.size() * sizeof(char16_t),
                      text.data());
    if (text.empty() || !SpinControlValidateInput(text.data(), static_cast<CFIndex>(text.size()))) {
        SysBeep(1);
        if (ControlRef arrows = Related(field, kSpinControlArrowsTag)) {
            TellRange(field, arrows);
        }
        return noErr;
    }
    const OSStatus status = CallNextEventHandler(next, event);
    SpinControlValidate(field);
    return status;
}

OSStatus SpinControlEventHandler(EventHandlerCallRef next, EventRef event, void* userData) {
    switch (GetEventClass(event)) {
        case kEventClassTextInput:
            return SpinControlTextInputEventHandler(next, event, userData);
        case kEventClassControl:
            return HandleFocus(event);
        case kEventClassKeyboard:
            return HandleKey(event);
        case kEventClassMouse:
            return HandleWheel(event);
        default:
            return eventNotHandledErr;
    }
}

// ---- Actions

void SpinControlArrowsActionProc(ControlRef arrows, ControlPartCode part) {
    SInt32 step = 1;
    GetControlData(arrows, kControlEntireControl, kControlLittleArrowsIncrementValueTag, sizeof step, &step, nullptr);
    const std::int64_t value = GetControl32BitValue(arrows);
    std::int64_t next = value;
    if (part == kControlUpButtonPart) {
        next = std::min<std::int64_t>(value + step, GetControl32BitMaximum(arrows));
    } else if (part == kControlDownButtonPart) {
        next = std::max<std::int64_t>(value - step, GetControl32BitMinimum(arrows));
    }
    if (next == value && part != kControlIndicatorPart) {
        SysBeep(1);
    }
    // The pause between two steps of held arrows is the toolbox's own.
    SetSpinControlValue(arrows, static_cast<SInt32>(next), false);
}

void SpinSliderActionProc(ControlRef slider, ControlPartCode) {
    if (ControlRef arrows = Related(slider, kSpinControlArrowsTag)) {
        SetSpinControlValue(arrows, GetControl32BitValue(slider), false);
    }
}

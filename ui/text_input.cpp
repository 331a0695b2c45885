#include "ui/text_input.h"

#include "model/settings/number_text.h"
#include "model/settings/plugin_state.h"
#include "platform/foundation/CFCharacterSet.h"
#include "platform/foundation/CFNumberFormatter.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Notices.h"
#include "ui/code_points.h"
#include "ui/localization.h"
#include "ui/message_text.h"

#include <algorithm>
#include <optional>
#include <string>

namespace {

constexpr OSType kPropertyCreator = FourCharCode("TPDE");
constexpr OSType kLengthLimitTag = FourCharCode("ILmt");   // SInt32
constexpr OSType kLengthTag = FourCharCode("Tlen");        // SInt32, 0 for no limit
constexpr OSType kCharacterSetTag = FourCharCode("Tchr");  // CFCharacterSetRef, owned by the field
constexpr OSType kTellerTag = FourCharCode("Ttel");        // RefusedInputTeller
constexpr EventTypeSpec kTextEvents[] = {{kEventClassTextInput, kEventTextInputUnicodeForKeyEvent}};

template <typename T>
std::optional<T> Property(ControlRef field, OSType tag) {
    T value{};
    if (GetControlProperty(field, kPropertyCreator, tag, sizeof value, nullptr, &value) != noErr) {
        return std::nullopt;
    }
    return value;
}

template <typename T>
void SetProperty(ControlRef field, OSType tag, T value) {
    SetControlProperty(field, kPropertyCreator, tag, sizeof value, &value);
}

// ---- The field and what is about to enter it

ControlRef FieldOf(EventRef event) {
    ControlRef field = nullptr;
    GetEventParameter(event, kEventParamDirectObject, typeControlRef, nullptr, sizeof field, nullptr, &field);
    return field;
}

std::u16string TextOf(EventRef event) {
    ByteCount size = 0;
    GetEventParameter(event, kEventParamTextInputSendText, typeUnicodeText, nullptr, 0, &size, nullptr);
    std::u16string text(size / sizeof(UniChar), u'\0');
    GetEventParameter(event, kEventParamTextInputSendText, typeUnicodeText, nullptr, size, nullptr, text.data());
    return text;
}

CFRef<CFStringRef> CopyFieldText(ControlRef field) {
    CFStringRef text = nullptr;
    GetControlData(field, kControlEntireControl, kControlEditTextCFStringTag, sizeof text, &text, nullptr);
    return CFRef<CFStringRef>::adopt(text);
}

ControlEditTextSelectionRec Selection(ControlRef field) {
    ControlEditTextSelectionRec selection{0, 0};
    GetControlData(field, kControlEntireControl, kControlEditTextSelectionTag, sizeof selection, &selection, nullptr);
    return selection;
}

bool WouldExceed(ControlRef field, const std::u16string& text, SInt32 limit) {
    const auto [start, end] = Selection(field);
    const CFIndex kept = CFStringGetLength(CopyFieldText(field).get()) - (end - start);
    return kept + static_cast<CFIndex>(text.size()) > limit;
}

// ---- Characters

bool IsMember(CFCharacterSetPredefinedSet set, UInt32 codePoint) {
    return CFCharacterSetIsLongCharacterMember(CFCharacterSetGetPredefined(set), codePoint);
}

/// The platform's set of control characters also has those that format text unseen; a field keeps these, so they are
/// no editing action.
bool IsControlCharacter(UInt32 c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0);
}

bool IsEditingAction(const std::u16string& text) {
    return AllCodePoints(text, IsControlCharacter);
}

// ---- Answers

/// Says at the field what it takes: the pattern with the number in it, if it has a place for one.
OSStatus Refuse(ControlRef field, CFStringRef patternKey, SInt32 number = 0) {
    SysBeep(1);
    const auto text = CFRef<CFStringRef>::adopt(CreateLocalizedCFStringFromNumberWithDecimals(number, 0));
    HMDisplayTag(field, CopyFilledInMessage(CopyLocalizedText(GetPDEBundle(), patternKey).get(), {text.get()}).get());
    return noErr;
}

#define kTooLong CFSTR("Input Too Long")
#define kOtherCharacters CFSTR("Input Other Characters")
#define kDigitsOnly CFSTR("Input Digits Only")

/// What to say of a text that is not of the set.
CFStringRef OtherThan(CFCharacterSetRef set) {
    const bool hasDigits = CFEqual(set, CFCharacterSetGetPredefined(kCFCharacterSetDecimalDigit));
    return hasDigits ? kDigitsOnly : kOtherCharacters;
}

void SendWord(ControlRef field, EventTargetRef target) {
    const bool isEmpty = CFStringGetLength(CopyFieldText(field).get()) == 0;
    EventRef event = nullptr;
    if (CreateEvent(kCFAllocatorDefault, kEventClassTextInputChange, isEmpty ? kEventInputIsEmpty : kEventInputHasText,
                    0, 0, &event) != noErr) {
        return;
    }
    SetEventParameter(event, kEventParamDirectObject, typeControlRef, sizeof field, &field);
    SendEventToEventTarget(event, target);
    ReleaseEvent(event);
}

/// Lets the field take the text, then sends word of it to the target that `targetOf` names.
template <typename TargetOf>
OSStatus PassOn(EventHandlerCallRef next, EventRef event, ControlRef field, TargetOf targetOf) {
    const OSStatus status = CallNextEventHandler(next, event);
    SendWord(field, targetOf(field));
    return status;
}

EventTargetRef WindowTarget(ControlRef field) {
    return GetWindowEventTarget(GetControlOwner(field));
}

struct RefusedInputTeller {
    RefusedInputProc tell;
    void* userData;
};

void AppendCodePoint(std::u16string* text, UInt32 codePoint) {
    if (codePoint > 0xFFFF) {
        *text += static_cast<char16_t>(0xD7C0 + (codePoint >> 10));
        codePoint = 0xDC00 + (codePoint & 0x3FF);
    }
    *text += static_cast<char16_t>(codePoint);
}

/// Of a text, what the set holds, and what it does not.
struct SortedText {
    std::u16string allowed;
    std::u16string others;
};

SortedText Sort(const std::u16string& text, CFCharacterSetRef set) {
    SortedText sorted;
    AllCodePoints(text, [&](UInt32 c) {
        const SInt32 digit = CFCharacterGetDigitValue(c);
        const UInt32 plain = digit >= 0 ? '0' + static_cast<UInt32>(digit) : c;
        if (CFCharacterSetIsLongCharacterMember(set, c)) {
            AppendCodePoint(&sorted.allowed, c);
        } else if (CFCharacterSetIsLongCharacterMember(set, plain)) {
            AppendCodePoint(&sorted.allowed, plain);
        } else {
            AppendCodePoint(&sorted.others, c);
        }
        return true;
    });
    return sorted;
}

/// Goes before the field's LimitInputEventHandler and leaves the lasting checks to it.
OSStatus KeepAllowedInputHandler(EventHandlerCallRef, EventRef event, void*) {
    const ControlRef field = FieldOf(event);
    const std::u16string text = TextOf(event);
    const auto set = Property<CFCharacterSetRef>(field, kCharacterSetTag);
    if (!set || IsEditingAction(text)) {
        return eventNotHandledErr;
    }
    const SortedText sorted = Sort(text, *set);
    const SInt32 limit = Property<SInt32>(field, kLengthTag).value_or(0);
    const bool isTooLong = limit > 0 && WouldExceed(field, sorted.allowed, limit);
    const auto teller = Property<RefusedInputTeller>(field, kTellerTag);
    const bool isTold = teller && teller->tell != nullptr;
    if (isTold) {
        const auto others = CFRef<CFStringRef>::adopt(CFStringCreateWithCharacters(
            kCFAllocatorDefault, sorted.others.data(), static_cast<CFIndex>(sorted.others.size())));
        teller->tell({others.get(), isTooLong}, teller->userData);
    }
    if (isTold && (isTooLong || !sorted.others.empty())) {
        SysBeep(1);
    } else if (isTooLong) {
        Refuse(field, kTooLong, limit);
    } else if (!AllCodePoints(sorted.others,
                              [](UInt32 c) { return IsMember(kCFCharacterSetWhitespaceAndNewline, c); })) {
        Refuse(field, OtherThan(*set));
    }
    if (isTooLong || sorted.allowed.empty()) {
        return noErr;
    }
    SetEventParameter(event, kEventParamTextInputSendText, typeUnicodeText, sorted.allowed.size() * sizeof(char16_t),
                      sorted.allowed.data());
    return eventNotHandledErr;
}

void InstallTextHandler(ControlRef field, EventHandlerProcPtr handler) {
    InstallControlEventHandler(field, handler, std::size(kTextEvents), kTextEvents, nullptr, nullptr);
}

}  // namespace

// ---- Length

void LimitInputLength(ControlRef field, SInt32 maximum) {
    if (maximum < 1) {
        return;
    }
    const bool isNew = !Property<SInt32>(field, kLengthLimitTag);
    SetProperty(field, kLengthLimitTag, maximum);
    if (isNew) {
        InstallTextHandler(field, InputLengthLimitHandler);
        const ControlEditTextValidationUPP validation = EditTextValidationHandler;
        SetControlData(field, kControlEntireControl, kControlEditTextValidationProcTag, sizeof validation, &validation);
    }
}

OSStatus InputLengthLimitHandler(EventHandlerCallRef next, EventRef event, void*) {
    const ControlRef field = FieldOf(event);
    const std::u16string text = TextOf(event);
    const auto limit = Property<SInt32>(field, kLengthLimitTag);
    if (limit && !IsEditingAction(text) && WouldExceed(field, text, *limit)) {
        return Refuse(field, kTooLong, *limit);
    }
    return PassOn(next, event, field, GetControlEventTarget);
}

void EditTextValidationHandler(ControlRef field) {
    const SInt32 limit = Property<SInt32>(field, kLengthLimitTag).value_or(0);
    const CFRef<CFStringRef> text = CopyFieldText(field);
    if (limit < 1 || CFStringGetLength(text.get()) <= limit) {
        return;
    }
    const bool splitsPair = IsHighSurrogate(CFStringGetCharacterAtIndex(text.get(), limit - 1)) &&
                            IsLowSurrogate(CFStringGetCharacterAtIndex(text.get(), limit));
    const SInt32 length = splitsPair ? limit - 1 : limit;
    const auto cut =
        CFRef<CFStringRef>::adopt(CFStringCreateWithSubstring(kCFAllocatorDefault, text.get(), CFRangeMake(0, length)));
    const CFStringRef data = cut.get();
    const auto [start, end] = Selection(field);
    const ControlEditTextSelectionRec selection{std::min(start, length), std::min(end, length)};
    SetControlData(field, kControlEntireControl, kControlEditTextCFStringTag, sizeof data, &data);
    SetControlData(field, kControlEntireControl, kControlEditTextSelectionTag, sizeof selection, &selection);
}

// ---- Length and characters

void LimitInputLengthAndCharacters(ControlRef field, SInt32 maximum, CFCharacterSetRef characters) {
    if (field == nullptr) {
        return;
    }
    if (!Property<SInt32>(field, kLengthTag)) {
        InstallTextHandler(field, LimitInputEventHandler);
    }
    SetProperty(field, kLengthTag, std::max(maximum, SInt32{0}));
    auto old = CFRef<CFCharacterSetRef>::adopt(Property<CFCharacterSetRef>(field, kCharacterSetTag).value_or(nullptr));
    if (characters != nullptr) {
        SetProperty(field, kCharacterSetTag, CFRef<CFCharacterSetRef>::retain(characters).leak());
    } else {
        RemoveControlProperty(field, kPropertyCreator, kCharacterSetTag);
    }
}

OSStatus LimitInputEventHandler(EventHandlerCallRef next, EventRef event, void*) {
    const ControlRef field = FieldOf(event);
    const std::u16string text = TextOf(event);
    if (!IsEditingAction(text)) {
        const SInt32 limit = Property<SInt32>(field, kLengthTag).value_or(0);
        if (limit > 0 && WouldExceed(field, text, limit)) {
            return Refuse(field, kTooLong, limit);
        }
        const auto set = Property<CFCharacterSetRef>(field, kCharacterSetTag);
        if (set && !AllCodePoints(text, [&](UInt32 c) { return CFCharacterSetIsLongCharacterMember(*set, c); })) {
            return Refuse(field, OtherThan(*set));
        }
    }
    return PassOn(next, event, field, WindowTarget);
}

// ---- Characters, one by one

void KeepAllowedInput(ControlRef field, RefusedInputProc tell, void* userData) {
    SetProperty(field, kTellerTag, RefusedInputTeller{tell, userData});
    InstallTextHandler(field, KeepAllowedInputHandler);
}

void SendInputChange(ControlRef field) {
    SendWord(field, WindowTarget(field));
}

// ---- Digits

void FilterNumericInput(ControlRef field) {
    InstallTextHandler(field, NumericInputFilterHandler);
}

OSStatus NumericInputFilterHandler(EventHandlerCallRef next, EventRef event, void*) {
    const std::u16string text = TextOf(event);
    const auto isDigit = [](UInt32 c) { return IsMember(kCFCharacterSetDecimalDigit, c); };
    if (!IsEditingAction(text) && !AllCodePoints(text, isDigit)) {
        return Refuse(FieldOf(event), kDigitsOnly);
    }
    return PassOn(next, event, FieldOf(event), WindowTarget);
}

// ---- Page ranges

OSStatus PageRangeInputEventHandler(EventHandlerCallRef next, EventRef event, void*) {
    const std::u16string text = TextOf(event);
    const auto string = CFRef<CFStringRef>::adopt(
        CFStringCreateWithCharacters(kCFAllocatorDefault, text.data(), static_cast<CFIndex>(text.size())));
    if (!PageRangeValidateInput(string.get())) {
        SysBeep(1);  // the dialogs say at the field what a page list is
        return noErr;
    }
    return PassOn(next, event, FieldOf(event), WindowTarget);
}

Boolean PageRangeValidateInput(CFStringRef text) {
    const auto plain = CFRef<CFStringRef>::adopt(CFNumberListCreatePlain(kCFAllocatorDefault, text));
    std::u16string units(static_cast<std::size_t>(CFStringGetLength(plain.get())), u'\0');
    CFStringGetCharacters(plain.get(), CFRangeMake(0, static_cast<CFIndex>(units.size())), units.data());
    return std::ranges::all_of(units, [](UniChar c) { return c == ',' || c == '-' || (c >= '0' && c <= '9'); });
}

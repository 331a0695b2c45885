#include "jobtypes/dialogs/lan_fax_controls.h"

#include "jobtypes/dialogs/fax_texts.h"
#include "jobtypes/dialogs/lan_fax_options.h"
#include "jobtypes/records/fax_numbers.h"
#include "jobtypes/records/job_type.h"
#include "platform/foundation/CFCharacterSet.h"
#include "ui/text_input.h"

#include <optional>

namespace {

constexpr SInt32 kLongestPrefix = 4;
constexpr SInt32 kLongestCard = 16;

// Items of the pop-ups that stand for yes and no, or now and later.
constexpr SInt32 kConfirmationOn = 1;
constexpr SInt32 kConfirmationOff = 2;
constexpr SInt32 kSendNow = 1;
constexpr SInt32 kSendLater = 2;
constexpr SInt32 kNoCover = 1;
constexpr SInt32 kPrintCover = 2;

LongDateTime Now() {
    LongDateTime now = 0;
    GetDateTime(&now);
    return now;
}

void SetClock(const FaxWindow& window, const LongDateRec& clock) {
    SetControlData(window.control(kFaxClock), kControlEntireControl, kControlClockLongDateTag, sizeof clock, &clock);
}

std::optional<LongDateRec> ClockOf(const FaxWindow& window) {
    LongDateRec clock{};
    return GetControlData(window.control(kFaxClock), kControlEntireControl, kControlClockLongDateTag, sizeof clock,
                          &clock, nullptr) == noErr
               ? std::optional(clock)
               : std::nullopt;
}

void EnableAndFocus(const FaxWindow& window, SInt32 number, bool enabled) {
    window.enable(number, enabled);
    if (enabled) {
        window.focus(number);
    }
}

/// A text with the box that turns it on.
void ShowOptionalText(const FaxWindow& window, SInt32 box, SInt32 field, CFStringRef text) {
    window.setValue(box, text != nullptr ? 1 : 0);
    window.setText(field, text);
}

CFRef<CFStringRef> CopyOptionalText(const FaxWindow& window, SInt32 box, SInt32 field) {
    return window.value(box) != 0 ? window.copyText(field) : nullptr;
}

}  // namespace

void LimitLANFaxFields(const FaxWindow& window) {
    LimitInputLengthAndCharacters(window.control(kFaxPrefix), kLongestPrefix, kFaxDialingCharacterSet);
    LimitInputLengthAndCharacters(window.control(kFaxCard), kLongestCard,
                                  CFCharacterSetGetPredefined(kCFCharacterSetDecimalDigit));
    for (const SInt32 number : {kFaxPrefix, kFaxCard}) {
        KeepAllowedInput(window.control(number), nullptr, nullptr);
    }
}

void SyncToUI(const FaxWindow& window, CFDictionaryRef dictionary) {
    const LANFaxOptions options = LANFaxOptions::fromDictionary(dictionary);
    window.setValue(kFaxConfirmationSheet, options.confirmationSheet ? kConfirmationOn : kConfirmationOff);
    window.setValue(kFaxSendSpeed, static_cast<SInt32>(options.sendSpeed));
    window.setValue(kFaxResolution, static_cast<SInt32>(options.resolution));
    window.setValue(kFaxSendTime, options.sendTime ? kSendLater : kSendNow);
    SetClock(window, ClockOfSendTime(options.sendTime, Now()));
    ShowOptionalText(window, kFaxPrefixBox, kFaxPrefix, options.dialingPrefix.get());
    ShowOptionalText(window, kFaxCardBox, kFaxCard, options.creditCard.get());
    window.setValue(kFaxCover, options.coverSheet ? kPrintCover : kNoCover);
    window.setText(kFaxNotes, options.coverSheetNotes.get());
    window.setValue(kFaxPromptDuplicate, options.promptDuplicate);
    window.setValue(kFaxPromptRemove, options.promptRemove);
    UpdateSendTimeControls(window);
    UpdateDialingPrefixControls(window);
    UpdateCreditCardControls(window);
    UpdateCoverSheetControls(window);
    UpdateCreditCardHint(window);
}

void SyncFromUI(const FaxWindow& window, CFMutableDictionaryRef dictionary) {
    LANFaxOptions options{
        .confirmationSheet = window.value(kFaxConfirmationSheet) == kConfirmationOn,
        .sendSpeed = window.value(kFaxSendSpeed),
        .resolution = window.value(kFaxResolution),
        .sendTime = {},
        .dialingPrefix = CopyOptionalText(window, kFaxPrefixBox, kFaxPrefix),
        .creditCard = CopyOptionalText(window, kFaxCardBox, kFaxCard),
        .coverSheet = window.value(kFaxCover) == kPrintCover,
        .coverSheetNotes = window.copyText(kFaxNotes),
        .promptDuplicate = window.value(kFaxPromptDuplicate) != 0,
        .promptRemove = window.value(kFaxPromptRemove) != 0,
    };
    if (const auto clock = ClockOf(window); clock && window.value(kFaxSendTime) == kSendLater) {
        options.sendTime = SendTimeOfClock(*clock, Now());
    }
    if (options.creditCard) {
        options.creditCard = CopyASCIIDigits(options.creditCard.get());
    }
    options.toDictionary(dictionary, CopyFaxText(window.bundle(), CFSTR("Notes Label")).get());
}

void UpdateSendTimeControls(const FaxWindow& window) {
    EnableAndFocus(window, kFaxClock, window.value(kFaxSendTime) == kSendLater);
    UpdateSendTimeHint(window);
}

void UpdateSendTimeHint(const FaxWindow& window) {
    CFRef<CFStringRef> hint;
    if (const auto clock = ClockOf(window); clock && window.value(kFaxSendTime) == kSendLater) {
        LongDateTime shown = 0;
        LongDateToSeconds(&*clock, &shown);
        hint = shown < Now() ? CopyFaxText(window.bundle(), CFSTR("Send Time Over")) : nullptr;
    }
    window.setText(kFaxClockHint, hint.get());
}

void UpdateDialingPrefixControls(const FaxWindow& window) {
    EnableAndFocus(window, kFaxPrefix, window.value(kFaxPrefixBox) != 0);
}

void UpdateCreditCardControls(const FaxWindow& window) {
    EnableAndFocus(window, kFaxCard, window.value(kFaxCardBox) != 0);
}

void UpdateCoverSheetControls(const FaxWindow& window) {
    const bool printed = window.value(kFaxCover) == kPrintCover;
    window.enable(kFaxCoverSetup, printed);
    EnableAndFocus(window, kFaxNotes, printed);
}

void UpdateCreditCardHint(const FaxWindow& window) {
    const CFRef<CFStringRef> number = CopyASCIIDigits(window.copyText(kFaxCard).get());
    const CFIndex length = CFStringGetLength(number.get());
    const CFRef<CFStringRef> digits = CopyNumberText(length);
    CFRef<CFStringRef> hint;
    if (length > 0) {
        hint = CopyFaxMessage(window.bundle(), CFSTR("Credit Card Digits"), {digits.get()});
    }
    window.setText(kFaxCardHint, hint.get());
}

CFIndex DialingPrefixLength(const FaxWindow& window) {
    return CFStringGetLength(CopyOptionalText(window, kFaxPrefixBox, kFaxPrefix).get());
}

CFIndex CreditCardLength(const FaxWindow& window) {
    return CFStringGetLength(CopyOptionalText(window, kFaxCardBox, kFaxCard).get());
}

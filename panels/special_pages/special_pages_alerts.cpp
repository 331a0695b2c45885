#include "panels/special_pages/special_pages_alerts.h"

#include "model/records/page_range.h"
#include "model/settings/number_text.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Notices.h"
#include "ui/localization.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace {

struct Alert {
    OSStatus code;
    const char* title;
    const char* message;
};
// clang-format off
constexpr Alert kAlerts[] = {
    // code                     title                     message
    {kPageRangeErrTooLarge,     "Page Number Limit Title", "Page Number Limit"},
    {kPageRangeErrSyntax,       "Invalid Pages Title",     "Invalid Page Ranges"},
    {kPageRangeErrOrder,        "Invalid Ranges Title",    "Invalid Range Order"},
    {kPageRangeErrPageNumber,   "Invalid Page Numbers Title", "Invalid Page Numbers Message"},
    {kPageRangeErrConflict,     "PageRangeConflictTitle",  "PageRangeConflictMessage"},
};
static_assert(std::size(kAlerts) == 5);
// clang-format on

CFOptionFlags Show(CFStringRef title, CFStringRef message, CFStringRef defaultButton, CFStringRef alternateButton) {
    CFOptionFlags response = kCFUserNotificationDefaultResponse;
    CFUserNotificationDisplayAlert(0, kCFUserNotificationCautionAlertLevel, nullptr, nullptr, nullptr, title, message,
                                   defaultButton, alternateButton, nullptr, &response);
    return response;
}

std::u16string Text(CFStringRef string) {
    std::u16string text(static_cast<std::size_t>(CFStringGetLength(string)), u'\0');
    CFStringGetCharacters(string, {0, CFStringGetLength(string)}, text.data());
    return text;
}

}  // namespace

void SpecialPagesUserNotification(CFBundleRef bundle, OSStatus code) {
    const Alert* const alert = std::ranges::find(kAlerts, code, &Alert::code);
    if (alert != std::end(kAlerts)) {
        Show(CopyLocalizedText(bundle, CFStringMakeConstant(alert->title)).get(),
             CopyLocalizedText(bundle, CFStringMakeConstant(alert->message)).get(), nullptr, nullptr);
    }
}

CFRef<CFStringRef> CopySpecialPagesFault(CFBundleRef bundle, OSStatus code) {
    const Alert* const alert = std::ranges::find(kAlerts, code, &Alert::code);
    return alert == std::end(kAlerts) ? nullptr : CopyLocalizedText(bundle, CFStringMakeConstant(alert->message));
}

void TellSpecialPagesLimit(CFBundleRef bundle, CFStringRef titleKey, CFStringRef messageKey, SInt32 limit) {
    std::u16string message = Text(CopyLocalizedText(bundle, messageKey).get());
    const auto number = CFRef<CFStringRef>::adopt(CreateLocalizedCFStringFromNumberWithDecimals(limit, 0));
    if (const std::size_t place = message.find(u"%@"); place != std::u16string::npos) {
        message.replace(place, 2, Text(number.get()));
    }
    const auto text = CFRef<CFStringRef>::adopt(CFStringCreateWithCharacters(
        kCFAllocatorDefault, reinterpret_cast<const UniChar*>(message.data()), static_cast<CFIndex>(message.size())));
    Show(CopyLocalizedText(bundle, titleKey).get(), text.get(), nullptr, nullptr);
}

bool AskToDeleteSpecialPages(CFBundleRef bundle, CFStringRef messageKey) {
    return Show(CopyLocalizedText(bundle, CFSTR("Delete Special Pages Title")).get(),
                CopyLocalizedText(bundle, messageKey).get(), CopyLocalizedText(bundle, CFSTR("No Command")).get(),
                CopyLocalizedText(bundle, CFSTR("Yes Command")).get()) == kCFUserNotificationAlternateResponse;
}

#include "jobtypes/fax_texts.h"

#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFCharacterSet.h"
#include "platform/toolbox/Notices.h"
#include "ui/localization.h"
#include "ui/number_text.h"

#include <algorithm>
#include <string>

namespace {

constexpr std::size_t kLongestArgument = 80;

std::u16string UnitsOf(CFStringRef string) {
    std::u16string units(static_cast<std::size_t>(CFStringGetLength(string)), u'\0');
    if (!units.empty()) {
        CFStringGetCharacters(string, CFRangeMake(0, CFStringGetLength(string)), units.data());
    }
    return units;
}

CFRef<CFStringRef> StringOf(const std::u16string& units) {
    return CFRef<CFStringRef>::adopt(
        CFStringCreateWithCharacters(kCFAllocatorDefault, units.data(), static_cast<CFIndex>(units.size())));
}

/// As it may stand in a sentence.
std::u16string Presentable(CFStringRef argument) {
    std::u16string text = UnitsOf(argument);
    if (text.size() > kLongestArgument) {
        const bool splitsPair = (text[kLongestArgument - 1] & 0xFC00) == 0xD800;
        text = text.substr(0, kLongestArgument - (splitsPair ? 1 : 0)) + u'…';
    }
    const CFCharacterSetRef control = CFCharacterSetGetPredefined(kCFCharacterSetControl);
    std::ranges::replace_if(
        text, [control](UniChar unit) { return CFCharacterSetIsLongCharacterMember(control, unit); }, u' ');
    return text;
}

}  // namespace

CFRef<CFStringRef> CopyFaxText(CFBundleRef bundle, CFStringRef key) {
    return CFRef<CFStringRef>::adopt(
        CFBundleCopyLocalizedString(bundle, key, CFSTR("STRING NOT FOUND"), CFSTR("LANFax")));
}

CFRef<CFStringRef> CopyFaxMessage(CFBundleRef bundle, CFStringRef key, std::initializer_list<CFStringRef> arguments) {
    const std::u16string pattern = UnitsOf(CopyFaxText(bundle, key).get());
    std::u16string message;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const auto argument = i + 3 < pattern.size() ? static_cast<std::size_t>(pattern[i + 1] - u'1') : 0;
        const bool isPlace = pattern[i] == u'%' && pattern.compare(i + 2, 2, u"$@") == 0 && argument < arguments.size();
        if (isPlace) {
            message += Presentable(arguments.begin()[argument]);
            i += 3;
        } else {
            message += pattern[i];
        }
    }
    return StringOf(message);
}

CFRef<CFStringRef> CopyNumberText(CFIndex number) {
    return CFRef<CFStringRef>::adopt(CreateLocalizedCFStringFromNumberWithDecimals(static_cast<double>(number), 0));
}

void ShowFaxNotice(CFBundleRef bundle, CFStringRef headerKey, CFStringRef message) {
    CFUserNotificationDisplayAlert(0, kCFUserNotificationCautionAlertLevel, nullptr, nullptr, nullptr,
                                   CopyFaxText(bundle, headerKey).get(), message, nullptr, nullptr, nullptr, nullptr);
}

FaxAnswer AskFaxQuestion(CFBundleRef bundle, const FaxQuestion& question) {
    const CFRef<CFStringRef> header = CopyFaxText(bundle, question.headerKey);
    const CFRef<CFStringRef> yes = CopyLocalizedText(bundle, question.defaultKey);
    const CFRef<CFStringRef> no = CopyLocalizedText(bundle, question.alternateKey);
    CFOptionFlags response = kCFUserNotificationAlternateResponse;
    if (question.checkBoxKey != nullptr) {
        CFUserNotificationDisplayAlertWithCheckBox(kCFUserNotificationCautionAlertLevel, header.get(), question.message,
                                                   CopyFaxText(bundle, question.checkBoxKey).get(), yes.get(), no.get(),
                                                   &response);
    } else {
        CFUserNotificationDisplayAlert(0, kCFUserNotificationCautionAlertLevel, nullptr, nullptr, nullptr, header.get(),
                                       question.message, yes.get(), no.get(), nullptr, &response);
    }
    return {(response & kCFUserNotificationResponseMask) == kCFUserNotificationDefaultResponse,
            (response & CFUserNotificationCheckBoxChecked(0)) != 0};
}

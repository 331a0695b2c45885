#include "jobtypes/dialogs/fax_texts.h"

#include "model/settings/number_text.h"
#include "platform/foundation/CFBundle.h"
#include "platform/toolbox/Notices.h"
#include "ui/localization.h"

CFRef<CFStringRef> CopyFaxText(CFBundleRef bundle, CFStringRef key) {
    return CFRef<CFStringRef>::adopt(
        CFBundleCopyLocalizedString(bundle, key, CFSTR("STRING NOT FOUND"), CFSTR("LANFax")));
}

CFRef<CFStringRef> CopyFaxMessage(CFBundleRef bundle, CFStringRef key, std::initializer_list<CFStringRef> arguments) {
    return CopyFilledInMessage(CopyFaxText(bundle, key).get(), arguments);
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

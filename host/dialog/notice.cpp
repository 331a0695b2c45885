#include "host/dialog/notice.h"

namespace {

/// The button that answers; null titles leave theirs out, but the first one is "OK" then.
CFOptionFlags answerTo(CFOptionFlags level, const CFRef<CFStringRef>& header, const CFRef<CFStringRef>& message,
                       CFStringRef first, CFStringRef alternate, CFStringRef other) {
    CFOptionFlags response = 0;
    CFUserNotificationDisplayAlert(0, level, nullptr, nullptr, nullptr, header.get(), message.get(), first, alternate,
                                   other, &response);
    return response & kCFUserNotificationResponseMask;
}

}  // namespace

void showNotice(CFOptionFlags level, const CFRef<CFStringRef>& header, const CFRef<CFStringRef>& message) {
    answerTo(level, header, message, nullptr, nullptr, nullptr);
}

bool askByNotice(const CFRef<CFStringRef>& header, const CFRef<CFStringRef>& message, const CFRef<CFStringRef>& yes,
                 const CFRef<CFStringRef>& no) {
    return answerTo(kCFUserNotificationCautionAlertLevel, header, message, yes.get(), no.get(), nullptr) ==
           kCFUserNotificationDefaultResponse;
}

bool goesOnDespiteNotice(const CFRef<CFStringRef>& header, const CFRef<CFStringRef>& message,
                         const CFRef<CFStringRef>& goBack, const CFRef<CFStringRef>& goOn) {
    return askDespiteNotice(header, message, goBack, goOn, {}) == NoticeAnswer::goOn;
}

NoticeAnswer askDespiteNotice(const CFRef<CFStringRef>& header, const CFRef<CFStringRef>& message,
                              const CFRef<CFStringRef>& goBack, const CFRef<CFStringRef>& goOn,
                              const CFRef<CFStringRef>& putRight) {
    switch (answerTo(kCFUserNotificationCautionAlertLevel | kCFUserNotificationDefaultIsCancelFlag, header, message,
                     goBack.get(), putRight.get(), goOn.get())) {
        case kCFUserNotificationOtherResponse:
            return NoticeAnswer::goOn;
        case kCFUserNotificationAlternateResponse:
            return NoticeAnswer::putRight;
        default:
            return NoticeAnswer::goBack;
    }
}

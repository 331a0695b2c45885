#include "host/dialog/notice.h"

void showNotice(CFOptionFlags level, const CFRef<CFStringRef>& header, const CFRef<CFStringRef>& message) {
    CFOptionFlags response = 0;
    CFUserNotificationDisplayAlert(0, level, nullptr, nullptr, nullptr, header.get(), message.get(), nullptr, nullptr,
                                   nullptr, &response);
}

bool askByNotice(const CFRef<CFStringRef>& header, const CFRef<CFStringRef>& message, const CFRef<CFStringRef>& yes,
                 const CFRef<CFStringRef>& no) {
    CFOptionFlags response = 0;
    CFUserNotificationDisplayAlert(0, kCFUserNotificationCautionAlertLevel, nullptr, nullptr, nullptr, header.get(),
                                   message.get(), yes.get(), no.get(), nullptr, &response);
    return (response & kCFUserNotificationResponseMask) == kCFUserNotificationDefaultResponse;
}

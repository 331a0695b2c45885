#include "host/notice.h"

void showNotice(CFOptionFlags level, const CFRef<CFStringRef>& header, const CFRef<CFStringRef>& message) {
    CFOptionFlags response = 0;
    CFUserNotificationDisplayAlert(0, level, nullptr, nullptr, nullptr, header.get(), message.get(), nullptr, nullptr,
                                   nullptr, &response);
}

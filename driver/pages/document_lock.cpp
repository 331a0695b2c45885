#include "driver/pages/document.h"
#include "platform/foundation/message.h"

std::string reasonOfLock() {
    return messageText("is protected by a password");
}

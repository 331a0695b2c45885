#include "platform/printing/last_error.h"

#include "platform/foundation/text.h"
#include "platform/printing/PMPrinter.h"

#include <algorithm>
#include <system_error>

namespace {

/// Of the thread that made the call.
CFRef<CFStringRef>& lastError() {
    static thread_local CFRef<CFStringRef> text;
    return text;
}

}  // namespace

void clearLastError() {
    lastError() = nullptr;
}

OSStatus failWith(OSStatus status, std::string_view subject, std::string_view reason) {
    lastError() = makeString(errorLine(subject, reason));
    return status;
}

CFStringRef PMGetLastErrorText() {
    return lastError().get();
}

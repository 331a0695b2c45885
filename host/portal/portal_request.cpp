#include "host/portal/portal_request.h"

#include "host/portal/request_keys.h"
#include "host/settings/dictionary_values.h"
#include "platform/files/plain_file.h"
#include "platform/foundation/CFPropertyList.h"
#include "platform/foundation/message.h"

#include <cerrno>

#include <unistd.h>

namespace {

Result<CFRef<CFDictionaryRef>> readDictionary(const std::string& path) {
    const auto data = readPlainFile(path, kKeptFileMaximumBytes);
    if (!data) {
        return unusable(path, readFault(errno, kKeptFileMaximumBytes));
    }
    CFStringRef reason = nullptr;
    auto root = CFRef<CFTypeRef>::adopt(
        CFPropertyListCreateFromXMLData(nullptr, data.get(), kCFPropertyListImmutable, &reason));
    const auto reasonOwner = CFRef<CFStringRef>::adopt(reason);
    if (CFGetTypeID(root.get()) != CFDictionaryGetTypeID()) {
        return unusable(path, root ? messageText("its top is not a dictionary") : utf8Text(reason));
    }
    return CFRef<CFDictionaryRef>::adopt(static_cast<CFDictionaryRef>(root.leak()));
}

CFRef<CFDictionaryRef> dictionaryIn(CFDictionaryRef dictionary, CFStringRef key) {
    const void* const value = CFDictionaryGetValue(dictionary, key);
    return CFGetTypeID(value) == CFDictionaryGetTypeID()
               ? CFRef<CFDictionaryRef>::retain(static_cast<CFDictionaryRef>(value))
               : CFRef<CFDictionaryRef>();
}

}  // namespace

std::string PortalRequest::document() const {
    // A file is opened anew, from its beginning and without a copy; what comes through a pipe is taken as it comes.
    constexpr const char* kFile = "/proc/self/fd/0";
    return kind == Kind::prepare ? std::string() : openPlainFile(kFile, INT64_MAX) ? kFile : "-";
}

Result<PortalRequest> readPortalRequest(const std::string& folder) {
    PortalRequest request{folder};
    auto read = readDictionary(request.file(portal::kRequestFile));
    if (!read) {
        return read.failure();
    }
    const CFDictionaryRef values = read->get();
    const std::string kind = stringIn(values, kPortalKindKey);
    request.kind = kind == portal::kPrepare ? PortalRequest::Kind::prepare
                   : kind == portal::kPrint ? PortalRequest::Kind::print
                                            : PortalRequest::Kind::choose;
    request.title = stringIn(values, kPortalTitleKey);
    request.parentWindow = stringIn(values, kPortalParentKey);
    request.acceptLabel = stringIn(values, kPortalAcceptLabelKey);
    request.formats = stringIn(values, kPortalFormatsKey);
    request.hasCurrentPage = booleanIn(values, kPortalHasCurrentKey).value_or(false);
    request.hasSelectedPages = booleanIn(values, kPortalHasSelectionKey).value_or(false);
    request.settings = dictionaryIn(values, kPortalSettingsKey);
    request.pageSetup = dictionaryIn(values, kPortalPageSetupKey);
    if (request.kind == PortalRequest::Kind::print) {
        auto answer = readDictionary(request.file(portal::kAnswerFile));
        if (!answer) {
            return answer.failure();
        }
        request.queue = stringIn(answer->get(), kPortalQueueKey);
    } else {
        request.queue = stringIn(request.settings.get(), CFSTR("printer"));
    }
    return request;
}

#include "host/settings/settings_file.h"

#include "host/settings/dictionary_values.h"
#include "platform/files/plain_file.h"
#include "platform/files/url_access.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFPropertyList.h"
#include "platform/foundation/message.h"
#include "platform/printing/PMTicket.h"

#include <array>
#include <cerrno>
#include <cstring>

namespace {

#define kNameKey CFSTR("Name")

struct TicketRow {
    CFStringRef key;
    CFRef<CFDictionaryRef> JobSettings::*items;
};
/// The dictionaries of a settings file.
std::array<TicketRow, 3> ticketRows() {
    return {{
        {kPDE_PMPrintSettingsKey, &JobSettings::printSettings},
        {kPDE_PMPageFormatKey, &JobSettings::pageFormat},
        {kPDE_PMPrinterInfoKey, &JobSettings::printerInfo},
    }};
}

}  // namespace

Result<JobSettings> readSettingsFile(const std::string& path, std::string* name) {
    const auto data = readPlainFile(path, kKeptFileMaximumBytes);
    if (!data) {
        return unusable(path, readFault(errno, kKeptFileMaximumBytes));
    }
    CFStringRef reason = nullptr;
    const auto root = CFRef<CFTypeRef>::adopt(
        CFPropertyListCreateFromXMLData(nullptr, data.get(), kCFPropertyListImmutable, &reason));
    const auto reasonOwner = CFRef<CFStringRef>::adopt(reason);
    if (!root) {
        return unusable(path, utf8Text(reason));
    }
    if (CFGetTypeID(root.get()) != CFDictionaryGetTypeID()) {
        return unusable(path, messageText("is no settings file: its top is not a dictionary"));
    }
    const auto* const tickets = static_cast<CFDictionaryRef>(root.get());
    JobSettings settings;
    for (const auto& [key, items] : ticketRows()) {
        const CFTypeRef ticket = CFDictionaryGetValue(tickets, key);
        if (CFGetTypeID(ticket) == CFDictionaryGetTypeID()) {
            settings.*items = CFRef<CFDictionaryRef>::retain(static_cast<CFDictionaryRef>(ticket));
        }
    }
    if (name != nullptr) {
        *name = stringIn(tickets, kNameKey);
    }
    return settings;
}

std::optional<std::string> writeSettingsFile(const JobSettings& settings, const std::string& path,
                                             const std::string& name) {
    const auto root = CFRef<CFMutableDictionaryRef>::adopt(
        CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    if (!name.empty()) {
        CFDictionarySetValue(root.get(), kNameKey, makeString(name).get());
    }
    for (const auto& [key, items] : ticketRows()) {
        if (settings.*items) {
            CFDictionarySetValue(root.get(), key, (settings.*items).get());
        }
    }
    const auto data = CFRef<CFDataRef>::adopt(CFPropertyListCreateXMLData(nullptr, root.get()));
    SInt32 error = 0;
    if (!CFURLWriteDataAndPropertiesToResource(makeFileURL(path).get(), data.get(), nullptr, &error)) {
        return path + ": " + (error == EINVAL ? messageText("is there and is not a file") : systemMessage(error));
    }
    return std::nullopt;
}

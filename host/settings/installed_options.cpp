#include "host/settings/installed_options.h"

#include "host/settings/ppd_choices.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/message.h"
#include "platform/foundation/text.h"

Result<CFRef<CFDictionaryRef>> readInstalledOptions(const std::vector<std::string>& options, const Printer& printer) {
    if (options.empty()) {
        return CFRef<CFDictionaryRef>();
    }
    PMTicketRef info = 0;
    PMTicketCreate(nullptr, kPDE_PMPrinterInfoKey, &info);
    PMPrinterWriteInfoTicket(printer.get(), nullptr, info);
    const PPDChoices choices(info);
    PMTicketReleaseAndClear(&info);

    auto installed = CFRef<CFMutableDictionaryRef>::adopt(
        CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    for (const std::string& option : options) {
        const std::size_t equals = option.find('=');
        const std::string keyword = option.substr(0, equals);
        const std::string value = option.substr(equals + 1);
        if (!choices.offers(keyword, value)) {
            return Failure{ExitStatus::usage,
                           "--installed " + option + ": " + messageText("%1 does not offer this", {printer.name()})};
        }
        CFDictionarySetValue(installed.get(), makeString(keyword).get(), makeString(value).get());
    }
    return CFRef<CFDictionaryRef>::adopt(installed.leak());
}

// What people call a printer's settings.
#include "platform/foundation/message.h"
#include "platform/printing/PMPrinter.h"

#include "platform/foundation/text.h"
#include "platform/printing/custom_size.h"
#include "platform/printing/last_error.h"
#include "platform/printing/printer_record.h"

namespace {

constexpr std::string_view kCustomPrefix = "Custom.";

/// The title of a custom value, which the PPD calls just "Custom".
std::string customTitle(const PPDOption& option, const PPDChoice& custom, std::string_view value) {
    if (option.keyword == "PageSize" || option.keyword == "PageRegion") {
        if (const auto size = readCustomSize(value)) {
            return customSizeText(*size);
        }
    }
    return option.hasSecretCustom ? custom.title
                                  : custom.title + ": " + std::string(value.substr(kCustomPrefix.size()));
}

std::optional<std::string> titleOf(const PPDOption& option, std::string_view value) {
    if (const auto choice = option.findChoice(value)) {
        return option.choices[*choice].title;
    }
    const auto custom = option.findChoice("Custom");
    if (!custom || !value.starts_with(kCustomPrefix)) {
        return std::nullopt;
    }
    return customTitle(option, option.choices[*custom], value);
}

}  // namespace

OSStatus PMPrinterCopySettingTitles(PMPrinter printer, CFStringRef mainKeyword, CFStringRef option, CFStringRef* title,
                                    CFStringRef* optionTitle) {
    clearLastError();
    if (printer == nullptr || title == nullptr || optionTitle == nullptr) {
        return failWith(paramErr, "setting", "no printer, or no place for its titles");
    }
    const std::string keyword = utf8Text(mainKeyword);
    const PPDOption* const found = printer->ppd.findOption(keyword);
    const auto foundTitle = found == nullptr ? std::nullopt : titleOf(*found, utf8Text(option));
    if (found == nullptr || !foundTitle) {
        return failWith(kPMKeyNotFound, keyword, messageText("the printer does not offer this"));
    }
    *title = makeString(found->title).leak();
    *optionTitle = makeString(*foundTitle).leak();
    return noErr;
}

Boolean PMPrinterHasSetting(PMPrinter printer, CFStringRef mainKeyword, CFStringRef option) {
    const PPDOption* const found = printer == nullptr ? nullptr : printer->ppd.findOption(utf8Text(mainKeyword));
    return found != nullptr && titleOf(*found, utf8Text(option)).has_value();
}

#include "platform/printing/secret_options.h"

#include "platform/foundation/CFString.h"
#include "platform/foundation/text.h"
#include "platform/printing/PMPrinter.h"
#include "platform/printing/printer_record.h"

#include <algorithm>
#include <array>

bool isSecretName(std::string_view name) {
    static constexpr std::array<std::string_view, 5> kWords{"password", "passcode", "creditcard", "authorization",
                                                            "secret"};
    std::string lower(name);
    std::ranges::transform(lower, lower.begin(), lowerCase);
    return std::ranges::any_of(kWords, [&](std::string_view word) { return lower.find(word) != std::string::npos; });
}

bool isSecretOption(const PPDFile& ppd, std::string_view name) {
    const PPDOption* const option = ppd.findOption(name);
    return isSecretName(name) || (option != nullptr && option->hasSecretCustom);
}

std::optional<std::string> typedValue(std::string_view value) {
    static constexpr std::string_view kCustom = "Custom.";
    if (value.starts_with(kCustom)) {
        return std::string(value.substr(kCustom.size()));
    }
    const std::size_t equals = value.find('=');
    if (!value.starts_with('{') || !value.ends_with('}') || equals == std::string_view::npos ||
        value.find_first_of(" =", equals + 1) != std::string_view::npos) {
        return std::nullopt;
    }
    return std::string(value.substr(equals + 1, value.size() - equals - 2));
}

Boolean PMSettingIsSecret(PMPrinter printer, CFStringRef key) {
    const std::string name = utf8Text(key);
    return printer == nullptr ? isSecretName(name) : isSecretOption(printer->ppd, name);
}

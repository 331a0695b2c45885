#include "host/settings/ppd_choices.h"

#include <optional>
#include <string_view>

namespace {

/// The length-prefixed form that the PPD library takes; nothing for a text that is too long for it.
std::optional<std::string> prefixed(const std::string& text) {
    if (text.size() > 255) {
        return std::nullopt;
    }
    return static_cast<char>(static_cast<unsigned char>(text.size())) + text;
}

std::optional<UInt32> mainIndex(PPDContext context, const std::string& mainKeyword) {
    const auto keyword = prefixed(mainKeyword);
    UInt32 index = 0;
    if (!keyword || ppdGetMainIndex(context, reinterpret_cast<ConstPPDString>(keyword->data()), &index) != noErr) {
        return std::nullopt;
    }
    return index;
}

}  // namespace

PPDChoices::PPDChoices(PMTicketRef printerInfo) {
    ppdOpenCompiledPPDFromTicket(printerInfo, &context_);
    setInstallableOptions(context_, printerInfo);
}

PPDChoices::~PPDChoices() {
    ppdCloseCompiledPPDFromTicket(context_);
}

template <typename Condition>
std::optional<std::size_t> PPDChoices::find(const std::string& mainKeyword, Condition condition) const {
    const auto main = mainIndex(context_, mainKeyword);
    for (UInt32 i = 0; main && i < ppdCountUIOptions(context_, *main); ++i) {
        PPDUIOption record{};
        ConstPPDString keyword = nullptr;
        if (ppdGetIndUIOption(context_, *main, i, &record) == noErr &&
            ppdGetOptionString(context_, *main, record.optionIndex, &keyword) == noErr &&
            condition(record, std::string_view(reinterpret_cast<const char*>(keyword) + 1, keyword[0]))) {
            return i;
        }
    }
    return std::nullopt;
}

bool PPDChoices::hasKeyword(const std::string& mainKeyword) const {
    return mainIndex(context_, mainKeyword).has_value();
}

bool PPDChoices::offers(const std::string& mainKeyword, const std::string& option) const {
    return positionOf(mainKeyword, option.starts_with("Custom.") ? "Custom" : option).has_value();
}

std::size_t PPDChoices::countOptions(const std::string& mainKeyword) const {
    const auto main = mainIndex(context_, mainKeyword);
    return main ? ppdCountUIOptions(context_, *main) : 0;
}

std::vector<std::string> PPDChoices::options(const std::string& mainKeyword) const {
    std::vector<std::string> all;
    find(mainKeyword, [&](const PPDUIOption&, std::string_view keyword) {
        all.emplace_back(keyword);
        return false;
    });
    return all;
}

std::optional<std::size_t> PPDChoices::positionOf(const std::string& mainKeyword, const std::string& option) const {
    return find(mainKeyword, [&](const PPDUIOption&, std::string_view keyword) { return keyword == option; });
}

std::string PPDChoices::installed(const std::string& mainKeyword) const {
    std::string chosen;
    find(mainKeyword, [&](const PPDUIOption& option, std::string_view keyword) {
        const bool isInstalled = option.isInstallable != 0 && option.isChosen != 0;
        chosen = isInstalled ? keyword : std::string_view();
        return isInstalled;
    });
    return chosen;
}

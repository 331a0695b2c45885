// What a printer offers: the options of its PPD, asked for by keyword.
#pragma once

#include "platform/printing/CompiledPPD.h"

#include <optional>
#include <string>
#include <vector>

class PPDChoices {
public:
    /// The printer that the printer info ticket describes; without one, nothing is offered.
    explicit PPDChoices(PMTicketRef printerInfo);
    ~PPDChoices();
    PPDChoices(const PPDChoices&) = delete;
    PPDChoices& operator=(const PPDChoices&) = delete;

    bool hasKeyword(const std::string& mainKeyword) const;
    /// A "Custom.…" option is offered by a main keyword that has a custom one, whatever its numbers are.
    bool offers(const std::string& mainKeyword, const std::string& option) const;
    /// The number of options of a main keyword; 0 when there is no such keyword.
    std::size_t countOptions(const std::string& mainKeyword) const;
    /// Its options, in the PPD's order.
    std::vector<std::string> options(const std::string& mainKeyword) const;
    /// The position of an option among those of its main keyword, from 0.
    std::optional<std::size_t> positionOf(const std::string& mainKeyword, const std::string& option) const;
    /// What is installed, as an option of a main keyword that says it; empty when there is no such keyword.
    std::string installed(const std::string& mainKeyword) const;

private:
    /// The position of the first option that meets the condition.
    template <typename Condition>
    std::optional<std::size_t> find(const std::string& mainKeyword, Condition condition) const;

    PPDContext context_ = nullptr;
};

// What a printer offers: the options of its PPD, asked for by keyword.
#pragma once

#include "platform/printing/CompiledPPD.h"

#include <string>

class PPDChoices {
public:
    /// The printer that the printer info ticket describes; without one, nothing is offered.
    explicit PPDChoices(PMTicketRef printerInfo);
    ~PPDChoices();
    PPDChoices(const PPDChoices&) = delete;
    PPDChoices& operator=(const PPDChoices&) = delete;

    bool hasKeyword(const std::string& mainKeyword) const;
    /// A "Custom.…" option is taken as offered: its numbers are not the PPD's to list.
    bool offers(const std::string& mainKeyword, const std::string& option) const;

private:
    PPDContext context_ = nullptr;
};

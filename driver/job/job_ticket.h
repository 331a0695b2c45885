// Print settings that are made for one purpose and forgotten.
#pragma once

#include "driver/instructions/ticket_values.h"
#include "model/settings/ppd_access.h"

#include <string>

/// A print settings ticket of its own: what it says of a job beyond the session's settings is not what a settings file
/// keeps.
class JobTicket {
public:
    JobTicket() { PMTicketCreate(nullptr, kPDE_PMPrintSettingsKey, &ticket_); }
    /// A copy.
    explicit JobTicket(PMTicketRef printSettings) : JobTicket() {
        PMTicketSetItems(ticket_, CFRef<CFDictionaryRef>::adopt(PMTicketCopyItems(printSettings)).get());
    }
    ~JobTicket() { PMTicketReleaseAndClear(&ticket_); }
    JobTicket(const JobTicket&) = delete;
    JobTicket& operator=(const JobTicket&) = delete;

    [[nodiscard]] PMTicketRef get() const { return ticket_; }
    void set(CFStringRef key, const std::string& value) {
        PMTicketSetCFString(ticket_, kDriverClient, key, makeString(value).get(), kPMUnlocked);
    }
    /// Chooses an option of a PPD main keyword.
    void choose(const std::string& mainKeyword, const std::string& option) {
        PPDSetMainKeyword(ticket_, makeString(mainKeyword).get(), makeString(option).get());
    }

private:
    PMTicketRef ticket_ = 0;
};

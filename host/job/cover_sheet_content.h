// What stands on a fax's cover sheet, as the print settings ticket says it.
#pragma once

#include "platform/printing/PMTicket.h"

#include <optional>
#include <string>
#include <vector>

struct CoverSheetContent {
    struct Sender {
        std::string name;
        std::string organization;
        std::string phone;
        std::string fax;
        std::string email;
    };
    struct Recipient {
        std::string name;
        std::string organization;
        std::string fax;
    };
    /// In the user's language, from the ticket; empty when it has none.
    struct Labels {
        std::string to;
        std::string from;
        std::string phone;
        std::string fax;
        std::string notes;
    };

    bool isA4 = false;  // else Letter
    Labels labels;
    std::optional<Sender> sender;
    std::vector<Recipient> recipients;
    std::string recipientText;  // the sender's own words in place of the list
    std::string notes;
    std::string watermark;  // the name of a stored one; empty for none
    std::string image;      // the name of a stored one; empty for none
};

/// Nothing unless the job is a fax with a cover sheet. Settings that are missing or of another type have their
/// defaults: Letter, the sender and the list of recipients shown. Nothing else of the fax's options is read, so that
/// what the sender dials and pays with cannot get onto the paper.
std::optional<CoverSheetContent> readCoverSheetContent(PMTicketRef printSettings);

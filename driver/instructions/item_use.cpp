#include "driver/instructions/item_use.h"

#include "jobtypes/records/job_type.h"
#include "model/settings/ticket_items.h"
#include "platform/foundation/text.h"
#include "platform/printing/PMPrinter.h"

#include <algorithm>
#include <array>

namespace {

struct UseRow {
    std::string start;
    ItemUse use;
};

/// Items that are about less than printing; families of items, of which other editions have more, by what is common.
const auto& useRows() {
    static const std::array kRows{
        // the beginning of the item's key, what it is about
        UseRow{utf8Text(kPMJobNameKey), ItemUse::document},
        UseRow{utf8Text(kPMPageRangeKey), ItemUse::document},
        UseRow{utf8Text(kPMJobHoldUntilTimeKey), ItemUse::document},
        UseRow{utf8Text(kSavedJobNameKey), ItemUse::document},
        UseRow{utf8Text(kSavedJobLocationKey), ItemUse::document},
        UseRow{kJobNotesJobNameName, ItemUse::document},
        UseRow{utf8Text(kPMCopiesKey), ItemUse::job},
        UseRow{utf8Text(kPMOrientationKey), ItemUse::job},
        UseRow{utf8Text(kJobTypeTicketKey), ItemUse::job},
        UseRow{"com.tavro.print.Fax", ItemUse::job},
        UseRow{"com.tavro.print.JobNotes", ItemUse::job},
        UseRow{"com.tavro.print.SpecialPages.", ItemUse::job},
        UseRow{"com.tavro.print.watermark.", ItemUse::job},
        // The printer's own options for covers.
        UseRow{"JCLCovers", ItemUse::job},
        UseRow{"JCLMedia", ItemUse::job},
        UseRow{"JCLFrontBackMedia", ItemUse::job},
    };
    return kRows;
}

}  // namespace

ItemUse useOfItem(const std::string& key) {
    const auto row = std::ranges::find_if(useRows(), [&](const UseRow& item) { return key.starts_with(item.start); });
    return row == useRows().end() ? ItemUse::printing : row->use;
}

// What a queue's own options are at the start of a job.
#pragma once

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"
#include "platform/printing/option_list.h"
#include "platform/printing/ppd_file.h"

#include <optional>

struct StartingOptions {
    OptionList choices;  // PPD main keyword to option keyword
    std::optional<SInt32> copies;
    std::string pageRange;              // empty for all pages
    std::optional<SInt32> orientation;  // as a page format ticket counts it
    /// All others, as they are: they go with every job, since the user's other programs print with them too.
    OptionList others;
    /// Settings that no option stands for (settings_option.h); null for none.
    CFRef<CFDictionaryRef> settings;
    bool namesSettings = false;  // also when there are none: jobs that have their own say so
    std::string settingsFault;   // why those that are there cannot be read
};

/// What the options of a queue with the PPD at the path stand for. Values that no job can have are left out.
StartingOptions sortOptions(const PPDFile& ppd, const std::string& ppdPath, const OptionList& options);

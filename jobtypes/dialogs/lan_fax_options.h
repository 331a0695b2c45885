// A fax's options as the setup shows them: what it reads from the ticket's dictionary and what it writes there.
#pragma once

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/DateTimeUtils.h"

#include <optional>

/// The setup's tabs, as its tab control counts them.
enum class LANFaxTab : SInt32 { recipients = 1, options, preferences };

/// The values of the tabs of options and preferences. A text that is null is one that the user has turned off.
struct LANFaxOptions {
    bool confirmationSheet;
    CFIndex sendSpeed;  // items of their pop-ups, from 1
    CFIndex resolution;
    std::optional<LongDateTime> sendTime;  // nothing: at once
    CFRef<CFStringRef> dialingPrefix;
    CFRef<CFStringRef> creditCard;
    bool coverSheet;
    CFRef<CFStringRef> coverSheetNotes;
    bool promptDuplicate;
    bool promptRemove;

    /// What is absent, or of another kind than it should be, has its default. Texts that are empty are null.
    static LANFaxOptions fromDictionary(CFDictionaryRef dictionary);
    /// Notes come with their label, which a driver prints above them. What is turned off is not written, but not
    /// removed either: a send time, prefix, card number or note that stands in the dictionary stays there.
    void toDictionary(CFMutableDictionaryRef dictionary, CFStringRef notesLabel) const;
};

/// Removes what the tab shows, so that the defaults hold. The recipients have none.
void RevertLANFaxOptions(CFMutableDictionaryRef dictionary, LANFaxTab tab);

/// The moment that a clock stands for: what it shows or, when that is over, the next time that it is this time of day.
LongDateTime SendTimeOfClock(const LongDateRec& clock, LongDateTime now);
/// What the clock shows for a send time: that moment, also when it is over. Midnight of today when there is no send
/// time.
LongDateRec ClockOfSendTime(std::optional<LongDateTime> sendTime, LongDateTime now);

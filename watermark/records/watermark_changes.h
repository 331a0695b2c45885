// Changes of the stored watermarks, as people make them: several dialogs may be open, and each shows a list of its own.
//
// A change is one reading and one writing of the store, and dialogs take turns: what another one has stored stays. On a
// fault the store is as it was.
#pragma once

#include "platform/foundation/CFCollections.h"
#include "watermark/records/watermark_record.h"

enum class ChangeFault {
    none,
    nameOfList,  // the store has its list under this name
    nameOfFont,  // a font is, or would be, stored under the name
    nameTaken,   // there is a watermark of this name
    notWritten,
};

struct WatermarkChange {
    ChangeFault fault = ChangeFault::none;
    SInt32 error = 0;                // errno.h, with notWritten
    CFRef<CFStringRef> name;         // of the watermark, or of the font that cannot be stored beside it
    CFRef<CFMutableArrayRef> names;  // that the store has now, as LoadListOfWatermarks gives them; null with notWritten
};

/// Stores the record in the place of the watermark called `own`, or as the last one when that is null or gone. Another
/// one of its name gives way only if it `mayReplace` it. `shown` is the list for a store that has lost its own.
WatermarkChange StoreWatermark(const WatermarkRecord& record, CFStringRef own, bool mayReplace, CFArrayRef shown);

WatermarkChange DeleteWatermark(CFStringRef own, CFArrayRef shown);

// How booklets are folded, and what that looks like.
#pragma once

#include "platform/foundation/CFBase.h"

/// Ticket values of the option map of "TRFoldOptions" that finish a booklet. Any other one does not.
enum BookletFold : SInt32 {
    kFoldNone = 1,
    kFoldNotInstalled = 6,  // stands for no option: nothing is asked of a printer that cannot fold
    kFoldBooklet = 7,
    kFoldAndStapleBooklet = 8,
};

/// The file name of the picture of a booklet, constant. Options that do not finish a booklet show as none.
CFStringRef BookletFoldPicture(SInt32 foldOption, bool drawOutlines);

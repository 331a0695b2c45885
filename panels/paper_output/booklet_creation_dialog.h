// The dialog that makes a booklet of the job.
#pragma once

#include "platform/foundation/CFBase.h"

struct BookletCreation {
    Boolean on;
    SInt32 drawOutlines;   // 1 with the outlines of the booklet's pages
    SInt32 foldOption;     // ticket value of the TRFoldOptions option: a BookletFold (model/records/booklet_fold.h)
    Boolean forceNewSize;  // print on paper of another size
    SInt32 size;           // ticket value of that PageSize; 0 when there is none yet
};

/// Shows the dialog (nib "FinishingDialogs", window "BookletCreation"). The booklet changes on OK only: one that is off
/// loses its fold and its size. Folding is offered as far as the printer can do it, another size when the
/// PPD has sizes. Returns the status of loading the nib.
OSStatus RunModalBookletCreationDialog(CFBundleRef bundle, BookletCreation* booklet);

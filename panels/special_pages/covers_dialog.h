// The dialog that chooses the covers of a job.
#pragma once

#include "model/records/special_page.h"
#include "model/stock_dialogs/dialog_mode.h"

#include <memory>

/// Shows the dialog (nib "SpecialPages", window "Office Covers") until the user ends it; *result is kSpecialPagesOK or
/// kSpecialPagesCancel (dialog_window.h). It works on copies: with OK they replace the covers, and the panel's list is
/// refilled; with Cancel the covers stay the very objects that they were. A cover that is printed takes the size of the
/// job's stock, of the default paper when that is null. Returns the status of loading the nib; a dialog that could not
/// be shown counts as cancelled.
OSStatus RunModalCoversDialog(CFBundleRef bundle, DialogMode mode, const Stock* jobStock,
                              std::unique_ptr<Cover>* frontCover, std::unique_ptr<Cover>* backCover, SInt16* result);

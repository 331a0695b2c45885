// The dialog that prints pages of the document in another way than the rest, or changes one such range.
#pragma once

#include "model/records/special_page_list.h"
#include "model/stock_dialogs/dialog_mode.h"

/// Shows the dialog (nib "SpecialPages", window "Office Exceptions") until the user ends it; *result is kSpecialPagesOK
/// or kSpecialPagesCancel (dialog_window.h). With OK, an exception for each listed range is added to the list or, in
/// edit mode, takes the place of the edited one, which is one of the list's; the panel's list is refilled. A page list
/// that cannot be used is refused with a notice, and the dialog stays open. Of the edited page, what the dialog does
/// not show is kept. The job's stock is of no account here. Returns paramErr in edit mode without a page, else the
/// status of loading the nib; a dialog that could not be shown counts as cancelled.
OSStatus RunModalExceptionsDialog(CFBundleRef bundle, DialogMode mode, const Stock* jobStock,
                                  ExceptionPageList* exceptions, const ExceptionPage* edited, SInt16* result);

// The dialog that adds blank sheets between the pages of the document, or changes one such insert.
#pragma once

#include "model/records/special_page_list.h"
#include "model/stock_dialogs/dialog_mode.h"

/// The most inserts that are made at one time. A page list such as "7-" stands for ten million of them: more than the
/// limit are refused with a notice that names it, before anything is made, and the dialog stays open. Page 0 is refused
/// as well: what comes before page 1 is a choice of its own.
inline constexpr SInt32 kMostInsertsAtOnce = 10000;

/// Shows the dialog (nib "SpecialPages", window "Inserts") until the user ends it; *result is kSpecialPagesOK or
/// kSpecialPagesCancel (dialog_window.h). With OK, one insert for each listed page is added to the list or, in edit
/// mode, takes the place of the edited one, which is one of the list's; the panel's list is refilled. The job's stock
/// is of no account here. Returns the status of loading the nib; a dialog that could not be shown counts as cancelled.
OSStatus RunModalInsertsDialog(CFBundleRef bundle, DialogMode mode, const Stock* jobStock, InsertList* inserts,
                               const Insert* edited, SInt16* result);

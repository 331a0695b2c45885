// The dialog in which recipients are picked from the user's address book.
#pragma once

#include "jobtypes/records/fax_recipient_list.h"

/// Adds the people that the user picks to the list, each as AddRecipient does; a living FaxListScope is needed. More
/// than the list has room for are refused, and the dialog stays. kFaxDialogOK after OK, else kFaxDialogCancel.
SInt16 RunModalFaxABPicker(CFBundleRef bundle, FaxRecipientList* list);

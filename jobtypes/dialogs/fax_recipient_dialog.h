// The dialog in which one recipient is typed or changed.
#pragma once

#include "jobtypes/records/fax_recipient_list.h"

/// Adds a recipient to the list as AddRecipient does. kFaxDialogOK when one was added, else kFaxDialogCancel.
SInt16 RunModalAddFaxRecipientDialog(CFBundleRef bundle, FaxRecipientList* list);

/// Changes a recipient of the list, which moves to its end, also when the user then did not want the duplicate that it
/// would have become. kFaxDialogOK when it was changed, else kFaxDialogCancel.
SInt16 RunModalEditFaxRecipientDialog(CFBundleRef bundle, FaxRecipientList* list, FaxRecipient* recipient);

// The dialog that keeps the recipients as a group in the address book.
#pragma once

#include "jobtypes/records/fax_recipient_list.h"

/// Asks for a name and saves the group, until that succeeds or the user gives up.
void RunModalSaveGroupDialog(CFBundleRef bundle, FaxRecipientList* list);

// The dialog that sets up a fax's cover sheet.
#pragma once

#include "jobtypes/records/fax_recipient_list.h"

/// Edits what the options say of the cover sheet; Cancel leaves them as they are. kFaxDialogOK or kFaxDialogCancel.
SInt16 RunModalFaxCoverSheetSetup(CFBundleRef bundle, CFMutableDictionaryRef options, FaxRecipientList* list);

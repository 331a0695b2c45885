// The setup of a fax: to whom, how, and what the list of recipients asks.
#pragma once

#include "jobtypes/records/fax_recipient_list.h"

/// Runs the setup on the caller's options (keys in fax_options.h) and recipients, which it changes while it runs; after
/// Cancel both hold what they held before, in equal copies. kFaxDialogOK or kFaxDialogCancel; kFaxDialogOK, too, when
/// the setup cannot be shown.
SInt16 RunModalLANFaxSetup(CFBundleRef bundle, CFMutableDictionaryRef options, FaxRecipientList* list);

// How much a fax device can dial, and what happens to recipients for whom it is not enough.
#pragma once

#include "jobtypes/records/fax_recipient_list.h"

#include <vector>

/// Characters of the dialing prefix, the recipient's dialing string and the credit card number together.
inline constexpr CFIndex kMaxDialingCharacters = 50;

/// The recipients whose numbers are too long, in the list's order; lent.
std::vector<FaxRecipient*> RecipientsBeyondDialingLength(const FaxRecipientList& list, CFIndex prefixLength,
                                                         CFIndex creditCardLength);

/// Whether all numbers can be dialed. When some cannot, an alert lists them and lets the user edit or remove them, and
/// the answer is what holds afterwards. Needs a living FaxListScope.
bool ValidateMaxCharacters(CFBundleRef bundle, CFIndex prefixLength, CFIndex creditCardLength, FaxRecipientList* list);

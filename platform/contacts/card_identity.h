// Who a card is, found without reading all of it.
#pragma once

#include "platform/contacts/card.h"

/// The card's unique id. One that has none answers to an id made from its bytes, which stays the same until somebody
/// changes it.
std::string uniqueIdOf(const std::string& card);

/// An id made from the bytes, in the form of a UUID.
std::string idFromBytes(const std::string& bytes);

/// Reads the card, and gives it that id if it has none. The library for cards must be there.
CardOwner readIdentifiedCard(const std::string& card);

// Where the address book's cards are kept.
#pragma once

#include "platform/contacts/card.h"

#include <optional>
#include <string>
#include <vector>

class CardStore {
public:
    virtual ~CardStore() = default;

    /// Whether it can be read, or be made.
    virtual bool isUsable() = 0;
    virtual std::optional<Card> find(const std::string& uniqueId) = 0;
    /// Adds the cards, in place of those with the same unique ids; all of them or none. No other card changes.
    virtual bool save(const std::vector<const Card*>& cards) = 0;
};

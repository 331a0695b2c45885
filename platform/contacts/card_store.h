// Where the address book's cards are kept.
#pragma once

#include "platform/contacts/card.h"

#include <optional>
#include <string>
#include <vector>

class CardStore {
public:
    virtual ~CardStore() = default;

    /// All cards, each with a unique id; nothing when they cannot be read.
    virtual std::optional<std::vector<CardOwner>> all() = 0;
    /// Those cards whose ids, as bareId() gives them, are among the given ones; nothing when they cannot be read.
    virtual std::optional<std::vector<CardOwner>> find(const std::vector<std::string>& bareIds) = 0;
    /// Adds the cards, in place of those with the same unique ids; all of them or none. No other card changes. A store
    /// that gives out its own ids sets the new cards' ids to these.
    virtual bool save(const std::vector<Card*>& cards) = 0;
};

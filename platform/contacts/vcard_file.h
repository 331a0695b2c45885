// The cards in the file contacts.vcf of the user's data folder.
#pragma once

#include "platform/contacts/card_store.h"

/// Reads the file anew each time, because other programs write it too.
class VCardFile : public CardStore {
public:
    std::optional<std::vector<CardOwner>> all() override;
    std::optional<std::vector<CardOwner>> find(const std::vector<std::string>& bareIds) override;
    bool save(const std::vector<Card*>& cards) override;
};

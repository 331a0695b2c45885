// The cards in the file contacts.vcf of the user's data folder.
#pragma once

#include "platform/contacts/card_store.h"

/// Reads the file anew each time, because other programs write it too.
class VCardFile : public CardStore {
public:
    bool isUsable() override;
    std::optional<Card> find(const std::string& uniqueId) override;
    bool save(const std::vector<const Card*>& cards) override;
};

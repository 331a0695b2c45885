// A card over libebook-contacts.
#pragma once

#include "platform/contacts/card.h"

#include <array>

class EbookCard final : public Card {
public:
    /// A card with a new unique id and nothing else.
    EbookCard();
    /// Reads a vCard of version 2.1, 3.0 or 4.0. Anything else gives an empty card.
    explicit EbookCard(const std::string& text);

    std::string text() const override;
    std::string uniqueId() const override;
    bool isGroup() const override;
    bool isCompany() const override;
    std::optional<std::string> textOf(const char* attribute) const override;
    std::optional<std::string> namePart(NamePart part) const override;
    std::vector<LabelledText> labelledTexts(const char* attribute) const override;
    std::vector<std::string> members() const override;

    void setUniqueId(const std::string& uniqueId) override;
    void makeGroup() override;
    void setText(const char* attribute, const std::optional<std::string>& text) override;
    void setNamePart(NamePart part, const std::optional<std::string>& name) override;
    void setLabelledTexts(const char* attribute, const std::vector<LabelledText>& texts) override;
    void addMember(const Card& person) override;
    void renameMembers(const std::unordered_map<std::string, std::string>& newIds) override;
    void keepAsText() override;

    /// Turns a group into a contact list, which is what the clients of evolution-data-server take for a group: EMAIL
    /// attributes that name the contact by a parameter. Only members among `people` are carried over; the others stay
    /// as they are.
    void makeContactList(const std::vector<CardOwner>& people);

private:
    using Name = std::array<std::string, 5>;  // family, given, additional, prefixes, suffixes
    struct Releaser {
        void operator()(struct _EVCard* card) const;
    };

    /// What is kept of a card that is not taken apart.
    struct Written {
        std::string text;
        std::string uniqueId;
        bool isGroup;
    };

    /// The card, taken apart when it is not.
    struct _EVCard* card() const;
    bool isContactList() const;
    void addToContactList(const Card& person);
    Name name() const;
    void setName(const Name& parts);

    mutable std::unique_ptr<struct _EVCard, Releaser> card_;  // null when written_ has the card
    mutable Written written_;
};

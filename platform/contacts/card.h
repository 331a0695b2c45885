// One vCard, and the changes that the address book makes to it. All texts are UTF-8.
#pragma once

#include <array>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

struct LabelledText {
    std::string label;
    std::string text;
};

class Card {
public:
    /// A card with a new unique id and nothing else.
    Card();
    /// Reads a vCard of version 2.1, 3.0 or 4.0. Anything else gives an empty card.
    explicit Card(const std::string& text);

    /// The card in version 3.0, its lines ended by CR and LF. Attributes that the address book does not know are as
    /// they were read; the names that the format demands are there.
    std::string text() const;

    /// Empty when there is none.
    std::string uniqueId() const;
    bool isGroup() const;

    void makeGroup();
    /// An attribute of one text, such as "ORG"; without a text it goes.
    void setText(const char* attribute, const std::optional<std::string>& text);
    /// The given name; the family name and the other parts stay.
    void setGivenName(const std::optional<std::string>& name);
    /// All of an attribute's texts; "TEL" and "EMAIL" write the labels as types.
    void setLabelledTexts(const char* attribute, const std::vector<LabelledText>& texts);
    /// Does nothing for a card that is a member already.
    void addMember(const Card& person);

private:
    using Name = std::array<std::string, 5>;  // family, given, additional, prefixes, suffixes
    struct Releaser {
        void operator()(struct _EVCard* card) const;
    };

    Name name() const;
    void setName(const Name& parts);

    std::unique_ptr<struct _EVCard, Releaser> card_;
};

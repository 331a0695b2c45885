// One vCard, and the changes that the address book makes to it. All texts are UTF-8.
#pragma once

#include <array>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct LabelledText {
    std::string label;
    std::string text;
};

/// Parts of a name, by their place in the attribute N.
enum class NamePart { Family = 0, Given = 1 };

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
    /// A group, or a contact list as the desktop's address books have them.
    bool isGroup() const;
    bool isCompany() const;
    /// The first text of an attribute; nothing when there is none, or an empty one.
    std::optional<std::string> textOf(const char* attribute) const;
    std::optional<std::string> namePart(NamePart part) const;
    /// All of an attribute's texts, with the labels that their types or the other program's own label say.
    std::vector<LabelledText> labelledTexts(const char* attribute) const;
    /// The unique ids of a group's members, each as bareId() gives it.
    std::vector<std::string> members() const;

    void setUniqueId(const std::string& uniqueId);
    void makeGroup();
    /// An attribute of one text, such as "ORG"; without a text it goes.
    void setText(const char* attribute, const std::optional<std::string>& text);
    /// A part of the name; the other parts stay.
    void setNamePart(NamePart part, const std::optional<std::string>& name);
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

/// The unique id without the "urn:uuid:" that one program writes and another one does not.
std::string_view bareId(std::string_view uniqueId);

// One vCard, and the changes that the address book makes to it. All texts are UTF-8.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <strings.h>

struct LabelledText {
    std::string label;
    std::string text;
};

/// Parts of a name, by their place in the attribute N.
enum class NamePart { Family = 0, Given = 1 };

class Card {
public:
    virtual ~Card() = default;

    /// The card in version 3.0, its lines ended by CR and LF. Attributes that the address book does not know are as
    /// they were read; the names that the format demands are there.
    virtual std::string text() const = 0;

    /// Empty when there is none.
    virtual std::string uniqueId() const = 0;
    /// A group, or a contact list as the desktop's address books have them.
    virtual bool isGroup() const = 0;
    virtual bool isCompany() const = 0;
    /// The first text of an attribute; nothing when there is none, or an empty one.
    virtual std::optional<std::string> textOf(const char* attribute) const = 0;
    virtual std::optional<std::string> namePart(NamePart part) const = 0;
    /// All of an attribute's texts, with the labels that their types or the other program's own label say.
    virtual std::vector<LabelledText> labelledTexts(const char* attribute) const = 0;
    /// The unique ids of a group's members, each as bareId() gives it.
    virtual std::vector<std::string> members() const = 0;

    virtual void setUniqueId(const std::string& uniqueId) = 0;
    virtual void makeGroup() = 0;
    /// An attribute of one text, such as "ORG"; without a text it goes.
    virtual void setText(const char* attribute, const std::optional<std::string>& text) = 0;
    /// A part of the name; the other parts stay.
    virtual void setNamePart(NamePart part, const std::optional<std::string>& name) = 0;
    /// All of an attribute's texts; "TEL" and "EMAIL" write the labels as types.
    virtual void setLabelledTexts(const char* attribute, const std::vector<LabelledText>& texts) = 0;
    /// Does nothing for a card that is a member already.
    virtual void addMember(const Card& person) = 0;
    /// Gives members other ids, by their bareId(). Those that the map does not have stay.
    virtual void renameMembers(const std::unordered_map<std::string, std::string>& newIds) = 0;

    /// Lets go of all but the card's text, id and kind until somebody asks for more: a tenth of the memory, for who
    /// holds many cards.
    virtual void keepAsText() = 0;
};

using CardOwner = std::unique_ptr<Card>;

/// The unique id without the "urn:uuid:" that one program writes and another one does not.
inline std::string_view bareId(std::string_view uniqueId) {
    constexpr std::string_view kUuidAddress = "urn:uuid:";
    const bool isAddress = uniqueId.size() > kUuidAddress.size() &&
                           strncasecmp(uniqueId.data(), kUuidAddress.data(), kUuidAddress.size()) == 0;
    return isAddress ? uniqueId.substr(kUuidAddress.size()) : uniqueId;
}

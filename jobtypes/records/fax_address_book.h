// The people of the user's address book whom a fax can reach, and their groups.
#pragma once

#include "jobtypes/records/fax_recipient.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

/// A fax number of a person: who has several is there several times.
struct FaxContact {
    FaxRecipientOwner recipient;
    std::u16string name;        // folded, to sort by
    std::u16string searchText;  // folded: names, organization, the number as typed and as dialed
};

/// Contacts are told by their places in FaxAddressBook::contacts, in ascending order.
struct FaxContactGroup {
    CFRef<CFStringRef> name;  // null for the group of everybody
    std::vector<std::size_t> contacts;
};

struct FaxAddressBook {
    bool isReadable = false;
    std::vector<FaxContact> contacts;     // by name
    std::vector<FaxContactGroup> groups;  // everybody, then the address book's own by name
};

/// Reads all people and groups anew.
[[nodiscard]] FaxAddressBook ReadFaxAddressBook(ABAddressBookRef book);

/// Sets both names of the recipient: a company's organization is its first name, and it has no last name.
void RecipientNamesFromPerson(ABPersonRef person, FaxRecipient& recipient);

/// The contacts of the groups, each once, whose texts have all words of the search, whatever their case and accents.
/// Groups are told by their places in FaxAddressBook::groups.
[[nodiscard]] std::vector<std::size_t> FindFaxContacts(const FaxAddressBook& book, std::span<const std::size_t> groups,
                                                       CFStringRef search);

/// Whom OK takes: those selected in the only selected group, or else everybody who is shown.
[[nodiscard]] std::vector<std::size_t> ChosenFaxContacts(std::size_t selectedGroups,
                                                         const std::vector<std::size_t>& shown,
                                                         const std::vector<std::size_t>& selected);

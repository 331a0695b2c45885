// The recipients of a fax, in the order in which they are sent to.
#pragma once

#include "jobtypes/records/fax_recipient.h"

#include <vector>

/// Owns one count of each of its recipients. A recipient may stand in several lists, or twice in one.
class FaxRecipientList {
public:
    FaxRecipientList() = default;
    /// Reads a ticket's array as fromTicket does.
    explicit FaxRecipientList(CFArrayRef ticket);
    /// A list of new recipients with the same texts.
    FaxRecipientList(const FaxRecipientList& other);
    FaxRecipientList& operator=(const FaxRecipientList&) = delete;
    ~FaxRecipientList() = default;

    CFIndex count() const { return CFIndex(recipients_.size()); }
    /// Lent; null outside the list.
    FaxRecipient* recipientAtIndex(CFIndex index) const;

    // The list adds a count of its own. Null, and an index beyond the end, change nothing.
    void append(FaxRecipient* recipient) { insertAtIndex(recipient, count()); }
    void insertAtIndex(FaxRecipient* recipient, CFIndex index);

    void removeAtIndex(CFIndex index);
    void removeAll() { recipients_.clear(); }
    /// Removes this very recipient, each time that it stands in the list, but for one that follows directly on one
    /// removed: it has taken the removed one's place by then and is not looked at.
    void remove(FaxRecipient* recipient);

    /// Whether a recipient has the same first name, last name and fax number, character by character; null equals
    /// null only. Numbers are compared as they were typed.
    bool containsRecipient(const FaxRecipient* recipient) const;

    /// A new array of the recipients' dictionaries.
    [[nodiscard]] CFRef<CFArrayRef> toTicket() const;
    /// Replaces all recipients by new ones from the array, which may be null. What is no dictionary is left out.
    void fromTicket(CFArrayRef ticket);

    /// Adds a group with the recipients as its members to the address book; a recipient without a uid becomes a person
    /// there first, and one that the address book refuses is left out. Returns whether the group was saved.
    bool saveAsABGroupWithName(CFStringRef name) const;

private:
    bool hasIndex(CFIndex index) const { return index >= 0 && index < count(); }

    std::vector<FaxRecipientOwner> recipients_;
};

// One recipient of a fax.
//
// The list of recipients, the dialogs that edit them and the pages that print them share these records, so they are
// counted; whoever makes one with new owns the first count and gives it up with FaxRecipientRelease.
#pragma once

#include "platform/contacts/AddressBook.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"

#include <memory>

// The keys of a recipient's dictionary in the ticket; all values are strings.
#define kFaxRecipientFirstNameProperty CFSTR("FirstName")
#define kFaxRecipientLastNameProperty CFSTR("LastName")
#define kFaxRecipientFaxNumberProperty CFSTR("FaxNumber")
#define kFaxRecipientFaxNumberLabelProperty CFSTR("FaxNumberLabel")
#define kFaxRecipientOrganizationProperty CFSTR("Organization")
#define kFaxRecipientPhoneNumberProperty CFSTR("PhoneNumber")
#define kFaxRecipientEmailAddressProperty CFSTR("EmailAddress")
#define kFaxRecipientMailboxProperty CFSTR("Mailbox")
#define kFaxRecipientUIDProperty CFSTR("UID")

/// The property of people in the address book that carries the mailbox.
#define kXMailboxABProperty CFSTR("com.tavro.mailbox")

/// Nine texts, each of which may be null.
class FaxRecipient {
public:
    /// All texts are null.
    FaxRecipient() = default;
    FaxRecipient(CFStringRef firstName, CFStringRef lastName, CFStringRef faxNumber);
    /// Reads a ticket's dictionary as fromTicket does.
    explicit FaxRecipient(CFDictionaryRef ticket);
    /// A copy has a count of its own, 1.
    FaxRecipient(const FaxRecipient& other);
    /// Copies the texts; the count stays.
    FaxRecipient& operator=(const FaxRecipient& other);
    ~FaxRecipient() = default;

    // Texts are lent by the getters and retained by the setters.
    CFStringRef firstName() const { return firstName_.get(); }
    CFStringRef lastName() const { return lastName_.get(); }
    /// As typed or taken from the address book, with blanks, dashes and brackets. A ticket may leave it out.
    CFStringRef faxNumber() const { return faxNumber_.get(); }
    /// The address book's label of the number that the user picked.
    CFStringRef faxNumberLabel() const { return faxNumberLabel_.get(); }
    CFStringRef organization() const { return organization_.get(); }
    CFStringRef phoneNumber() const { return phoneNumber_.get(); }
    CFStringRef emailAddress() const { return emailAddress_.get(); }
    /// The recipient's fax mailbox.
    CFStringRef mailbox() const { return mailbox_.get(); }
    /// The unique id of the person in the address book; null until the recipient is there.
    CFStringRef uid() const { return uid_.get(); }

    void setFirstName(CFStringRef text) { firstName_ = Text::retain(text); }
    void setLastName(CFStringRef text) { lastName_ = Text::retain(text); }
    void setFaxNumber(CFStringRef text) { faxNumber_ = Text::retain(text); }
    void setFaxNumberLabel(CFStringRef text) { faxNumberLabel_ = Text::retain(text); }
    void setOrganization(CFStringRef text) { organization_ = Text::retain(text); }
    void setPhoneNumber(CFStringRef text) { phoneNumber_ = Text::retain(text); }
    void setEmailAddress(CFStringRef text) { emailAddress_ = Text::retain(text); }
    void setMailbox(CFStringRef text) { mailbox_ = Text::retain(text); }
    void setUID(CFStringRef text) { uid_ = Text::retain(text); }

    /// A new dictionary of the texts that are not null, in the order of the getters above.
    [[nodiscard]] CFRef<CFMutableDictionaryRef> toTicket() const;
    /// Takes all nine texts from the dictionary; what is absent there, or no string, becomes null. A null dictionary
    /// changes nothing.
    void fromTicket(CFDictionaryRef ticket);

    /// Adds a person with these texts to the address book and saves it; the person's unique id becomes uid. The last
    /// name stays out: the whole name is what the first name holds. False, and uid as it was, when the address book
    /// refuses the person.
    bool commitToAddressBook();
    /// The person whose unique id is uid; nothing for a null uid or when the address book has no such person.
    [[nodiscard]] CFRef<ABRecordRef> abRecord() const;

    /// Both return the new count. Neither destroys the recipient; FaxRecipientRelease does.
    SInt32 retain() { return ++refCount_; }
    SInt32 release() { return --refCount_; }

private:
    using Text = CFRef<CFStringRef>;

    Text firstName_;
    Text lastName_;
    Text faxNumber_;
    Text faxNumberLabel_;
    Text organization_;
    Text phoneNumber_;
    Text emailAddress_;
    Text mailbox_;
    Text uid_;
    SInt32 refCount_ = 1;
};

/// Adds a count and returns the recipient. Null is allowed.
FaxRecipient* FaxRecipientRetain(FaxRecipient* recipient);
/// Takes a count away and destroys the recipient with the last one. Null is ignored.
void FaxRecipientRelease(FaxRecipient* recipient);

struct FaxRecipientReleaser {
    void operator()(FaxRecipient* recipient) const { FaxRecipientRelease(recipient); }
};
/// Owns one count of a recipient.
using FaxRecipientOwner = std::unique_ptr<FaxRecipient, FaxRecipientReleaser>;

/// A new string: the first and the last name with a blank between them, or the only one, or nothing.
[[nodiscard]] CFRef<CFStringRef> DisplayNameFromRecipient(const FaxRecipient* recipient);

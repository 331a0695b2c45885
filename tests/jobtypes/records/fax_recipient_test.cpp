// A recipient, its texts' owners and its dictionary in the ticket.

#include "jobtypes/records/fax_recipient.h"
#include "tests/support/cf_values.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* kKeys[] = {"FirstName",      "LastName",     "FaxNumber",
                                 "FaxNumberLabel", "Organization", "PhoneNumber",
                                 "EmailAddress",   "Mailbox",      "UID"};

CFRef<CFMutableDictionaryRef> fullTicket() {
    auto ticket = makeCFDictionary();
    for (const char* key : kKeys) {
        CFDictionarySetValue(ticket.get(), makeCFString(key).get(), makeCFString(std::string("my ") + key).get());
    }
    return ticket;
}

std::string nameOf(CFStringRef first, CFStringRef last) {
    const FaxRecipient recipient(first, last, nullptr);
    return textOfCF(DisplayNameFromRecipient(&recipient).get());
}

TEST(FaxRecipients, GoThroughTheTicketUnchanged) {
    const auto ticket = fullTicket();
    const FaxRecipient recipient(ticket.get());
    EXPECT_EQ(textOfCF(recipient.faxNumberLabel()), "my FaxNumberLabel");
    EXPECT_EQ(textOfCF(recipient.uid()), "my UID");
    const FaxRecipient copy(recipient);
    EXPECT_TRUE(CFEqual(copy.toTicket().get(), ticket.get()));

    // In this order, so that the same settings always make the same file.
    const void* keys[9];
    CFDictionaryGetKeysAndValues(copy.toTicket().get(), keys, nullptr);
    for (int i = 0; i < 9; ++i) {
        EXPECT_EQ(textOfCF(static_cast<CFStringRef>(keys[i])), kKeys[i]);
    }

    const FaxRecipient numberOnly(nullptr, nullptr, CFSTR("12"));
    EXPECT_EQ(CFDictionaryGetCount(numberOnly.toTicket().get()), 1);
    EXPECT_TRUE(CFDictionaryContainsKey(numberOnly.toTicket().get(), CFSTR("FaxNumber")));
}

TEST(FaxRecipients, ReadAnIncompleteTicket) {
    FaxRecipient recipient(fullTicket().get());
    recipient.fromTicket(nullptr);
    EXPECT_TRUE(CFEqual(recipient.toTicket().get(), fullTicket().get()));

    const auto partial = makeCFDictionary();
    CFDictionarySetValue(partial.get(), CFSTR("LastName"), CFSTR("Berg"));
    CFDictionarySetValue(partial.get(), CFSTR("FaxNumber"), makeCFNumber(std::int64_t{5550100}).get());
    recipient.fromTicket(partial.get());
    EXPECT_EQ(textOfCF(recipient.lastName()), "Berg");
    EXPECT_EQ(recipient.faxNumber(), nullptr) << "a number is no string";
    EXPECT_EQ(recipient.uid(), nullptr);
    EXPECT_EQ(CFDictionaryGetCount(recipient.toTicket().get()), 1);
}

TEST(FaxRecipients, OwnTheirTexts) {
    const auto text = makeCFString("some text of its own");
    {
        FaxRecipient recipient(text.get(), text.get(), text.get());
        EXPECT_EQ(CFGetRetainCount(text.get()), 4);
        recipient.setFirstName(recipient.firstName());
        EXPECT_EQ(CFGetRetainCount(text.get()), 4);
        FaxRecipient copy(recipient);
        EXPECT_EQ(CFGetRetainCount(text.get()), 7);
        copy = FaxRecipient();
        recipient.setLastName(nullptr);
        EXPECT_EQ(CFGetRetainCount(text.get()), 3);
        EXPECT_EQ(textOfCF(recipient.firstName()), "some text of its own");
    }
    EXPECT_EQ(CFGetRetainCount(text.get()), 1);
}

TEST(FaxRecipients, LiveAsLongAsSomebodyHoldsThem) {
    const auto text = makeCFString("alive");
    auto* recipient = new FaxRecipient(text.get(), nullptr, nullptr);
    EXPECT_EQ(recipient->retain(), 2);
    EXPECT_EQ(FaxRecipientRetain(recipient), recipient);

    FaxRecipient copy(*recipient);
    EXPECT_EQ(copy.retain(), 2) << "a copy has its own count";
    copy = *recipient;
    EXPECT_EQ(copy.release(), 1) << "and keeps it";
    copy.setFirstName(nullptr);

    FaxRecipientRelease(recipient);
    EXPECT_EQ(recipient->release(), 1);
    EXPECT_EQ(CFGetRetainCount(text.get()), 2);
    FaxRecipientRelease(recipient);
    EXPECT_EQ(CFGetRetainCount(text.get()), 1);
    FaxRecipientRelease(FaxRecipientRetain(nullptr));
}

TEST(FaxRecipients, AreShownByName) {
    EXPECT_EQ(nameOf(CFSTR("Ada"), CFSTR("B\u00e4r")), "Ada B\u00e4r");
    EXPECT_EQ(nameOf(CFSTR("Ada"), nullptr), "Ada");
    EXPECT_EQ(nameOf(nullptr, CFSTR("Berg")), "Berg");
    EXPECT_EQ(nameOf(nullptr, nullptr), "");
    EXPECT_EQ(nameOf(CFSTR(""), CFSTR("Berg")), " Berg") << "an empty name is a name";
}

}  // namespace

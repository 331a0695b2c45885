// Fax recipients in the address book's file.

#include "jobtypes/records/fax_recipient_list.h"
#include "tests/platform/contacts/contacts_fixture.h"

namespace {

using FaxContacts = ContactsTest;

TEST_F(FaxContacts, ARecipientBecomesAPerson) {
    FaxRecipient recipient(CFSTR("Ada B."), CFSTR("Hidden"), CFSTR("+1 (555) 010"));
    recipient.setPhoneNumber(CFSTR("12"));
    recipient.setEmailAddress(CFSTR("ada@example.com"));
    recipient.setOrganization(CFSTR("Acme"));
    recipient.setMailbox(CFSTR("0815"));
    EXPECT_FALSE(recipient.abRecord());
    ASSERT_TRUE(recipient.commitToAddressBook());

    EXPECT_EQ(uniqueIdOf(recipient.abRecord()), textOfCF(recipient.uid()));
    EXPECT_EQ(contentOf(file()),
              "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:" + textOfCF(recipient.uid()) +
                  "\r\nN:;Ada B.;;;\r\nTEL;TYPE=WORK,FAX:+1 (555) 010\r\nTEL;TYPE=WORK,VOICE:12\r\n"
                  "EMAIL;TYPE=WORK:ada@example.com\r\nORG:Acme\r\nX-COM-TAVRO-MAILBOX:0815\r\nFN:Ada B.\r\n"
                  "END:VCARD\r\n");
    recipient.setUID(CFSTR("nobody"));
    EXPECT_FALSE(recipient.abRecord());
}

TEST_F(FaxContacts, ARecipientMayHaveNothing) {
    FaxRecipient recipient;
    EXPECT_TRUE(recipient.commitToAddressBook());
    EXPECT_EQ(contentOf(file()).find("TEL"), std::string::npos);
}

TEST_F(FaxContacts, AListBecomesAGroup) {
    FaxRecipientList list;
    for (const char* name : {"Ada", "Bo"}) {
        list.append(FaxRecipientOwner(new FaxRecipient(makeCFString(name).get(), nullptr, CFSTR("1"))).get());
    }
    ASSERT_TRUE(list.recipientAtIndex(1)->commitToAddressBook());
    const std::string bo = textOfCF(list.recipientAtIndex(1)->uid());
    ASSERT_TRUE(list.saveAsABGroupWithName(CFSTR("Board")));
    EXPECT_EQ(textOfCF(list.recipientAtIndex(1)->uid()), bo) << "who is there is not added again";

    const std::string content = contentOf(file());
    EXPECT_NE(content.find("\r\nKIND:group\r\nFN:Board\r\nMEMBER:urn:uuid:" +
                           textOfCF(list.recipientAtIndex(0)->uid()) + "\r\nMEMBER:urn:uuid:" + bo + "\r\n"),
              std::string::npos)
        << content;
    EXPECT_EQ(content.find("FN:Bo\r\n"), content.rfind("FN:Bo\r\n"));
}

TEST_F(FaxContacts, ABrokenAddressBookRefusesThem) {
    std::filesystem::create_directory(file());
    FaxRecipientList list;
    list.append(FaxRecipientOwner(new FaxRecipient(CFSTR("Ada"), nullptr, CFSTR("1"))).get());
    EXPECT_FALSE(list.recipientAtIndex(0)->commitToAddressBook());
    EXPECT_EQ(list.recipientAtIndex(0)->uid(), nullptr);
    EXPECT_FALSE(list.saveAsABGroupWithName(CFSTR("Board")));
}

TEST_F(FaxContacts, AMemberThatIsGoneIsLeftOut) {
    FaxRecipientList list;
    list.append(FaxRecipientOwner(new FaxRecipient(CFSTR("Ada"), nullptr, CFSTR("1"))).get());
    list.recipientAtIndex(0)->setUID(CFSTR("deleted meanwhile"));
    EXPECT_TRUE(list.saveAsABGroupWithName(CFSTR("Board")));
    EXPECT_NE(contentOf(file()).find("FN:Board"), std::string::npos);
    EXPECT_EQ(contentOf(file()).find("MEMBER"), std::string::npos);
}

}  // namespace

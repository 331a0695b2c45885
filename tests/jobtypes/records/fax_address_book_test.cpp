// Who of an address book can get a fax, found by groups and by words.

#include "jobtypes/records/fax_address_book.h"

#include "tests/platform/contacts/contacts_fixture.h"

namespace {

constexpr const char* kBook = R"(BEGIN:VCARD
VERSION:3.0
UID:zoe
N:Ångström;Zoë;;;
FN:Zoë Ångström
ORG:Optik AB
TEL;TYPE=WORK,FAX:+46 (8) 12-34
TEL;TYPE=PAGER:1
TEL;TYPE=CELL:070 5
TEL;TYPE=HOME,FAX:08 99
EMAIL;TYPE=WORK:zoe@example.com
END:VCARD
BEGIN:VCARD
VERSION:3.0
UID:acme
N:Ignored;Name;;;
FN:Acme
ORG:Acme
X-ABSHOWAS:COMPANY
item1.TEL:5 55
item1.X-ABLABEL:Lab Fax
END:VCARD
BEGIN:VCARD
VERSION:3.0
UID:voice
N:Voice;Vera;;;
FN:Vera Voice
TEL;TYPE=WORK:1234
END:VCARD
BEGIN:VCARD
VERSION:3.0
UID:board
FN:Board
N:Board
KIND:group
MEMBER:zoe
MEMBER:voice
END:VCARD
BEGIN:VCARD
VERSION:3.0
UID:all
FN:a-team
N:a-team
KIND:group
MEMBER:acme
MEMBER:zoe
END:VCARD
)";

class FaxAddressBookTest : public ContactsTest {
protected:
    FaxAddressBookTest() { writeFile(kBook); }

    static std::string found(const FaxAddressBook& book, std::vector<std::size_t> groups, const char* search) {
        std::string numbers;
        for (const std::size_t contact : FindFaxContacts(book, groups, makeCFString(search).get())) {
            numbers += textOfCF(book.contacts[contact].recipient->faxNumber()) + "|";
        }
        return numbers;
    }
};

TEST_F(FaxAddressBookTest, EachFaxNumberIsAContactWithThePersonsData) {
    const FaxAddressBook book = ReadFaxAddressBook(ABGetSharedAddressBook());
    ASSERT_TRUE(book.isReadable);
    ASSERT_EQ(book.contacts.size(), 3u);  // nobody without a fax number
    const FaxRecipient& acme = *book.contacts[0].recipient;
    EXPECT_EQ(textOfCF(acme.firstName()), "Acme");
    EXPECT_EQ(acme.lastName(), nullptr);
    EXPECT_EQ(textOfCF(acme.faxNumberLabel()), "Lab Fax");
    EXPECT_EQ(acme.phoneNumber(), nullptr);

    const FaxRecipient& zoe = *book.contacts[1].recipient;
    EXPECT_EQ(textOfCF(zoe.firstName()) + " " + textOfCF(zoe.lastName()), "Zoë Ångström");
    EXPECT_EQ(textOfCF(zoe.faxNumber()), "+46 (8) 12-34");
    EXPECT_EQ(textOfCF(zoe.faxNumberLabel()), textOfCF(kABPhoneWorkFAXLabel));
    EXPECT_EQ(textOfCF(zoe.phoneNumber()), "070 5");  // neither fax nor pager
    EXPECT_EQ(textOfCF(zoe.emailAddress()), "zoe@example.com");
    EXPECT_EQ(textOfCF(zoe.organization()), "Optik AB");
    EXPECT_EQ(textOfCF(zoe.uid()), "zoe");
    EXPECT_EQ(textOfCF(book.contacts[2].recipient->faxNumber()), "08 99");
}

TEST_F(FaxAddressBookTest, AMailboxIsReadBack) {
    FaxRecipient recipient(CFSTR("Mia"), nullptr, CFSTR("7"));
    recipient.setMailbox(CFSTR("0042"));
    ASSERT_TRUE(recipient.commitToAddressBook());
    const FaxAddressBook book = ReadFaxAddressBook(ABGetSharedAddressBook());
    ASSERT_EQ(book.contacts.size(), 4u);
    EXPECT_EQ(textOfCF(book.contacts[1].recipient->mailbox()), "0042");
}

TEST_F(FaxAddressBookTest, GroupsAreSortedAndHaveThoseWithAFaxNumber) {
    const FaxAddressBook book = ReadFaxAddressBook(ABGetSharedAddressBook());
    ASSERT_EQ(book.groups.size(), 3u);
    EXPECT_EQ(book.groups[0].name.get(), nullptr);
    EXPECT_EQ(textOfCF(book.groups[1].name.get()), "a-team");
    EXPECT_EQ(textOfCF(book.groups[2].name.get()), "Board");
    EXPECT_EQ(found(book, {0}, ""), "5 55|+46 (8) 12-34|08 99|");
    EXPECT_EQ(found(book, {2}, ""), "+46 (8) 12-34|08 99|");
    EXPECT_EQ(found(book, {1, 2}, ""), "5 55|+46 (8) 12-34|08 99|");  // each once
    EXPECT_EQ(found(book, {}, ""), "");
}

TEST_F(FaxAddressBookTest, SearchFindsAllWordsWithoutCaseAccentsAndWidth) {
    const FaxAddressBook book = ReadFaxAddressBook(ABGetSharedAddressBook());
    const std::string zoe = "+46 (8) 12-34|08 99|";
    EXPECT_EQ(found(book, {0}, "ZOE"), zoe);
    EXPECT_EQ(found(book, {0}, "angstrom zoë"), zoe);
    EXPECT_EQ(found(book, {0}, "  optik   strö "), zoe);
    EXPECT_EQ(found(book, {0}, "ｚＯｅ　ｏｐｔｉｋ"), zoe) << "in full width, as East Asian keyboards type";
    EXPECT_EQ(found(book, {0}, "٨١٢٣٤"), "+46 (8) 12-34|") << "in the digits of an Arabic one";
    EXPECT_EQ(found(book, {0}, "zoe acme"), "");
    EXPECT_EQ(found(book, {0}, "(8) 12"), "+46 (8) 12-34|");
    EXPECT_EQ(found(book, {0}, "81234"), "+46 (8) 12-34|");  // as it is dialed
    EXPECT_EQ(found(book, {1}, "acme"), "5 55|");
    EXPECT_EQ(found(book, {2}, "acme"), "");
}

TEST(ChosenFaxContacts, SelectionCountsInOneGroupOnly) {
    using Places = std::vector<std::size_t>;
    EXPECT_EQ(ChosenFaxContacts(1, {1, 2, 3}, {2}), Places{2});
    EXPECT_EQ(ChosenFaxContacts(1, {1, 2, 3}, {}), (Places{1, 2, 3}));
    EXPECT_EQ(ChosenFaxContacts(2, {1, 2, 3}, {2}), (Places{1, 2, 3}));
    EXPECT_EQ(ChosenFaxContacts(0, {}, {}), Places{});
}

}  // namespace

// The address book's file: what we add gets there, and nothing that is there gets lost.

#include "platform/foundation/CFNumber.h"
#include "tests/platform/contacts/contacts_fixture.h"

#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;

using AddressBook = ContactsTest;

const std::string kForeign =
    "BEGIN:VCARD\nVERSION:2.1\nUID:foreign\nN;ENCODING=QUOTED-PRINTABLE:=C3=84;B\nX-OWN;A=b:c\nEND:VCARD\n";

mode_t rightsOf(const fs::path& path) {
    struct stat status = {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777;
}

std::size_t entriesOf(const fs::path& folder) {
    return std::size_t(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

std::string valueOf(ABRecordRef record, CFStringRef property) {
    const auto value = CFRef<CFTypeRef>::adopt(ABRecordCopyValue(record, property));
    return textOfCF(static_cast<CFStringRef>(value.get()));
}

TEST_F(AddressBook, IsMadeForTheUserAlone) {
    fs::remove(folder());
    EXPECT_TRUE(addAndSave(newPerson("Ada")));
    EXPECT_EQ(rightsOf(folder()), 0700u);
    EXPECT_EQ(rightsOf(file()), 0600u);
}

TEST_F(AddressBook, KeepsForeignCardsByteForByte) {
    writeFile(kForeign + "\n" + kForeign);
    const auto ada = newPerson("Ada");
    ASSERT_TRUE(addAndSave(ada));
    // Another program, meanwhile.
    const std::string added = "BEGIN:VCARD\r\nVERSION:4.0\r\nFN:New\r\nEND:VCARD\r\n";
    std::ofstream(file(), std::ios::app | std::ios::binary) << added;
    ASSERT_TRUE(addAndSave(newPerson("Bo")));

    const std::string content = contentOf(file());
    EXPECT_TRUE(content.starts_with(kForeign + kForeign)) << content;
    const std::size_t place = content.find(added);
    EXPECT_LT(content.find("FN:Ada\r\n"), place);
    EXPECT_GT(content.find("FN:Bo\r\n"), place);
    EXPECT_EQ(entriesOf(folder()), 1u);

    EXPECT_TRUE(ABSave(ABGetSharedAddressBook()));
    EXPECT_EQ(contentOf(file()), content);
}

TEST_F(AddressBook, ChangesARecordInItsPlace) {
    writeFile(kForeign + "BEGIN:VCARD\nUID:last\nEND:VCARD\n");
    const auto record = recordOf("foreign");
    ASSERT_TRUE(record);
    EXPECT_EQ(uniqueIdOf(record), "foreign");
    EXPECT_EQ(recordOf("foreign").get(), record.get()) << "one record, one object";
    for (const char* name : {"Ada", "Bo"}) {  // the record is still known after it was saved
        EXPECT_TRUE(ABRecordSetValue(record.get(), kABFirstNameProperty, makeCFString(name).get()));
        EXPECT_TRUE(ABSave(ABGetSharedAddressBook()));
    }
    const std::string content = contentOf(file());
    EXPECT_NE(content.find("N:\u00c4;Bo;"), std::string::npos) << content;
    EXPECT_NE(content.find("X-OWN;A=b:c\r\n"), std::string::npos);
    EXPECT_TRUE(content.ends_with("END:VCARD\r\nBEGIN:VCARD\nUID:last\nEND:VCARD\n"));

    EXPECT_FALSE(recordOf("nobody"));
    EXPECT_FALSE(recordOf(""));
    EXPECT_EQ(ABCopyRecordForUniqueId(ABGetSharedAddressBook(), nullptr), nullptr);
}

TEST_F(AddressBook, KeepsADamagedFileBeside) {
    for (int round = 1; round <= 2; ++round) {
        const std::string damaged = kForeign + "BEGIN:VCARD\nFN:cut in round " + std::to_string(round);
        writeFile(damaged);
        testing::internal::CaptureStderr();
        EXPECT_TRUE(addAndSave(newPerson("Ada")));
        EXPECT_NE(testing::internal::GetCapturedStderr().find("contacts.vcf.damaged-"), std::string::npos);
        const fs::path kept = file().string() + ".damaged-" + std::to_string(round);
        EXPECT_EQ(contentOf(kept), damaged);
        EXPECT_EQ(rightsOf(kept), 0600u);
        EXPECT_TRUE(contentOf(file()).starts_with(kForeign + "BEGIN:VCARD\r\n"));
    }
    EXPECT_TRUE(addAndSave(newPerson("Bo")));
    EXPECT_EQ(entriesOf(folder()), 3u) << "the file is whole again";
}

TEST_F(AddressBook, RefusesWhatItCannotKeep) {
    ABAddressBookRef book = ABGetSharedAddressBook();
    EXPECT_FALSE(ABAddRecord(book, nullptr));
    const auto person = newPerson("Ada");
    fs::create_directory(file());
    EXPECT_FALSE(ABAddRecord(book, person.get()));
    fs::remove(file());
    EXPECT_TRUE(ABAddRecord(book, person.get()));
    EXPECT_FALSE(ABAddRecord(book, person.get())) << "it is there already";

    fs::create_directory(file());
    EXPECT_FALSE(ABSave(book));
    EXPECT_EQ(recordOf(uniqueIdOf(person)).get(), person.get()) << "not saved, but there";
    fs::remove(file());
    EXPECT_TRUE(ABSave(book)) << "a later try saves it";
    EXPECT_NE(contentOf(file()).find(uniqueIdOf(person)), std::string::npos);
}

TEST_F(AddressBook, RecordsTakeTheirOwnPropertiesOnly) {
    const auto person = newPerson("Ada");
    const auto group = CFRef<ABRecordRef>::adopt(ABGroupCreate());
    const auto phones = CFRef<ABMutableMultiValueRef>::adopt(ABMultiValueCreateMutable());
    EXPECT_TRUE(ABMultiValueAdd(phones.get(), CFSTR("1"), kABPhoneWorkLabel, nullptr));
    EXPECT_FALSE(ABMultiValueAdd(phones.get(), nullptr, kABPhoneWorkLabel, nullptr));
    EXPECT_FALSE(ABMultiValueAdd(phones.get(), makeCFNumber(std::int64_t{1}).get(), kABPhoneWorkLabel, nullptr));

    EXPECT_TRUE(ABRecordSetValue(person.get(), kABPhoneProperty, phones.get()));
    EXPECT_FALSE(ABRecordSetValue(person.get(), kABPhoneProperty, CFSTR("1")));
    EXPECT_FALSE(ABRecordSetValue(person.get(), kABFirstNameProperty, phones.get()));
    EXPECT_FALSE(ABRecordSetValue(person.get(), kABGroupNameProperty, CFSTR("x")));
    EXPECT_FALSE(ABRecordSetValue(group.get(), kABFirstNameProperty, CFSTR("x")));
    EXPECT_FALSE(ABRecordSetValue(nullptr, kABFirstNameProperty, CFSTR("x")));
    EXPECT_TRUE(ABRecordSetValue(group.get(), kABGroupNameProperty, CFSTR("x")));

    EXPECT_TRUE(ABGroupAddMember(group.get(), person.get()));
    EXPECT_FALSE(ABGroupAddMember(person.get(), person.get()));
    EXPECT_FALSE(ABGroupAddMember(group.get(), group.get()));
    EXPECT_FALSE(ABGroupAddMember(group.get(), nullptr));
}

TEST_F(AddressBook, TakesAProgramsOwnProperties) {
    ABAddressBookRef book = ABGetSharedAddressBook();
    CFStringRef name = CFSTR("com.example.desk-n\u00b0");
    const auto person = newPerson("Ada");
    const auto typeOf = [&] { return ABTypeOfProperty(book, kABPersonRecordType, name); };
    EXPECT_EQ(typeOf(), kABErrorInProperty);
    EXPECT_FALSE(ABRecordSetValue(person.get(), name, CFSTR("4")));

    const auto types = makeCFDictionary();
    CFDictionarySetValue(types.get(), name, makeCFNumber(std::int64_t{2}).get());
    EXPECT_EQ(ABAddPropertiesAndTypes(book, kABPersonRecordType, types.get()), -1) << "a type that is not supported";
    CFDictionarySetValue(types.get(), name, makeCFNumber(std::int64_t{kABStringProperty}).get());
    EXPECT_EQ(typeOf(), kABErrorInProperty);
    EXPECT_EQ(ABAddPropertiesAndTypes(book, kABPersonRecordType, types.get()), 1);
    EXPECT_EQ(ABAddPropertiesAndTypes(book, kABPersonRecordType, types.get()), 0);
    EXPECT_EQ(typeOf(), kABStringProperty);
    EXPECT_EQ(ABTypeOfProperty(book, kABPersonRecordType, kABPhoneProperty), kABMultiStringProperty);

    EXPECT_TRUE(ABRecordSetValue(person.get(), name, CFSTR("4")));
    ASSERT_TRUE(addAndSave(person));
    EXPECT_NE(contentOf(file()).find("\r\nX-COM-EXAMPLE-DESK-N-:4\r\n"), std::string::npos) << contentOf(file());
}

std::string namesOf(CFArrayRef array) {
    const auto owner = CFRef<CFArrayRef>::adopt(array);
    std::string names;
    for (CFIndex i = 0; i < CFArrayGetCount(array); ++i) {
        auto* record = static_cast<ABRecordRef>(const_cast<void*>(CFArrayGetValueAtIndex(array, i)));
        names += valueOf(record, kABFirstNameProperty) + "|" + valueOf(record, kABLastNameProperty) + "\n";
    }
    return names;
}

TEST_F(AddressBook, ListsPeopleAndGroups) {
    writeFile(
        "BEGIN:VCARD\nVERSION:3.0\nUID:a\nN:Berg;Ada;;;\nFN:Ada Berg\nEND:VCARD\n"
        "BEGIN:VCARD\nVERSION:4.0\nUID:urn:uuid:b\nFN:Shown Only\nEND:VCARD\n"
        "BEGIN:VCARD\nVERSION:4.0\nKIND:group\nUID:g\nFN:Four\nMEMBER:urn:uuid:b\nMEMBER:urn:uuid:gone\n"
        "MEMBER:urn:uuid:a\nMEMBER:b\nEND:VCARD\n"
        "BEGIN:VCARD\nVERSION:3.0\nX-ADDRESSBOOKSERVER-KIND:group\nUID:h\nN:Three\nFN:Three\n"
        "X-ADDRESSBOOKSERVER-MEMBER:urn:uuid:a\nEND:VCARD\n"
        "BEGIN:VCARD\nVERSION:3.0\nX-EVOLUTION-LIST:TRUE\nUID:i\nFN:List\n"
        "EMAIL;X-EVOLUTION-DEST-CONTACT-UID=b:Shown <b@example.com>\nEMAIL:loose@example.com\nEND:VCARD\n"
        "BEGIN:VCARD\nVERSION:2.1\nN:Without;Id\nEND:VCARD\n");
    ABAddressBookRef book = ABGetSharedAddressBook();
    const auto unsaved = newPerson("New");
    ASSERT_TRUE(ABAddRecord(book, unsaved.get()));
    EXPECT_EQ(namesOf(ABCopyArrayOfAllPeople(book)), "Ada|Berg\nShown Only|(null)\nId|Without\nNew|(null)\n");

    const auto groups = CFRef<CFArrayRef>::adopt(ABCopyArrayOfAllGroups(book));
    const auto groupAt = [&](CFIndex i) {
        return static_cast<ABRecordRef>(const_cast<void*>(CFArrayGetValueAtIndex(groups.get(), i)));
    };
    ASSERT_EQ(CFArrayGetCount(groups.get()), 3);
    EXPECT_EQ(valueOf(groupAt(0), kABGroupNameProperty), "Four");
    EXPECT_EQ(namesOf(ABGroupCopyArrayOfAllMembers(groupAt(0))), "Shown Only|(null)\nAda|Berg\n");
    EXPECT_EQ(namesOf(ABGroupCopyArrayOfAllMembers(groupAt(1))), "Ada|Berg\n");
    EXPECT_EQ(namesOf(ABGroupCopyArrayOfAllMembers(groupAt(2))), "Shown Only|(null)\n");
    EXPECT_EQ(ABGroupCopyArrayOfAllMembers(unsaved.get()), nullptr);
    ASSERT_TRUE(ABGroupAddMember(groupAt(0), unsaved.get()));
    EXPECT_EQ(namesOf(ABGroupCopyArrayOfAllMembers(groupAt(0))), "Shown Only|(null)\nAda|Berg\nNew|(null)\n");

    fs::remove(file());
    fs::create_directory(file());
    EXPECT_EQ(ABCopyArrayOfAllPeople(book), nullptr);
    EXPECT_EQ(ABGroupCopyArrayOfAllMembers(groupAt(0)), nullptr);
}

TEST_F(AddressBook, AnIdIsMadeForACardWithoutOne) {
    const std::string other = "BEGIN:VCARD\nVERSION:3.0\nN:B\nEND:VCARD\n";
    writeFile("BEGIN:VCARD\nVERSION:3.0\nN:A\nEND:VCARD\n" + other);
    ABAddressBookRef book = ABGetSharedAddressBook();
    const auto people = CFRef<CFArrayRef>::adopt(ABCopyArrayOfAllPeople(book));
    ASSERT_EQ(CFArrayGetCount(people.get()), 2);
    const auto first = CFRef<ABRecordRef>::retain(
        static_cast<ABRecordRef>(const_cast<void*>(CFArrayGetValueAtIndex(people.get(), 0))));
    EXPECT_EQ(recordOf(uniqueIdOf(first)).get(), first.get());
    ASSERT_TRUE(ABRecordSetValue(first.get(), kABFirstNameProperty, CFSTR("Ada")));
    ASSERT_TRUE(ABSave(book));
    const std::string content = contentOf(file());
    EXPECT_TRUE(content.ends_with("UID:" + uniqueIdOf(first) + "\r\nN:A;Ada;;;\r\nFN:Ada A\r\nEND:VCARD\r\n" + other))
        << content;
}

TEST_F(AddressBook, TellsWhatOtherProgramsWrote) {
    writeFile(
        "BEGIN:VCARD\nVERSION:3.0\nUID:x\nN:;;;;\nORG:Acme;Sales\nX-ABShowAs:COMPANY\nX-COM-TAVRO-MAILBOX:12\n"
        "TEL;type=FAX;type=WORK;type=pref:1\nTEL;TYPE=HOME,FAX:2\nTEL;TYPE=\"fax\":3\nTEL;VALUE=uri;TYPE=\"work,"
        "voice\":tel:+4\n"
        "TEL;CELL:5\nitem1.TEL;type=pref:6\nitem1.X-ABLabel:Door\nitem2.TEL:7\nITEM2.X-ABLABEL:_$!<HomeFAX>!$_\nTEL:8;"
        "9\n"
        "EMAIL;TYPE=INTERNET,HOME:a@example.com\nEND:VCARD\n");
    const auto record = recordOf("x");
    ASSERT_TRUE(record);
    const auto entriesOf = [&](CFStringRef property) {
        const auto value = CFRef<CFTypeRef>::adopt(ABRecordCopyValue(record.get(), property));
        auto* entries = static_cast<ABMultiValueRef>(value.get());
        std::string text;
        for (CFIndex i = 0; i < ABMultiValueCount(entries); ++i) {
            const auto label = CFRef<CFStringRef>::adopt(ABMultiValueCopyLabelAtIndex(entries, i));
            const auto number = CFRef<CFTypeRef>::adopt(ABMultiValueCopyValueAtIndex(entries, i));
            text += textOfCF(label.get()) + "=" + textOfCF(static_cast<CFStringRef>(number.get())) + " ";
        }
        EXPECT_EQ(ABMultiValueCopyValueAtIndex(entries, -1), nullptr);
        EXPECT_EQ(ABMultiValueCopyLabelAtIndex(entries, ABMultiValueCount(entries)), nullptr);
        return text;
    };
    EXPECT_EQ(entriesOf(kABPhoneProperty), "WorkFAX=1 HomeFAX=2 OtherFAX=3 Work=+4 Mobile=5 Door=6 HomeFAX=7 =8;9 ");
    EXPECT_EQ(entriesOf(kABEmailProperty), "Home=a@example.com ");
    EXPECT_EQ(valueOf(record.get(), kABOrganizationProperty), "Acme");
    EXPECT_EQ(valueOf(record.get(), kABFirstNameProperty), "(null)");
    EXPECT_EQ(valueOf(record.get(), CFSTR("com.tavro.mailbox")), "12") << "made known by an earlier process";
    EXPECT_EQ(ABRecordCopyValue(record.get(), CFSTR("mailbox")), nullptr);

    const auto flags = CFRef<CFTypeRef>::adopt(ABRecordCopyValue(record.get(), kABPersonFlags));
    CFIndex value = 0;
    ASSERT_TRUE(CFNumberGetValue(static_cast<CFNumberRef>(flags.get()), kCFNumberCFIndexType, &value));
    EXPECT_EQ(value, kABShowAsCompany);
    EXPECT_FALSE(ABRecordSetValue(record.get(), kABPersonFlags, flags.get()));
}

}  // namespace

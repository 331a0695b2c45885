// The address book's file: what we add gets there, and nothing that is there gets lost.

#include "platform/foundation/CFNumber.h"
#include "tests/contacts/contacts_fixture.h"

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

}  // namespace

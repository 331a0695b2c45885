// The desktop's own address book, shared with another program: evolution-data-server on a bus of the test's own.

#include "platform/contacts/AddressBookImport.h"
#include "platform/foundation/CFRef.h"
#include "tests/support/cf_values.h"
#include "tests/support/places.h"
#include "tests/support/private_session.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <iostream>

namespace {

namespace fs = std::filesystem;

bool isInstalled() {
    return fs::exists("/usr/share/dbus-1/services/org.gnome.evolution.dataserver.AddressBook10.service") &&
           std::system("command -v dbus-daemon >/dev/null") == 0;
}

class DesktopAddressBook : public testing::Test {
protected:
    void SetUp() override {
        if (!isInstalled()) {
            std::cerr << "NOT TESTED: evolution-data-server or dbus is missing; scripts/setup test installs them\n";
            GTEST_SKIP();
        }
        ASSERT_TRUE(session_.start());
    }

    /// What the other program writes to its output.
    static std::string client(const std::string& arguments) {
        FILE* output = popen(("timeout 20 " DESKTOP_CLIENT " " + arguments).c_str(), "r");
        std::string text;
        char buffer[4096];
        while (const std::size_t count = fread(buffer, 1, sizeof buffer, output)) {
            text.append(buffer, count);
        }
        EXPECT_EQ(pclose(output), 0) << arguments;
        return text;
    }

    std::string fileWith(const std::string& name, const std::string& content) const {
        const fs::path path = session_.home() / name;
        std::ofstream(path, std::ios::binary) << content;
        return path.string();
    }

    PrivateSession session_;
};

std::string valueOf(ABRecordRef record, CFStringRef property) {
    const auto value = CFRef<CFTypeRef>::adopt(ABRecordCopyValue(record, property));
    return textOfCF(static_cast<CFStringRef>(value.get()));
}

std::string firstPhoneOf(ABRecordRef record) {
    const auto phones = CFRef<CFTypeRef>::adopt(ABRecordCopyValue(record, kABPhoneProperty));
    auto* entries = static_cast<ABMultiValueRef>(phones.get());
    const auto label = CFRef<CFStringRef>::adopt(ABMultiValueCopyLabelAtIndex(entries, 0));
    const auto number = CFRef<CFTypeRef>::adopt(ABMultiValueCopyValueAtIndex(entries, 0));
    return textOfCF(label.get()) + "=" + textOfCF(static_cast<CFStringRef>(number.get()));
}

CFRef<ABRecordRef> recordOf(const char* uniqueId) {
    return CFRef<ABRecordRef>::adopt(ABCopyRecordForUniqueId(ABGetSharedAddressBook(), makeCFString(uniqueId).get()));
}

std::string idOf(const CFRef<ABRecordRef>& record) {
    return textOfCF(CFRef<CFStringRef>::adopt(ABRecordCopyUniqueId(record.get())).get());
}

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST_F(DesktopAddressBook, IsSharedWithOtherPrograms) {
    const std::string ada =
        fileWith("ada.vcf",
                 "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:ada\r\nN:Berg;Ada;;;\r\nFN:Ada Berg\r\n"
                 "TEL;TYPE=WORK,FAX:+1 5\r\nEMAIL:ada@example.com\r\nX-OTHERS;A=b:kept\r\nEND:VCARD\r\n");
    const std::string list =
        fileWith("list.vcf",
                 "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:team\r\nX-EVOLUTION-LIST:TRUE\r\nFN:Team\r\nN:Team;;;;\r\n"
                 "EMAIL;X-EVOLUTION-DEST-CONTACT-UID=ada;X-EVOLUTION-DEST-NAME=Ada Berg;"
                 "X-EVOLUTION-DEST-EMAIL=ada@example.com;X-EVOLUTION-DEST-EMAIL-NUM=0:Ada Berg <ada@example.com>\r\n"
                 "END:VCARD\r\n");
    client("add " + ada + " " + list);

    ABAddressBookRef book = ABGetSharedAddressBook();
    const auto people = CFRef<CFArrayRef>::adopt(ABCopyArrayOfAllPeople(book));
    const auto groups = CFRef<CFArrayRef>::adopt(ABCopyArrayOfAllGroups(book));
    EXPECT_EQ(CFArrayGetCount(people.get()), 1);
    EXPECT_EQ(CFArrayGetCount(groups.get()), 1);
    const auto person = recordOf("ada");
    const auto team = recordOf("team");
    ASSERT_TRUE(person && team);
    EXPECT_EQ(valueOf(person.get(), kABLastNameProperty), "Berg");
    EXPECT_EQ(firstPhoneOf(person.get()), "WorkFAX=+1 5");
    EXPECT_EQ(valueOf(team.get(), kABGroupNameProperty), "Team");
    const auto members = CFRef<CFArrayRef>::adopt(ABGroupCopyArrayOfAllMembers(team.get()));
    ASSERT_EQ(CFArrayGetCount(members.get()), 1);
    EXPECT_EQ(CFArrayGetValueAtIndex(members.get(), 0), person.get());

    // A person changed, one added, the list longer, and a group of our own.
    EXPECT_TRUE(ABRecordSetValue(person.get(), kABOrganizationProperty, CFSTR("Acme")));
    const auto bo = CFRef<ABRecordRef>::adopt(ABPersonCreate());
    const auto phones = CFRef<ABMutableMultiValueRef>::adopt(ABMultiValueCreateMutable());
    EXPECT_TRUE(ABMultiValueAdd(phones.get(), CFSTR("+2 6"), kABPhoneWorkFAXLabel, nullptr));
    EXPECT_TRUE(ABRecordSetValue(bo.get(), kABFirstNameProperty, CFSTR("Bo")));
    EXPECT_TRUE(ABRecordSetValue(bo.get(), kABPhoneProperty, phones.get()));
    const auto board = CFRef<ABRecordRef>::adopt(ABGroupCreate());
    EXPECT_TRUE(ABRecordSetValue(board.get(), kABGroupNameProperty, CFSTR("Board")));
    EXPECT_TRUE(ABAddRecord(book, board.get()));
    EXPECT_TRUE(ABAddRecord(book, bo.get()));
    EXPECT_FALSE(ABAddRecord(book, person.get()));
    EXPECT_TRUE(ABGroupAddMember(board.get(), bo.get()));
    EXPECT_TRUE(ABGroupAddMember(board.get(), person.get()));
    EXPECT_TRUE(ABGroupAddMember(team.get(), bo.get()));
    ASSERT_TRUE(ABSave(book));

    const std::string shown = client("show");
    EXPECT_TRUE(contains(shown, "Ada Berg|Acme|+1 5|person\n")) << shown;
    EXPECT_TRUE(contains(shown, "Bo||+2 6|person\n")) << shown;
    EXPECT_TRUE(contains(shown, "Team|||ada,Ada Berg,ada@example.com," + idOf(bo) + ",,Bo,\n")) << shown;
    EXPECT_TRUE(contains(shown, "Board|||" + idOf(bo) + ",,Bo,ada,Ada Berg,ada@example.com,\n")) << shown;
    EXPECT_TRUE(contains(shown, "X-OTHERS;A=b:kept")) << shown;
    EXPECT_FALSE(fs::exists(session_.home() / "XDG_DATA_HOME/tavro/contacts.vcf"));

    const auto ours = CFRef<CFArrayRef>::adopt(ABGroupCopyArrayOfAllMembers(board.get()));
    ASSERT_EQ(CFArrayGetCount(ours.get()), 2);
    EXPECT_EQ(CFArrayGetValueAtIndex(ours.get(), 0), bo.get());
}

TEST_F(DesktopAddressBook, TakesAnImportedFile) {
    ABImportError error = kABImportNoError;
    const auto file = makeCFURL(sourcePath("tests/data/contacts/web-4.0.vcf"));
    for (int round = 0; round < 2; ++round) {  // what is there already is not added again
        EXPECT_EQ(ABImportVCardFile(ABGetSharedAddressBook(), file.get(), nullptr, &error), 3);
    }
    const std::string shown = client("show");
    EXPECT_TRUE(contains(shown, "Simone Perreault|")) << shown;
    EXPECT_EQ(shown.find("BEGIN:VCARD", shown.rfind("BEGIN:VCARD") + 1), std::string::npos);
    const auto people = CFRef<CFArrayRef>::adopt(ABCopyArrayOfAllPeople(ABGetSharedAddressBook()));
    const auto groups = CFRef<CFArrayRef>::adopt(ABCopyArrayOfAllGroups(ABGetSharedAddressBook()));
    EXPECT_EQ(CFArrayGetCount(people.get()), 2) << client("show");
    ASSERT_EQ(CFArrayGetCount(groups.get()), 1);
    auto* group = static_cast<ABRecordRef>(const_cast<void*>(CFArrayGetValueAtIndex(groups.get(), 0)));
    EXPECT_EQ(CFArrayGetCount(CFRef<CFArrayRef>::adopt(ABGroupCopyArrayOfAllMembers(group)).get()), 2);
}

TEST_F(DesktopAddressBook, IsReplacedByTheFileWhenItDoesNotAnswer) {
    session_.freeze();
    testing::internal::CaptureStderr();
    const auto person = CFRef<ABRecordRef>::adopt(ABPersonCreate());
    EXPECT_TRUE(ABAddRecord(ABGetSharedAddressBook(), person.get()));
    EXPECT_TRUE(ABSave(ABGetSharedAddressBook()));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "The desktop's address book does not answer; the file contacts.vcf is used instead.\n");
    EXPECT_TRUE(fs::exists(session_.home() / "XDG_DATA_HOME/tavro/contacts.vcf"));
}

}  // namespace

// An address book in a data folder of the test's own.
#pragma once

#include "platform/contacts/AddressBook.h"
#include "platform/foundation/CFRef.h"
#include "tests/platform/files/temporary_folder.h"
#include "tests/support/cf_values.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

class ContactsTest : public testing::Test {
protected:
    ContactsTest() {
        unsetenv("DBUS_SESSION_BUS_ADDRESS");  // never the address book of whoever runs the tests
        setenv("XDG_DATA_HOME", data_.path().c_str(), 1);
        std::filesystem::create_directory(folder());
    }

    std::filesystem::path folder() const { return data_.path() / "tavro"; }
    std::filesystem::path file() const { return folder() / "contacts.vcf"; }

    static std::string contentOf(const std::filesystem::path& path) {
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        return text.str();
    }
    void writeFile(const std::string& content) const { std::ofstream(file(), std::ios::binary) << content; }

    static CFRef<ABRecordRef> recordOf(const std::string& uniqueId) {
        return CFRef<ABRecordRef>::adopt(
            ABCopyRecordForUniqueId(ABGetSharedAddressBook(), makeCFString(uniqueId).get()));
    }
    static std::string uniqueIdOf(const CFRef<ABRecordRef>& record) {
        return textOfCF(CFRef<CFStringRef>::adopt(ABRecordCopyUniqueId(record.get())).get());
    }
    static CFRef<ABRecordRef> newPerson(const char* name) {
        auto person = CFRef<ABRecordRef>::adopt(ABPersonCreate());
        EXPECT_TRUE(ABRecordSetValue(person.get(), kABFirstNameProperty, makeCFString(name).get()));
        return person;
    }
    static bool addAndSave(const CFRef<ABRecordRef>& record) {
        return ABAddRecord(ABGetSharedAddressBook(), record.get()) && ABSave(ABGetSharedAddressBook());
    }

private:
    TemporaryFolder data_;
};

// Exports as other programs write them, and files that are none.

#include "platform/contacts/AddressBookImport.h"
#include "tests/platform/contacts/contacts_fixture.h"
#include "tests/support/places.h"

namespace {

namespace fs = std::filesystem;

class VCardImport : public ContactsTest {
protected:
    /// The number of cards, or -1; what is written to standard error is in `told_`.
    CFIndex import(const std::string& path) {
        CFArrayRef problems = nullptr;
        testing::internal::CaptureStderr();
        const CFIndex count = ABImportVCardFile(ABGetSharedAddressBook(), makeCFURL(path).get(), &problems, &error_);
        told_ = testing::internal::GetCapturedStderr();
        const auto owner = CFRef<CFArrayRef>::adopt(problems);
        EXPECT_EQ(count < 0, problems == nullptr);
        problems_.clear();
        for (CFIndex i = 0; i < CFArrayGetCount(problems); ++i) {
            auto* told = static_cast<CFDictionaryRef>(CFArrayGetValueAtIndex(problems, i));
            const auto number = [told](CFStringRef key) {
                CFIndex value = 0;
                CFNumberGetValue(static_cast<CFNumberRef>(CFDictionaryGetValue(told, key)), kCFNumberCFIndexType,
                                 &value);
                return std::to_string(value);
            };
            problems_ += number(kABImportProblemLine) + ":" + number(kABImportProblemReason) + " ";
        }
        return count;
    }

    static std::string sample(const std::string& name) { return sourcePath("tests/data/contacts/") + name; }

    std::string fileWith(const std::string& content) const {
        const fs::path path = folder() / "import.vcf";
        std::ofstream(path, std::ios::binary) << content;
        return path.string();
    }

    bool has(const std::string& text) const { return contentOf(file()).find(text) != std::string::npos; }

    ABImportError error_ = kABImportNoError;
    std::string problems_;
    std::string told_;
};

TEST_F(VCardImport, ReadsWhatOtherProgramsExport) {
    const struct {
        const char* file;
        CFIndex cards;
        std::vector<const char*> lines;
    } rows[] = {
        {"phone-2.1.vcf",
         2,
         {"N:M\u00fcller;J\u00f6rg;;;", "TEL;TYPE=WORK,FAX:+49 30 1234-99", "NOTE:first line\\nsecond line"}},
        {"mail-program-2.1-latin1.vcf", 1, {"ORG:B\u00e4cker & S\u00f6hne;Einkauf", "TEL;TYPE=WORK,FAX:+49 (89) 1-10"}},
        {"desktop-3.0.vcf", 3, {"item1.X-ABLabel:Lab fax", "X-ABShowAs:COMPANY"}},
        {"web-4.0.vcf", 3, {"TEL;VALUE=uri;TYPE=work,fax:tel:+1-418-656-9255", "BDAY:--0203", "KIND:group"}},
        {"list-3.0.vcf", 2, {"X-EVOLUTION-LIST:TRUE"}},
        {"utf-16.vcf", 1, {"N:\u0416\u0443\u043a;\u0412\u0435\u0440\u0430;;;"}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(import(sample(row.file)), row.cards) << row.file << told_;
        EXPECT_EQ(problems_, "") << row.file;
        for (const char* line : row.lines) {
            EXPECT_TRUE(has(std::string("\r\n") + line + "\r\n")) << line << "\n" << contentOf(file());
        }
    }
    const auto groups = CFRef<CFArrayRef>::adopt(ABCopyArrayOfAllGroups(ABGetSharedAddressBook()));
    ASSERT_EQ(CFArrayGetCount(groups.get()), 3);
    const CFIndex members[] = {2, 2, 1};
    for (CFIndex i = 0; i < 3; ++i) {
        auto* group = static_cast<ABRecordRef>(const_cast<void*>(CFArrayGetValueAtIndex(groups.get(), i)));
        const auto people = CFRef<CFArrayRef>::adopt(ABGroupCopyArrayOfAllMembers(group));
        EXPECT_EQ(CFArrayGetCount(people.get()), members[i]) << i;
    }
    const std::string content = contentOf(file());
    for (const auto& row : rows) {
        EXPECT_EQ(import(sample(row.file)), row.cards);
    }
    EXPECT_EQ(contentOf(file()), content) << "what is there already is not added again";
}

TEST_F(VCardImport, ChangesNobodyWhoIsThere) {
    const std::string mine = "BEGIN:VCARD\nVERSION:3.0\nUID:1\nFN:Mine\nN:Mine;;;;\nEND:VCARD\n";
    writeFile(mine);
    const std::string other = fileWith(
        "BEGIN:VCARD\nVERSION:3.0\nUID:1\nFN:Other\nN:Other;;;;\nEND:VCARD\n"
        "BEGIN:VCARD\nVERSION:3.0\nUID:2\nKIND:group\nFN:Board\nMEMBER:1\nEND:VCARD\n");
    ASSERT_EQ(import(other), 2);
    EXPECT_TRUE(contentOf(file()).starts_with(mine));
    const auto group = recordOf("2");
    const auto members = CFRef<CFArrayRef>::adopt(ABGroupCopyArrayOfAllMembers(group.get()));
    ASSERT_EQ(CFArrayGetCount(members.get()), 1);
    auto* member = static_cast<ABRecordRef>(const_cast<void*>(CFArrayGetValueAtIndex(members.get(), 0)));
    const auto name = CFRef<CFTypeRef>::adopt(ABRecordCopyValue(member, kABLastNameProperty));
    EXPECT_EQ(textOfCF(static_cast<CFStringRef>(name.get())), "Other") << "the group follows its member's new id";
}

TEST_F(VCardImport, TellsWhatItCouldNotRead) {
    const std::string good = "BEGIN:VCARD\nVERSION:3.0\nFN:Good\nEND:VCARD\n";
    EXPECT_EQ(
        import(fileWith("hello\n" + good + "BEGIN:VCARD\nVERSION:3.0\nEND:VCARD\n" + good + "BEGIN:VCARD\nFN:cut")), 2);
    EXPECT_EQ(problems_, "1:1 6:4 13:2 ");
    EXPECT_TRUE(has("FN:Good"));
    EXPECT_EQ(import(fileWith("\nBEGIN:VCARD\nVERSION:3.0\nFN:Cut\n")), 0) << told_;
    EXPECT_EQ(problems_, "2:2 ") << "a vCard it is";
}

TEST_F(VCardImport, PassesOverBackslashesOfColonsAndEmptyValues) {
    ASSERT_EQ(import(fileWith("BEGIN:VCARD\nVERSION:3.0\nUID:1\nFN:A\nTEL;TYPE=WORK,FAX:\nTEL;TYPE=WORK,FAX:12\n"
                              "EMAIL:\nEMAIL:a@b\nURL:http\\://a\\\n ://\\\\:\\,c\nEND:VCARD\n")),
              1);
    EXPECT_TRUE(has("\nURL:http://a://\\\\:\\,c\r\n")) << contentOf(file());
    const auto person = recordOf("1");
    for (const auto& [property, first] : {std::pair(kABPhoneProperty, "12"), std::pair(kABEmailProperty, "a@b")}) {
        const auto values = CFRef<CFTypeRef>::adopt(ABRecordCopyValue(person.get(), property));
        const auto value = CFRef<CFTypeRef>::adopt(
            ABMultiValueCopyValueAtIndex(static_cast<ABMultiValueRef>(const_cast<void*>(values.get())), 0));
        EXPECT_EQ(textOfCF(static_cast<CFStringRef>(value.get())), first);
    }
}

TEST_F(VCardImport, RefusesWhatIsNoVCard) {
    const std::string mine = "BEGIN:VCARD\nUID:1\nFN:Mine\nEND:VCARD\n";
    writeFile(mine);
    EXPECT_EQ(import(fileWith("%PDF-1.7\n")), -1);
    EXPECT_EQ(error_, kABImportNoVCard);
    EXPECT_NE(told_.find("import.vcf: there is no vCard in it\n"), std::string::npos) << told_;
    EXPECT_EQ(import(folder().string()), -1);
    EXPECT_EQ(error_, kABImportCannotRead);
    EXPECT_EQ(import(folder() / "none.vcf"), -1);
    EXPECT_EQ(error_, kABImportCannotRead);
    fs::resize_file(fileWith(""), std::uintmax_t(kABMaximumImportBytes) + 1);
    EXPECT_EQ(import(folder() / "import.vcf"), -1);
    EXPECT_EQ(error_, kABImportTooLarge);
    EXPECT_EQ(contentOf(file()), mine);

    fs::remove(file());
    fs::create_directory(file());
    EXPECT_EQ(import(sample("web-4.0.vcf")), -1);
    EXPECT_EQ(error_, kABImportNotSaved);
}

}  // namespace

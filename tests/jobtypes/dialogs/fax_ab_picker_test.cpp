// Picking recipients from the address book, and importing into it.

#include "jobtypes/dialogs/fax_ab_picker.h"

#include "jobtypes/dialogs/fax_list_editing.h"
#include "jobtypes/dialogs/fax_window.h"
#include "platform/toolbox/DataBrowser.h"
#include "platform/toolbox/Notices.h"
#include "tests/jobtypes/dialogs/fax_dialog_fixture.h"

namespace {

constexpr SInt32 kGroups = 1000;
constexpr SInt32 kPeople = 1001;
constexpr SInt32 kSearch = 1002;
constexpr SInt32 kImport = 1003;
constexpr SInt32 kOK = 1004;
constexpr SInt32 kStatus = 1006;

class FaxABPickerTest : public FaxDialogTest {
protected:
    SInt16 run(std::deque<Step> steps) {
        FaxListContext context{.bundle = plugin.bundle()};
        const FaxListScope scope(&context);
        return runDialog(std::move(steps), [this] { return RunModalFaxABPicker(plugin.bundle(), &list); });
    }

    static std::string person(const std::string& name, const std::string& number) {
        return "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:" + name + "\r\nFN:" + name + "\r\nN:;" + name +
               ";;;\r\nTEL;TYPE=WORK,FAX:" + number + "\r\nEND:VCARD\r\n";
    }
    static std::string group(const std::string& name, const std::vector<std::string>& members) {
        std::string card =
            "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:g-" + name + "\r\nFN:" + name + "\r\nN:" + name + "\r\nKIND:group\r\n";
        for (const std::string& member : members) {
            card += "MEMBER:" + member + "\r\n";
        }
        return card + "END:VCARD\r\n";
    }
    void writeBook() const {
        writeFile(person("Ada", "1") + person("Bo", "2") + person("Cy", "3") + group("Board", {"Ada", "Cy"}) +
                  group("Club", {"Bo"}));
    }
    static std::string cell(UInt32 row, UInt32 column) {
        return textOfCF(CFRef<CFStringRef>::adopt(AutomationCopyCellText(control(kPeople), row, column)).get());
    }
    static CFIndex rows(SInt32 browser) { return AutomationCountRows(control(browser)); }
};

TEST_F(FaxABPickerTest, OKAddsTheSelectedOfOneGroup) {
    writeBook();
    EXPECT_EQ(run({[] {
                       EXPECT_EQ(rows(kGroups), 3);
                       EXPECT_EQ(rows(kPeople), 3);
                       EXPECT_EQ(cell(1, 1) + cell(1, 2) + cell(1, 3) + cell(1, 4), "Ada1Work");
                   },
                   select(kGroups, {2}), [] { EXPECT_EQ(rows(kPeople), 2); }, select(kPeople, {2}), ok}),
              kFaxDialogOK);
    EXPECT_EQ(names(), "Cy ");
    EXPECT_EQ(textOfCF(list.recipientAtIndex(0)->uid()), "Cy");
}

TEST_F(FaxABPickerTest, OKAddsAllOfSeveralGroupsOrOfOneWithoutSelection) {
    writeBook();
    run({select(kGroups, {2, 3}), select(kPeople, {1}), ok});
    EXPECT_EQ(names(), "Ada Bo Cy ");
    list.removeAll();
    run({select(kGroups, {2}), ok});
    EXPECT_EQ(names(), "Ada Cy ");
}

TEST_F(FaxABPickerTest, SearchNarrowsWhatIsAddedAndKeepsTheSelection) {
    writeBook();
    run({select(kPeople, {2, 3}), type(kSearch, "c"), [] { EXPECT_EQ(rows(kPeople), 1); },
         [] { EXPECT_TRUE(AutomationIsRowSelected(control(kPeople), 1)); }, type(kSearch, "nobody"),
         [] {
             EXPECT_EQ(rows(kPeople), 0);
             EXPECT_FALSE(IsControlEnabled(control(kOK)));
             EXPECT_EQ(shown(kStatus), "Nobody is chosen.");
         },
         type(kSearch, "A"), ok});
    EXPECT_EQ(names(), "Ada ");
}

TEST_F(FaxABPickerTest, ADoubleClickAddsOne) {
    writeBook();
    EXPECT_EQ(run({select(kPeople, {2}), click(kPeople)}), kFaxDialogOK);
    EXPECT_EQ(names(), "Bo ");
}

TEST_F(FaxABPickerTest, CancelAddsNobody) {
    writeBook();
    EXPECT_EQ(run({select(kPeople, {2}), cancel}), kFaxDialogCancel);
    EXPECT_EQ(list.count(), 0);
}

TEST_F(FaxABPickerTest, AnEmptyOrUnreadableBookIsSaidAndNobodyCanBeAdded) {
    run({[] {
             EXPECT_FALSE(IsControlEnabled(control(kOK)));
             EXPECT_NE(shown(kStatus).find("Nobody in your address book has a fax number"), std::string::npos);
         },
         cancel});
    std::filesystem::create_directory(file());
    run({[] { EXPECT_EQ(shown(kStatus), "Your address book cannot be read."); }, cancel});
}

TEST_F(FaxABPickerTest, MoreThanThereIsRoomForAreRefusedTogether) {
    writeBook();
    for (int i = 0; i < 998; ++i) {
        add("Old", std::to_string(i).c_str());
    }
    EXPECT_EQ(run({ok, [this] { EXPECT_EQ(list.count(), 998); }, select(kPeople, {1, 2}), ok}), kFaxDialogOK);
    EXPECT_EQ(list.count(), 1000);
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(notices[0],
              "Those are too many recipients.|A fax goes to 1000 recipients at most. You chose 3, and there is room "
              "for 2 more.");
}

TEST_F(FaxABPickerTest, ImportedPeopleAreThere) {
    const auto exported = folder() / "exported.vcf";
    std::ofstream(exported) << "stray\r\n" + person("Di", "4") + group("Friends", {"Di"}) + "BEGIN:VCARD\r\nFN:cut";
    writeBook();
    EXPECT_EQ(run({type(kSearch, "di"), chooseFile(exported), click(kImport),
                   [] {
                       EXPECT_EQ(rows(kGroups), 4);
                       EXPECT_EQ(rows(kPeople), 1);
                   },
                   ok}),
              kFaxDialogOK);
    EXPECT_EQ(names(), "Di ");
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(notices[0],
              "The file was read.|Contacts and groups in “exported.vcf”: 2. Those that your address book had already "
              "were not added again.\n\nSome parts could not be read:\nLine 1: text that belongs to no contact.\nLine "
              "17: a contact that has no end.");
}

TEST_F(FaxABPickerTest, AFileThatIsNoVCardIsNamedAndChangesNothing) {
    writeBook();
    const std::string before = contentOf(file());
    const auto text = folder() / "notes.txt";
    std::ofstream(text) << "just a text";
    run({chooseFile(text), click(kImport), chooseFile(folder() / "missing.vcf"), click(kImport),
         click(kImport),  // the chooser is cancelled
         [] { EXPECT_EQ(rows(kPeople), 3); }, cancel});
    EXPECT_EQ(contentOf(file()), before);
    ASSERT_EQ(notices.size(), 2u);
    EXPECT_NE(notices[0].find("“notes.txt” has no contacts"), std::string::npos);
    EXPECT_NE(notices[1].find("“missing.vcf” cannot be opened"), std::string::npos);
}

}  // namespace

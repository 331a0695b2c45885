// The Job Notes panel between its fields, the tickets and the user's preferences.

#include "panels/job_notes/job_notes_preferences_dialog.h"
#include "platform/files/user_names.h"
#include "platform/printing/PMPrinter.h"
#include "platform/toolbox/Windows.h"
#include "tests/panels/panel_fixture.h"
#include "tests/platform/files/temporary_folder.h"

#include <fstream>
#include <optional>

extern "C" OSStatus GetJobNotesPanelInterface(PlugInIntf** interface);

namespace {

enum : SInt32 { kJobName = 2001, kSender, kRecipient, kSheetMessage, kMessage };

class JobNotesPanelTest : public PanelTest {
protected:
    JobNotesPanelTest() : PanelTest(GetJobNotesPanelInterface) {
        setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1);
        userName = Text(CFRef<CFStringRef>::adopt(CSCopyUserName(false)).get());
        set(kPMJobNameKey, "Minutes");
    }
    ~JobNotesPanelTest() override { unsetenv("XDG_CONFIG_HOME"); }

    void set(CFStringRef key, const char* text) const {
        PMTicketSetCFString(printer.settings, CFSTR("test"), key, String(text).get(), kPMUnlocked);
    }
    std::optional<std::string> written(const std::string& note) const {
        CFStringRef text = nullptr;
        const auto key = String("com.tavro.print.JobNotes" + note);
        const OSStatus status = PMTicketGetCFString(printer.settings, kPMTopLevel, kPMTopLevel, key.get(), &text);
        return status == noErr ? std::optional(Text(text)) : std::nullopt;
    }
    std::string shown(SInt32 number) const { return text(shell(number)); }
    void type(SInt32 number, const char* text) const {
        EXPECT_EQ(AutomationType(shell(number), String(text).get()), noErr) << number;
    }
    static void prefer(SInt32 documentName, SInt32 sender, SInt32 recipient) {
        StoreJobNotesPreferences({documentName, sender, recipient});
    }
    /// Opens the preferences, clicks the boxes and ends the dialog by its button.
    void changePreferences(const std::vector<SInt32>& boxes, OSStatus (*buttonOf)(WindowRef, ControlRef*)) {
        change_ = [=, this] {
            const WindowRef dialog = FrontNonFloatingWindow();
            if (dialog == window) {
                return;
            }
            ControlRef control = nullptr;
            for (const SInt32 box : boxes) {
                const ControlID id{FourCharCode("Tjnp"), box};
                EXPECT_EQ(GetControlByID(dialog, &id, &control), noErr);
                EXPECT_EQ(AutomationClick(control), noErr);
            }
            EXPECT_EQ(buttonOf(dialog, &control), noErr);
            EXPECT_EQ(AutomationClick(control), noErr);
        };
        EventLoopTimerRef timer = nullptr;
        InstallEventLoopTimer(
            0.01, 0, [](EventLoopTimerRef, void* self) { static_cast<JobNotesPanelTest*>(self)->change_(); }, this,
            &timer);
        EXPECT_EQ(AutomationClick(shell(2006)), noErr);
        RemoveEventLoopTimer(timer);
    }

    TemporaryFolder folder;
    std::string userName;

private:
    std::function<void()> change_;
};

TEST_F(JobNotesPanelTest, RefusesWhatItHasNoContextFor) {
    EXPECT_EQ(panelTitle, "Job Notes");
    expectRefusals(true);
}

TEST_F(JobNotesPanelTest, ANewUserSeesNamesFilledIn) {
    openPanel();
    EXPECT_EQ(shown(kJobName), "Minutes");
    EXPECT_EQ(shown(kSender), userName);
    EXPECT_EQ(shown(kRecipient), userName);
    for (const SInt32 field : {kJobName, kSender, kRecipient}) {
        EXPECT_FALSE(IsControlEnabled(shell(field))) << field;
    }
    ControlRef focused = nullptr;
    GetKeyboardFocus(window, &focused);
    EXPECT_EQ(focused, shell(kSheetMessage)) << "the first field that takes text";

    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(written("JobName"), "Minutes");
    EXPECT_EQ(written("SenderName"), userName);
    EXPECT_EQ(written("Recipient"), userName);
    EXPECT_EQ(written("Message"), std::nullopt);

    set(CFSTR("com.tavro.print.JobNotesJobName"), "of the settings");
    set(CFSTR("com.tavro.print.JobNotesSenderName"), "Ann");
    set(CFSTR("com.tavro.print.JobNotesRecipient"), "Bob");
    EXPECT_EQ(sync(true), noErr);
    EXPECT_EQ(shown(kJobName), "of the settings");
    EXPECT_EQ(shown(kSender), "Ann");
    EXPECT_EQ(shown(kRecipient), "Ann") << "the recipient follows the sender";
    EXPECT_FALSE(IsControlEnabled(shell(kJobName)));
}

TEST_F(JobNotesPanelTest, WithoutAnyNameTheJobIsUntitled) {
    PMTicketReleaseItem(printer.settings, kPMTopLevel, kPMJobNameKey);
    openPanel();
    EXPECT_EQ(shown(kJobName), "Untitled Job");
}

TEST_F(JobNotesPanelTest, KeepsTheUsersOwnTexts) {
    prefer(0, 0, 0);
    openPanel();
    type(kJobName, "Plan");
    type(kSender, "Ann");
    type(kRecipient, "Bob");
    type(kSheetMessage, "Hello");
    type(kMessage, "Line\nand line");
    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(written("JobName"), "Plan");
    EXPECT_EQ(written("SenderName"), "Ann");
    EXPECT_EQ(written("Recipient"), "Bob");
    EXPECT_EQ(written("SheetMessage"), "Hello");
    EXPECT_EQ(written("Message"), "Line\nand line");

    type(kMessage, "");
    type(kJobName, "");
    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(written("Message"), std::nullopt);
    EXPECT_EQ(written("JobName"), std::nullopt);
    EXPECT_EQ(sync(true), noErr);
    EXPECT_EQ(shown(kJobName), "Minutes");
    EXPECT_EQ(shown(kRecipient), "Bob");
}

TEST_F(JobNotesPanelTest, NothingTypedIsLostByARefill) {
    prefer(0, 0, 0);
    openPanel();
    type(kSender, "Ann");
    type(kMessage, "Staple");
    DeactivateControl(control(1));
    ActivateControl(control(1));
    EXPECT_EQ(shown(kSender), "Ann");
    EXPECT_EQ(shown(kMessage), "Staple");

    changePreferences({9000, 9002}, GetWindowCancelButton);
    EXPECT_EQ(shown(kRecipient), userName) << "cancelled";
    type(kJobName, "Plan");
    changePreferences({9000, 9002}, GetWindowDefaultButton);
    EXPECT_EQ(shown(kJobName), "Minutes") << "the document's name, from now on";
    EXPECT_EQ(shown(kSender), "Ann");
    EXPECT_EQ(shown(kRecipient), "Ann") << "the recipient follows the sender that is shown";
    EXPECT_FALSE(IsControlEnabled(shell(kRecipient)));
    EXPECT_TRUE(IsControlEnabled(shell(kSender)));
    EXPECT_EQ(shown(kMessage), "Staple");

    // The recipient follows what is typed later, too.
    type(kSender, "Cleo");
    DeactivateControl(control(1));
    ActivateControl(control(1));
    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(written("Recipient"), "Cleo");
}

TEST_F(JobNotesPanelTest, HelpsWhileItIsShown) {
    openPanel();
    const auto isAsked = [this] {
        EventRef event = nullptr;
        CreateEvent(nullptr, kEventClassCommand, kEventCommandProcess, 0, 0, &event);
        const HICommand command{0, FourCharCode("Thlp"), nullptr, 0, nullptr};
        SetEventParameter(event, kEventParamDirectObject, typeHICommand, sizeof command, &command);
        const OSStatus status = SendEventToEventTarget(event, GetWindowEventTarget(window));
        ReleaseEvent(event);
        return status != eventNotHandledErr;
    };
    EXPECT_TRUE(isAsked());
    DeactivateControl(control(1));
    EXPECT_FALSE(isAsked()) << "another panel is shown";
    ActivateControl(control(1));
    EXPECT_EQ(panel.Terminate(std::exchange(context, nullptr), noErr), noErr);
    EXPECT_FALSE(isAsked());
}

TEST_F(JobNotesPanelTest, LimitsWhatIsTyped) {
    prefer(0, 0, 0);
    openPanel();
    type(kJobName, std::string(300, 'x').c_str());
    type(kMessage, std::string(1010, 'x').c_str());
    EXPECT_EQ(shown(kJobName).size(), 255u);
    EXPECT_EQ(shown(kMessage).size(), 1000u);
}

TEST_F(JobNotesPanelTest, HasNoTextsUntilItIsOpened) {
    set(CFSTR("com.tavro.print.JobNotesMessage"), "of a preset");
    ASSERT_EQ(initialize(), noErr);
    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(written("Message"), std::nullopt) << "a dialog does not ask a panel that it has not opened";
    EXPECT_EQ(written("JobName"), std::nullopt);
    ASSERT_EQ(panel.Open(context), noErr);
    EXPECT_EQ(shown(kMessage), "of a preset") << "as it was read";
}

TEST(JobNotesPreferences, AbsentFlagsStayAsTheyWere) {
    const TemporaryFolder folder;
    setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1);
    JobNotesPreferencesOptions preferences{7, 8, 9};
    EXPECT_EQ(RetrieveJobNotesPreferences(&preferences), kNoJobNotesPreferences);
    EXPECT_EQ(preferences.useLoginNameAsSenderName, 8);
    StoreJobNotesPreferences({0, 1, 0});
    EXPECT_EQ(RetrieveJobNotesPreferences(&preferences), noErr);
    EXPECT_EQ(preferences.useDocumentNameAsJobName, 0);
    EXPECT_EQ(preferences.useLoginNameAsSenderName, 1);

    std::ofstream(folder.path() / "tavro/com.tavro.print.jobnotes.plist")
        << R"(<plist version="1.0"><dict><key>useLoginNameAsSenderName</key><string>no</string></dict></plist>)";
    preferences = {7, 8, 9};
    EXPECT_EQ(RetrieveJobNotesPreferences(&preferences), noErr);
    EXPECT_EQ(preferences.useDocumentNameAsJobName, 7);
    EXPECT_EQ(preferences.useLoginNameAsSenderName, 8);
    EXPECT_EQ(JobNotesPreferencesOrDefaults().useDocumentNameAsJobName, 0) << "there is a file, without the flag";
    std::filesystem::remove(folder.path() / "tavro/com.tavro.print.jobnotes.plist");
    EXPECT_EQ(JobNotesPreferencesOrDefaults().useDocumentNameAsJobName, 1);
    unsetenv("XDG_CONFIG_HOME");
}

}  // namespace

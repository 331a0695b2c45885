// The shell in a dialog, driven as a print dialog drives it.

#include "model/settings/ticket_access.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/Menus.h"
#include "tests/core/shell/plugin_bundle.h"
#include "tests/model/settings/session.h"
#include "tests/platform/toolbox/toolbox_fixture.h"

#include <algorithm>

namespace {

constexpr OSType kShell = FourCharCode("Tshl");
constexpr SInt32 kSelector = 16;
const CFStringRef kEmitTPIFKey = CFSTR("com.tavro.print.EmitTPIF");

std::string title(CFStringRef string) {
    return ::text(string);
}

class Shell : public NibWindowTest {
protected:
    void SetUp() override {
        PlugInInstance* instance = createInstance();
        ASSERT_NE(instance, nullptr);
        interface = queryInterface(instance);
        instance->table->Release(instance);
        operations = interface->interface.table->operations;
        open("<layout class=\"QVBoxLayout\"><item>" +
             widget("QWidget", 1, property("minimumSize", "size", "<width>540</width><height>491</height>")) +
             "</item><item>" + widget("QPushButton", 2, property("command", "string", "ok  ")) + "</item><item>" +
             widget("QPushButton", 3, property("command", "string", "not!")) + "</item></layout>");
        ShowWindow(window);
    }
    void TearDown() override {
        if (context != nullptr) {
            terminate();
        }
        interface->interface.table->Release(&interface);
        NibWindowTest::TearDown();
    }

    OSStatus start(const Session& session) {
        OSType creator = 0;
        CFStringRef kind = nullptr;
        CFStringRef name = nullptr;
        UInt32 width = 0;
        UInt32 height = 0;
        EXPECT_EQ(operations.Prologue(&context, &creator, &kind, &name, &width, &height), noErr);
        EXPECT_EQ(creator, FourCharCode("pde "));
        EXPECT_EQ(title(kind), "com.tavro.print.pde.tavrofeatureskind");
        EXPECT_NE(title(name), "(null)");
        EXPECT_EQ(width, 540u);
        EXPECT_EQ(height, 491u);
        UInt32 flags = 0;
        return operations.Initialize(context, &flags, nullptr, control(1), session.get());
    }
    OSStatus terminate() { return operations.Terminate(std::exchange(context, nullptr), noErr); }
    void startAndOpen(const Session& session) {
        ASSERT_EQ(start(session), noErr);
        ASSERT_EQ(operations.Open(context), noErr);
    }

    /// A control of the shell or its panels; null when there is none.
    ControlRef shell(SInt32 number, OSType signature = kShell) const {
        const ControlID id{signature, number};
        ControlRef found = nullptr;
        GetControlByID(window, &id, &found);
        return found;
    }
    std::vector<std::string> titles() const {
        const MenuRef menu = GetControlPopupMenuHandle(shell(kSelector));
        std::vector<std::string> found;
        for (MenuItemIndex item = 1; item <= CountMenuItems(menu); ++item) {
            CFStringRef name = nullptr;
            CopyMenuItemTextAsCFString(menu, item, &name);
            found.push_back(title(CFRef<CFStringRef>::adopt(name).get()));
        }
        return found;
    }
    /// The number of a panel by its title.
    SInt32 panel(const std::string& name) const {
        const auto names = titles();
        return static_cast<SInt32>(std::ranges::find(names, name) - names.begin()) + 1;
    }
    SInt32 selected() const { return GetControl32BitValue(shell(kSelector)); }
    /// Every panel's pane is shown, enabled and active when it is the panel's, and nothing of it when it is not.
    void expectShown(SInt32 number) const {
        EXPECT_EQ(selected(), number);
        for (SInt32 other = 1; other <= static_cast<SInt32>(titles().size()); ++other) {
            const ControlRef pane = shell(other, FourCharCode("TSgb"));
            EXPECT_EQ(IsControlVisible(pane), other == number) << other;
            EXPECT_EQ(IsControlEnabled(pane), other == number) << other;
            EXPECT_EQ(IsControlActive(pane), other == number) << other;
        }
    }
    void choose(const std::string& name) { ASSERT_EQ(AutomationSetValue(shell(kSelector), panel(name)), noErr); }
    /// Sends a command to the dialog's window.
    OSStatus command(OSType code) const {
        EventRef event = nullptr;
        CreateEvent(nullptr, kEventClassCommand, kEventCommandProcess, 0, 0, &event);
        const HICommand sent{0, code, nullptr, 0, nullptr};
        SetEventParameter(event, kEventParamDirectObject, typeHICommand, sizeof sent, &sent);
        const OSStatus status = SendEventToEventTarget(event, GetWindowEventTarget(window));
        ReleaseEvent(event);
        return status;
    }

    PMPlugInHeaderInterface* interface = nullptr;
    PDEOperations operations{};
    PMPDEContext context = nullptr;
};

TEST_F(Shell, ShowsOnePanelAtATimeInARing) {
    const Session session(kZR420);
    startAndOpen(session);
    const auto names = titles();
    ASSERT_GE(names.size(), 2u);
    EXPECT_EQ(names.back(), "About");
    const auto last = static_cast<SInt32>(names.size());
    choose("About");
    expectShown(last);

    EXPECT_EQ(command(FourCharCode("TFup")), eventNotHandledErr);
    expectShown(1);
    EXPECT_EQ(command(FourCharCode("TFdn")), eventNotHandledErr);
    expectShown(last);
    EXPECT_EQ(command(FourCharCode("TFdn")), eventNotHandledErr);
    expectShown(last - 1);
    const auto hasFocus = [this](ControlRef control) {
        ControlRef focused = nullptr;
        GetKeyboardFocus(window, &focused);
        return focused == control;
    };
    choose("Layout");
    SetKeyboardFocus(window, shell(6004));
    ASSERT_TRUE(hasFocus(shell(6004)));
    command(FourCharCode("TFdn"));
    EXPECT_TRUE(hasFocus(shell(kSelector))) << "the panel that had the keys is hidden";
    SetKeyboardFocus(window, control(2));
    command(FourCharCode("TFup"));
    EXPECT_TRUE(hasFocus(control(2)));
    EXPECT_EQ(command(FourCharCode("none")), eventNotHandledErr);
    EXPECT_EQ(command(FourCharCode("help")), noErr);
    for (const std::string& name : names) {
        choose(name);
        EXPECT_EQ(command(FourCharCode("Thlp")), noErr) << "no page for " << name;
    }
    EXPECT_FALSE(IsControlVisible(shell(1966)));
    EXPECT_FALSE(IsControlVisible(shell(1967)));

    // Where the panels lie: in the panel area, inside the dialog's own pane.
    Rect pane{};
    Rect area{};
    GetControlBounds(shell(last - 1, FourCharCode("TSgb")), &pane);
    GetControlBounds(shell(17), &area);
    EXPECT_EQ(std::tie(pane.left, pane.top, pane.right, pane.bottom),
              std::tie(area.left, area.top, area.right, area.bottom));
    EXPECT_EQ(GetSuperControl(shell(10)), control(1));
}

TEST_F(Shell, APanelThatIsLeftWritesAndTheOthersReadAnew) {
    const Session session(kZR420);
    startAndOpen(session);
    choose("Advanced");
    choose("About");
    choose("Advanced");
    SetControl32BitValue(shell(630), 1);
    ASSERT_EQ(AutomationClick(shell(630)), noErr);
    EXPECT_EQ(GetTicketNumber(session.settings, kEmitTPIFKey, -7), 1) << "not yet";
    choose("About");
    EXPECT_EQ(GetTicketNumber(session.settings, kEmitTPIFKey, -7), 0);

    SetTicketNumber(session.settings, kTicketCreator, kEmitTPIFKey, 1);
    choose("Advanced");
    EXPECT_EQ(GetControl32BitValue(shell(630)), 1);
}

TEST_F(Shell, ShowsThePanelsInTheirOrder) {
    const Session session(kZR420);
    startAndOpen(session);
    EXPECT_LT(panel("Paper and Output"), panel("Image Options"));
    EXPECT_LT(panel("Image Options"), panel("Layout"));
    EXPECT_LT(panel("Layout"), panel("Advanced"));
}

// The sides of a job are chosen in other panels too: what they chose must outlive a layout panel that nobody looks at.
TEST_F(Shell, OnlyTheLayoutPanelThatIsShownOrLeftDecidesTheSides) {
    const CFStringRef sidesKey = CFSTR("com.apple.print.PrintSettings.PMDuplexing");
    const Session session(kZR420);
    SetTicketNumber(session.settings, kTicketCreator, sidesKey, 3);
    startAndOpen(session);
    choose("Layout");
    choose("Advanced");
    EXPECT_EQ(GetTicketNumber(session.settings, sidesKey, -7), 2) << "left";

    choose("Paper and Output");
    ASSERT_EQ(AutomationSetValue(shell(113), 3), noErr);
    choose("Advanced");
    CFMutableDictionaryRef options = nullptr;
    ASSERT_EQ(PMTicketGetPPDDict(session.settings, kPMTopLevel, &options), noErr);
    EXPECT_EQ(operations.Sync(context, session.get(), false), noErr);
    choose("About");
    EXPECT_EQ(GetTicketNumber(session.settings, sidesKey, -7), 3) << "not shown";
    EXPECT_EQ(get(options, "Duplex"), "DuplexTumble");

    choose("Layout");
    EXPECT_EQ(operations.Sync(context, session.get(), false), noErr);
    EXPECT_EQ(GetTicketNumber(session.settings, sidesKey, -7), 2) << "shown";
    EXPECT_EQ(get(options, "Duplex"), "DuplexNoTumble");
    choose("About");
}

TEST_F(Shell, OpensAgainWithoutBuildingAgain) {
    const Session session(kZR420);
    startAndOpen(session);
    const auto names = titles();
    const ControlRef pane = shell(10);
    choose("About");
    for (const bool closed : {true, false}) {
        if (closed) {
            EXPECT_EQ(operations.Close(context), noErr);
            const SInt32 before = selected();
            EXPECT_EQ(command(FourCharCode("TFup")), eventNotHandledErr);
            EXPECT_EQ(selected(), before) << "closed";
        }
        EXPECT_EQ(operations.Open(context), noErr);
        EXPECT_EQ(titles(), names);
        EXPECT_EQ(shell(10), pane);
        expectShown(panel("About"));
        EXPECT_EQ(CountSubControls(control(1)), 1);
    }
    // One handler listens, however often it was opened.
    command(FourCharCode("TFup"));
    expectShown(1);
    EXPECT_EQ(operations.Close(context), noErr);
    EXPECT_EQ(operations.Close(context), noErr);
}

TEST_F(Shell, MayBeInitializedTwice) {
    const Session session(kZR420);
    ASSERT_EQ(start(session), noErr);
    ControlRef content = nullptr;
    ASSERT_EQ(GetRootControl(window, &content), noErr);
    const UInt16 controls = CountSubControls(content);
    EXPECT_EQ(operations.Initialize(context, nullptr, nullptr, control(1), session.get()), noErr);
    EXPECT_EQ(CountSubControls(content), controls) << "no second pane for a panel";
    EXPECT_EQ(operations.Open(context), noErr);
    EXPECT_EQ(terminate(), noErr);
    EXPECT_EQ(CountSubControls(content), 3) << "the dialog's own";
    for (const SInt32 button : {2, 3}) {
        AutomationClick(control(button));  // nobody listens any more
    }
}

TEST_F(Shell, CommitsTwoSettingsThatNoPanelHas) {
    const Session session(kZR420);
    ASSERT_EQ(start(session), noErr);
    CFBooleanRef rotate = nullptr;
    EXPECT_EQ(PMTicketGetCFBoolean(session.settings, kPMTopLevel, kPMTopLevel,
                                   CFSTR("com.tavro.print.RotateBooklet180Degrees"), &rotate),
              kPMKeyNotFound);
    EXPECT_EQ(operations.Sync(context, session.get(), false), noErr);
    EXPECT_EQ(PMTicketGetCFBoolean(session.settings, kPMTopLevel, kPMTopLevel,
                                   CFSTR("com.tavro.print.RotateBooklet180Degrees"), &rotate),
              noErr);
    EXPECT_EQ(rotate, kCFBooleanTrue);
    CFDictionaryRef options = nullptr;
    EXPECT_EQ(PMTicketGetCFDictionary(session.settings, kPMTopLevel, kPMTopLevel, CFSTR("com.tavro.print.TPIFOptions"),
                                      &options),
              noErr);
    EXPECT_EQ(CFDictionaryGetCount(options), 2);
    EXPECT_EQ(CFDictionaryGetValue(options, CFSTR("TPIFOptionExceptions")), kCFBooleanTrue);
    EXPECT_EQ(CFDictionaryGetValue(options, CFSTR("TPIFOptionInserts")), kCFBooleanTrue);
    EXPECT_EQ(GetTicketNumber(session.settings, kEmitTPIFKey, -7), 1) << "the panels commit too";
}

TEST_F(Shell, RemembersThePanelFromOneDialogToTheNext) {
    const Session session(kZR420);
    startAndOpen(session);
    choose("Advanced");
    choose("About");
    EXPECT_EQ(terminate(), noErr);
    EXPECT_EQ(shell(10), nullptr) << "the shell's pane goes with it";
    EXPECT_EQ(shell(1, FourCharCode("TSgb")), nullptr);

    const Session next(kZR410);
    startAndOpen(next);
    expectShown(panel("About"));
    choose("Advanced");
}

TEST_F(Shell, GivesNoSummary) {
    const Session session(kZR420);
    ASSERT_EQ(start(session), noErr);
    CFArrayRef titleArray = reinterpret_cast<CFArrayRef>(&context);
    CFArrayRef summaries = titleArray;
    EXPECT_EQ(operations.GetSummaryText(context, &titleArray, &summaries), noErr);
    EXPECT_EQ(titleArray, nullptr);
    EXPECT_EQ(summaries, nullptr);
}

TEST_F(Shell, RefusesWhatItCannotServeAndStartsAnew) {
    const TemporaryFolder folder;
    const auto changed = [&](const char* name, const std::string& maker) {
        return folder.add(name, changedPPD({"*Manufacturer: \"Tavro\""}, maker));
    };
    const Session other(changed("other.ppd", "*Manufacturer: \"Tavros\""));
    const Session nobody(changed("nobody.ppd", "*Manufacturer: \"\""));
    const Session gone(changed("gone.ppd", "*Manufacturer: \"Tavro\""));
    std::filesystem::remove(folder / "gone.ppd");
    const Session empty(kZR420);
    PMSessionSetDataInSession(empty.get(), kPDE_PMPrinterInfoKey, CFSTR("no ticket"));

    const auto refused = [this](const Session& session) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(start(session), kPMInvalidPDEContext);
        EXPECT_EQ(operations.Open(context), kPMInvalidPDEContext) << "it was never placed in the dialog";
        EXPECT_EQ(terminate(), noErr);
        return testing::internal::GetCapturedStderr();
    };
    EXPECT_EQ(refused(other), "Initialize() not a Tavro PDE.\n");
    EXPECT_EQ(refused(nobody), "Initialize() not a Tavro PDE.\n");
    EXPECT_EQ(refused(gone), "Initialize()::ppdOpenCompiledPPDFromTicket() failed.\n");
    EXPECT_EQ(refused(empty), "Initialize()::GetTicketFromSession() failed.\n");

    const Session session(kZR410);
    startAndOpen(session);
    EXPECT_GE(titles().size(), 2u);
}

TEST_F(Shell, RefusesCallsWithoutContextOrSession) {
    const Session session(kZR420);
    EXPECT_EQ(operations.Initialize(nullptr, nullptr, nullptr, control(1), session.get()), kPMInvalidPDEContext);
    EXPECT_EQ(operations.Sync(nullptr, session.get(), true), kPMInvalidPrintSession);
    EXPECT_EQ(operations.Open(nullptr), kPMInvalidPDEContext);
    EXPECT_EQ(operations.Close(nullptr), kPMInvalidPDEContext);
    EXPECT_EQ(operations.Terminate(nullptr, noErr), kPMInvalidPDEContext);
    EXPECT_EQ(operations.GetSummaryText(nullptr, nullptr, nullptr), kPMInvalidPDEContext);
    ASSERT_EQ(start(session), noErr);
    EXPECT_EQ(operations.Initialize(context, nullptr, nullptr, control(1), nullptr), kPMInvalidPDEContext);
    EXPECT_EQ(operations.Sync(context, nullptr, true), kPMInvalidPrintSession);
}

TEST_F(Shell, KnowsTheOtherExtensionsOfItsPrinter) {
    const auto copyGetters = reinterpret_cast<CFArrayRef (*)()>(
        CFBundleGetFunctionPointerForName(plugIn(), CFSTR("TavroPDECopyExtensionGetters")));
    ASSERT_NE(copyGetters, nullptr);
    for (const auto& [ppd, expected] :
         {std::pair(kZR420, 0), {kSources / "resources/ppd/Tavro-ZR840.ppd", 1}, {kZR410, 0}}) {
        const Session session(ppd);
        ASSERT_EQ(start(session), noErr);
        const auto getters = CFRef<CFArrayRef>::adopt(copyGetters());
        EXPECT_EQ(CFArrayGetCount(getters.get()), expected) << ppd;
        for (CFIndex i = 0; i < CFArrayGetCount(getters.get()); ++i) {
            const auto* getter = static_cast<CFStringRef>(CFArrayGetValueAtIndex(getters.get(), i));
            EXPECT_NE(CFBundleGetFunctionPointerForName(plugIn(), getter), nullptr) << title(getter);
        }
        terminate();
    }
    EXPECT_EQ(CFArrayGetCount(CFRef<CFArrayRef>::adopt(copyGetters()).get()), 0) << "of no printer";
}

TEST_F(Shell, ListensToTheDialogsButtonsAndLeavesThemAlone) {
    const Session session(kZR420);
    startAndOpen(session);
    CFBundleRef attached = nullptr;
    EXPECT_EQ(
        GetControlProperty(control(2), FourCharCode("TPDE"), FourCharCode("MBND"), sizeof attached, nullptr, &attached),
        noErr);
    EXPECT_EQ(attached, plugIn());
    int printed = 0;
    const TestHandler dialog(GetWindowEventTarget(window), kEventClassCommand, kEventCommandProcess,
                             [&printed](EventHandlerCallRef, EventRef event) {
                                 printed += commandOf(event) == FourCharCode("ok  ");
                                 return noErr;
                             });
    EXPECT_EQ(AutomationClick(control(2)), noErr);
    EXPECT_EQ(printed, 1);
    EXPECT_EQ(terminate(), noErr);
    EXPECT_EQ(AutomationClick(control(2)), noErr);
    EXPECT_EQ(printed, 2);
}

}  // namespace

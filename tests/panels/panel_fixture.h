// A built-in panel in a window of its own, driven as the shell drives it.
#pragma once

#include "model/settings/ppd_access.h"
#include "platform/toolbox/Automation.h"
#include "tests/panels/plugin_fixture.h"

#include <QImage>

/// What a panel's Prologue says of it.
struct ExpectedPrologue {
    std::string kind = Text(kPDEPanelKind);
    UInt32 width = 0;
    UInt32 height = 0;
};

class PanelTest : public NibWindowTest {
protected:
    explicit PanelTest(PanelInterfaceGetter getter, const std::string& ppd = kZR420, ExpectedPrologue prologue = {})
        : printer(ppd), expected(std::move(prologue)) {
        PlugInIntf* interface = nullptr;
        EXPECT_EQ(getter(&interface), noErr);
        panel = interface->table->operations;
        std::free(interface->table);
        std::free(interface);
    }

    void SetUp() override {
        open(property("geometry", "rect", "<x>0</x><y>0</y><width>540</width><height>440</height>") +
             "<layout class=\"QVBoxLayout\">" + property("leftMargin", "number", "0") +
             property("topMargin", "number", "0") + property("rightMargin", "number", "0") +
             property("bottomMargin", "number", "0") + "<item>" + widget("QWidget", 1) + "</item></layout>");
        ShowWindow(window);
        OSType creator = 0;
        CFStringRef kind = nullptr;
        CFStringRef title = nullptr;
        UInt32 width = 1;
        UInt32 height = 1;
        ASSERT_EQ(panel.Prologue(&context, &creator, &kind, &title, &width, &height), noErr);
        EXPECT_EQ(creator, FourCharCode("Tshl"));
        EXPECT_EQ(Text(kind), expected.kind);
        EXPECT_EQ(width, expected.width);
        EXPECT_EQ(height, expected.height);
        panelTitle = Text(title);
    }
    void TearDown() override {
        if (context != nullptr) {
            EXPECT_EQ(panel.Close(context), noErr);
            EXPECT_EQ(panel.Terminate(context, noErr), noErr);
        }
        NibWindowTest::TearDown();
    }

    OSStatus initialize() { return panel.Initialize(context, nullptr, nullptr, control(1), printer.session); }
    void openPanel() {
        ASSERT_EQ(initialize(), noErr);
        ASSERT_EQ(panel.Open(context), noErr);
    }
    OSStatus sync(bool ticketsToControls) { return panel.Sync(context, printer.session, ticketsToControls); }
    /// A control of the panel by its number.
    ControlRef shell(SInt32 number) const {
        const ControlID id{signature, number};
        ControlRef found = nullptr;
        EXPECT_EQ(GetControlByID(window, &id, &found), noErr) << number;
        return found;
    }

    SInt32 value(SInt32 number) const { return GetControl32BitValue(shell(number)); }

    /// The option of the PPD that is chosen; empty for the printer's own.
    std::string choice(CFStringRef mainKeyword) const {
        CFStringRef option = nullptr;
        return PPDGetMainKeywordValue(printer.settings, mainKeyword, &option) == noErr ? Text(option) : "";
    }
    void setChoice(CFStringRef mainKeyword, CFStringRef option) const {
        EXPECT_EQ(PPDSetMainKeyword(printer.settings, mainKeyword, option), noErr);
    }

    /// What a control looks like now.
    QImage drawn(SInt32 number) const {
        const std::filesystem::path file = plugin.contents() / "shot.png";
        const auto url = CFRef<CFURLRef>::adopt(
            CFURLCreateWithFileSystemPath(nullptr, String(file).get(), kCFURLPOSIXPathStyle, false));
        EXPECT_EQ(AutomationSnapshot(window, url.get()), noErr);
        Rect bounds{};
        GetControlBounds(shell(number), &bounds);
        return QImage(QString::fromStdString(file))
            .copy(bounds.left, bounds.top, bounds.right - bounds.left, bounds.bottom - bounds.top);
    }

    /// What every panel answers to calls without a context or a session.
    void expectRefusals(bool syncs, OSStatus syncWithoutContext = kPMInvalidPrintSession) {
        EXPECT_EQ(panel.Initialize(nullptr, nullptr, nullptr, nullptr, printer.session), kPMInvalidPDEContext);
        EXPECT_EQ(panel.Initialize(context, nullptr, nullptr, nullptr, nullptr), kPMInvalidPDEContext);
        EXPECT_EQ(panel.Open(nullptr), kPMInvalidPDEContext);
        EXPECT_EQ(panel.Sync(nullptr, printer.session, true), syncs ? syncWithoutContext : noErr);
        EXPECT_EQ(panel.Sync(context, nullptr, true), syncs ? kPMInvalidPrintSession : noErr);
        CFArrayRef titles = reinterpret_cast<CFArrayRef>(&titles);
        CFArrayRef summaries = titles;
        EXPECT_EQ(panel.GetSummaryText(context, &titles, &summaries), noErr);
        EXPECT_EQ(titles, nullptr);
        EXPECT_EQ(summaries, nullptr);
        EXPECT_EQ(panel.GetSummaryText(nullptr, &titles, &summaries), kPMInvalidPDEContext);
        EXPECT_EQ(panel.Close(nullptr), syncs ? kPMInvalidPDEContext : noErr);
        EXPECT_EQ(panel.Terminate(nullptr, noErr), syncs ? kPMInvalidPDEContext : noErr);
    }
    /// What a panel with controls does in a plug-in whose nibs are gone.
    void expectEmptyWithoutNib() {
        std::filesystem::remove(plugin.contents() / "Resources");
        ASSERT_EQ(initialize(), noErr);
        EXPECT_EQ(panel.Open(context), kNibNotFoundErr);
        EXPECT_EQ(CountSubControls(control(1)), 0);
        EXPECT_EQ(sync(true), noErr);
        EXPECT_EQ(sync(false), noErr);
    }

    PluginBundle plugin;
    PluginSession printer;
    PDEOperations panel{};
    PMPDEContext context = nullptr;
    std::string panelTitle;
    OSType signature = FourCharCode("Tshl");  // of the panel's controls

private:
    ExpectedPrologue expected;
};

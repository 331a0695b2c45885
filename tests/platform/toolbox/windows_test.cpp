// Windows from nibs: texts, buttons, modal loops that nest, end twice or lose their window.

#include "platform/toolbox/Automation.h"
#include "platform/toolbox/Notices.h"
#include "platform/toolbox/objects.h"
#include "tests/platform/toolbox/toolbox_fixture.h"
#include "tests/support/places.h"

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <fstream>
#include <iterator>

namespace {

class WindowsTest : public NibWindowTest {
protected:
    /// Calls the function once the event loop runs.
    static void later(std::function<void()> function) {
        EventLoopTimerRef timer = nullptr;
        InstallEventLoopTimer(
            0.0, 0,
            [](EventLoopTimerRef fired, void* data) {
                RemoveEventLoopTimer(fired);
                const std::unique_ptr<std::function<void()>> call(static_cast<std::function<void()>*>(data));
                (*call)();
            },
            new std::function<void()>(std::move(function)), &timer);
    }
    static std::string buttons() {
        return widget("QPushButton", 1, property("command", "string", "ok  ") + property("text", "string", "OK")) +
               widget("QPushButton", 2, property("command", "string", "not!") + property("text", "string", "Cancel"));
    }
    static void press(Qt::Key key) { QTest::keyClick(FrontNonFloatingWindow()->widget->windowHandle(), key); }
};

TEST_F(WindowsTest, TextsComeFromTheTableOfTheNib) {
    bundle.add("Resources/en.lproj/Nib.strings", "\"Greeting\" = \"Good morning\";\n\"First\" = \"Erstes\";\n");
    open(property("windowTitle", "string", "Greeting") + widget("QLabel", 1, property("text", "string", "Greeting")) +
         widget("QComboBox", 2, "<item>" + property("text", "string", "First") + "</item>") +
         widget("QLabel", 3, property("text", "string", "No such key")));
    EXPECT_EQ(text(control(1)), "Good morning");
    EXPECT_EQ(text(control(3)), "No such key");
    CFStringRef title = nullptr;
    CopyWindowTitleAsCFString(window, &title);
    EXPECT_TRUE(CFEqual(CFRef<CFStringRef>::adopt(title).get(), CFSTR("Good morning")));
}

TEST_F(WindowsTest, BrokenAndMissingNibsAreRefused) {
    IBNibRef nib = nullptr;
    EXPECT_EQ(CreateNibReferenceWithCFBundle(bundle.bundle(), CFSTR("Nothing"), &nib), kNibNotFoundErr);
    bundle.add("Resources/Broken.nib/Window.ui", "<ui version=\"4.0\"><widget class=");
    ASSERT_EQ(CreateNibReferenceWithCFBundle(bundle.bundle(), CFSTR("Broken"), &nib), noErr);
    WindowRef broken = nullptr;
    testing::internal::CaptureStderr();
    EXPECT_EQ(CreateWindowFromNib(nib, CFSTR("Window"), &broken), kNibWindowNotFoundErr);
    EXPECT_EQ(CreateWindowFromNib(nib, CFSTR("Missing"), &broken), kNibWindowNotFoundErr);
    const std::string errors = testing::internal::GetCapturedStderr();
    EXPECT_NE(errors.find("Broken.nib/Window.ui: "), std::string::npos) << errors;
    EXPECT_NE(errors.find("Broken.nib/Missing.ui: "), std::string::npos) << errors;
    DisposeNibReference(nib);
}

TEST_F(WindowsTest, DamagedCompiledNibsAreRefused) {
    std::ifstream file(stagePath("plugins/TavroFeatures.plugin/Contents/Resources/Layout.nib/Layout.window"));
    const std::string whole{std::istreambuf_iterator<char>(file), {}};
    ASSERT_GT(whole.size(), 1000U);
    const auto load = [this](const std::string& content) {
        bundle.add("Resources/Compiled.nib/Window.window", content);
        IBNibRef nib = nullptr;
        EXPECT_EQ(CreateNibReferenceWithCFBundle(bundle.bundle(), CFSTR("Compiled"), &nib), noErr);
        WindowRef made = nullptr;
        const OSStatus status = CreateWindowFromNib(nib, CFSTR("Window"), &made);
        DisposeWindow(made);
        DisposeNibReference(nib);
        return status;
    };
    EXPECT_EQ(load(whole), noErr);
    testing::internal::CaptureStderr();
    for (std::size_t size = 0; size < whole.size(); size += 97) {
        EXPECT_EQ(load(whole.substr(0, size)), kNibWindowNotFoundErr) << size;
    }
    const std::string errors = testing::internal::GetCapturedStderr();
    EXPECT_NE(errors.find("Window.window: it is damaged"), std::string::npos) << errors;
}

TEST_F(WindowsTest, ReturnPressesTheFocusedButtonElseTheDefaultOneAndEscapeCancel) {
    open(buttons() + widget("QLineEdit", 3) + widget("QToolButton", 4, property("command", "string", "tool")) +
         widget("QPushButton", 5, property("command", "string", "push")) + widget("QCheckBox", 6));
    std::vector<OSType> commands;
    const TestHandler handler(GetWindowEventTarget(window), kEventClassCommand, kEventCommandProcess,
                              [&](auto, EventRef event) {
                                  commands.push_back(commandOf(event));
                                  return QuitAppModalLoopForWindow(window);
                              });
    struct Case {
        SInt32 focused;
        Qt::Key key;
        OSType command;
    };
    for (const Case& c :
         {Case{3, Qt::Key_Return, FourCharCode("ok  ")}, Case{2, Qt::Key_Return, FourCharCode("not!")},
          Case{4, Qt::Key_Enter, FourCharCode("tool")}, Case{5, Qt::Key_Enter, FourCharCode("push")},
          Case{6, Qt::Key_Return, FourCharCode("ok  ")}, Case{1, Qt::Key_Escape, FourCharCode("not!")}}) {
        later([&] {
            control(c.focused)->widget->setFocus();
            ControlRef button = nullptr;
            EXPECT_EQ(GetWindowDefaultButton(window, &button), noErr);
            EXPECT_EQ(button, control(1)) << "wherever the focus is";
            EXPECT_EQ(GetWindowCancelButton(window, &button), noErr);
            EXPECT_EQ(button, control(2));
            press(c.key);
        });
        RunAppModalLoopForWindow(window);
        ASSERT_FALSE(commands.empty());
        EXPECT_EQ(FourCharCodeText(commands.back()), FourCharCodeText(c.command)) << c.focused;
    }
    EXPECT_EQ(commands.size(), 6U);
}

TEST_F(WindowsTest, KeysOfTheNibWorkWhereverTheFocusIs) {
    open(widget("QSpinBox", 1) +
         widget("QWidget", 2,
                "<property name=\"keys\" stdset=\"0\"><stringlist><string>next Ctrl+PgDown</string></stringlist>"
                "</property>") +
         widget("QComboBox", 3,
                property("itemKeys", "string", "Ctrl+") + "<item>" + property("text", "string", "One") +
                    "</item><item>" + property("text", "string", "Two") + "</item>"));
    std::vector<std::string> commands;
    const TestHandler handler(GetWindowEventTarget(window), kEventClassCommand, kEventCommandProcess,
                              [&](auto, EventRef event) {
                                  commands.push_back(FourCharCodeText(commandOf(event)));
                                  return noErr;
                              });
    int hits = 0;
    const TestHandler picked(GetControlEventTarget(control(3)), kEventClassControl, kEventControlHit, [&](auto, auto) {
        ++hits;
        return noErr;
    });
    later([&] {
        control(1)->widget->setFocus();
        QWindow* const handle = window->widget->windowHandle();
        QTest::keyClick(handle, Qt::Key_PageDown, Qt::ControlModifier);
        QTest::keyClick(handle, Qt::Key_F1);
        for (const Qt::Key key : {Qt::Key_3, Qt::Key_2}) {
            QTest::keyClick(handle, key, Qt::ControlModifier);
        }
        // What cannot be used takes no keys.
        control(2)->widget->setEnabled(false);
        QTest::keyClick(handle, Qt::Key_PageDown, Qt::ControlModifier);
        QuitAppModalLoopForWindow(window);
    });
    RunAppModalLoopForWindow(window);
    EXPECT_EQ(commands, (std::vector<std::string>{"next", "Thlp"}));
    EXPECT_EQ(hits, 1) << "there is no third item";
    EXPECT_EQ(GetControl32BitValue(control(3)), 2);
}

TEST_F(WindowsTest, ALoopThatNobodyEndsEndsWithEscape) {
    open(widget("QLineEdit", 3));
    int cancels = 0;
    const TestHandler handler(GetWindowEventTarget(window), kEventClassCommand, kEventCommandProcess, [&](auto, auto) {
        ++cancels;
        return eventNotHandledErr;
    });
    later([&] { press(Qt::Key_Escape); });
    RunAppModalLoopForWindow(window);
    EXPECT_EQ(cancels, 1);
    EXPECT_EQ(QuitAppModalLoopForWindow(window), noErr);
    EXPECT_EQ(QuitAppModalLoopForWindow(nullptr), errInvalidWindowRef);
}

/// A notice has no help of its own, nor has every dialog: the one behind them has.
TEST_F(WindowsTest, HelpIsThatOfTheNearestWindow) {
    open(buttons());
    window->widget->setWindowTitle(QStringLiteral("Behind"));
    int helps = 0;
    const TestHandler handler(GetWindowEventTarget(window), kEventClassCommand, kEventCommandProcess,
                              [&](auto, EventRef event) {
                                  helps += commandOf(event) == FourCharCode("Thlp") ? 1 : 0;
                                  return commandOf(event) == FourCharCode("Thlp") ? noErr : eventNotHandledErr;
                              });
    toolboxState().scripted = false;
    later([&] {
        QTimer::singleShot(0, [] {
            QWidget* const notice = QApplication::activeModalWidget();
            EXPECT_EQ(notice->windowTitle(), QStringLiteral("Behind"));
            QTest::keyClick(notice->windowHandle(), Qt::Key_F1);
            QTest::keyClick(notice->windowHandle(), Qt::Key_Escape);
        });
        CFUserNotificationDisplayAlert(0, 0, nullptr, nullptr, nullptr, CFSTR("Really?"), nullptr, nullptr, nullptr,
                                       nullptr, nullptr);
        QuitAppModalLoopForWindow(window);
    });
    RunAppModalLoopForWindow(window);
    toolboxState().scripted = true;
    EXPECT_EQ(helps, 1);
}

TEST_F(WindowsTest, LoopsNestAndSurviveTheirWindow) {
    open(buttons());
    WindowRef inner = nullptr;
    IBNibRef nib = nullptr;
    ASSERT_EQ(CreateNibReferenceWithCFBundle(bundle.bundle(), CFSTR("Nib"), &nib), noErr);
    ASSERT_EQ(CreateWindowFromNib(nib, CFSTR("Window"), &inner), noErr);
    DisposeNibReference(nib);
    bool innerEnded = false;
    OSStatus blocked = noErr;
    later([&] {
        later([&] {
            EXPECT_EQ(FrontNonFloatingWindow(), inner);
            blocked = AutomationClick(control(1));
            DisposeWindow(inner);
        });
        RunAppModalLoopForWindow(inner);
        innerEnded = true;
        EXPECT_FALSE(IsValidWindowPtr(inner));
        EXPECT_EQ(QuitAppModalLoopForWindow(inner), errInvalidWindowRef);
        QuitAppModalLoopForWindow(window);
    });
    RunAppModalLoopForWindow(window);
    EXPECT_TRUE(innerEnded);
    EXPECT_EQ(blocked, kControlNotUsableErr);
}

}  // namespace

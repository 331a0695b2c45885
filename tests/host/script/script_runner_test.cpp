// Scripts on windows of their own.
#include "host/script/control_listing.h"
#include "host/script/runner.h"
#include "host/script/watchdog.h"
#include "platform/toolbox/Menus.h"
#include "platform/toolbox/Notices.h"
#include "platform/toolbox/objects.h"
#include "tests/platform/toolbox/toolbox_fixture.h"

#include <unistd.h>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QVBoxLayout>

namespace {

class ScriptTest : public NibWindowTest {
protected:
    struct End {
        bool failed;
        std::string output;
        std::string errors;
    };

    /// Runs the script on the window, in a modal loop of its own as the print dialog does.
    End run(const std::string& text) {
        std::FILE* output = std::tmpfile();
        End end{};
        testing::internal::CaptureStderr();
        script::Runner runner(script::parse(text), {"test", 60, 3}, {window, {}, output}, [&](bool failed) {
            end.failed = failed;
            QuitAppModalLoopForWindow(window);
        });
        runner.start();
        RunAppModalLoopForWindow(window);
        end.errors = testing::internal::GetCapturedStderr();
        std::rewind(output);
        for (int c = std::fgetc(output); c != EOF; c = std::fgetc(output)) {
            end.output += static_cast<char>(c);
        }
        std::fclose(output);
        return end;
    }

    void expectSuccess(const std::string& text) {
        const End end = run(text);
        EXPECT_FALSE(end.failed);
        EXPECT_EQ(end.errors, "");
        EXPECT_EQ(end.output, "");
    }

    void expectFailure(const std::string& text, const std::string& error) {
        const End end = run(text);
        EXPECT_TRUE(end.failed) << text;
        EXPECT_EQ(end.errors, error + "\n");
    }

    static std::string command(const std::string& code) { return property("command", "string", code); }
};

constexpr const char* kPassword = R"(<property name="echoMode"><enum>QLineEdit::Password</enum></property>)";

}  // namespace

TEST_F(ScriptTest, ActsAndExpects) {
    open(R"(<layout class="QVBoxLayout"><item>)" + widget("QCheckBox", 1) + "</item><item>" +
         widget("QComboBox", 2,
                R"(<item><property name="text"><string>Off</string></property></item>)"
                R"(<item><property name="text"><string>On</string></property></item>)") +
         "</item><item>" + widget("QLineEdit", 3) + "</item><item>" + widget("QSpinBox", 4) + "</item></layout>");
    HideControl(control(4));
    expectSuccess(
        "click Test:1\nexpect Test:1 value 1\n"
        "choose Test:2 On\nexpect Test:2 value 2\nexpect Test:2 text On\nexpect Test:2 items 2\n"
        "set Test:2 1\nexpect Test:2 text Off\n"
        "type Test:3 \"two words\"\nexpect Test:3 text \"two words\"\n"
        "expect Test:4 hidden\nexpect Test:3 visible\nexpect Test:3 enabled");
    expectFailure("expect Test:1 value 1\n\nexpect Test:1 value 0\nclick Test:1",
                  "test:3: Test:1 has the value 1, not 0");
    EXPECT_EQ(GetControl32BitValue(control(1)), 1);  // nothing was done behind the line that failed
    expectFailure("set Test:4 1", "test:1: Test:4 is hidden");
    expectFailure("click Test:5", "test:1: there is no control Test:5");
    expectFailure("choose Test:2 Maybe", "test:1: Test:2 has no item \"Maybe\"");
    DisableControl(control(3));
    expectFailure("type Test:3 x", "test:1: Test:3 is disabled");
    expectFailure("expect Test:3 text other", "test:1: Test:3 has the text \"two words\", not \"other\"");
}

TEST_F(ScriptTest, PicksMenuItemsByTheirMeaning) {
    open(R"(<layout class="QVBoxLayout"><item>)" + widget("QComboBox", 1) + "</item></layout>");
    const MenuRef menu = GetControlPopupMenuHandle(control(1));
    constexpr std::pair<OSType, MenuRefCon> kItems[] = {
        {FourCharCode("Scol"), 24}, {FourCharCode("Styp"), 7}, {FourCharCode("Styp"), 24}};
    for (const auto& [command, reference] : kItems) {
        MenuItemIndex item = 0;
        AppendMenuItemTextWithCFString(menu, CFSTR("Same"), 0, command, &item);
        SetMenuItemRefCon(menu, item, reference);
    }
    expectSuccess("item Test:1 Styp 24\nexpect Test:1 value 3");
    expectFailure("item Test:1 Scol 8", "test:1: Test:1 has no item \"Scol\" with reference value 8");
}

TEST_F(ScriptTest, GoesOnInsideModalDialogs) {
    open(R"(<layout class="QVBoxLayout"><item>)" + widget("QPushButton", 1) + "</item></layout>");
    const WindowRef first = window;
    bundle.addNib("Nib", "Second",
                  property("windowTitle", "string", "Second") + R"(<layout class="QVBoxLayout"><item>)" +
                      widget("QPushButton", 2, command("not!")) + "</item></layout>");
    IBNibRef nib = nullptr;
    ASSERT_EQ(CreateNibReferenceWithCFBundle(bundle.bundle(), CFSTR("Nib"), &nib), noErr);
    WindowRef second = nullptr;
    ASSERT_EQ(CreateWindowFromNib(nib, CFSTR("Second"), &second), noErr);
    DisposeNibReference(nib);
    const TestHandler opener(GetControlEventTarget(control(1)), kEventClassControl, kEventControlHit,
                             [second](EventHandlerCallRef, EventRef) {
                                 RunAppModalLoopForWindow(second);
                                 HideWindow(second);
                                 return noErr;
                             });
    expectSuccess("click Test:1\nexpect window Second\nclick Test:2\nclick Test:1\nclick Test:2");
    expectFailure("click Test:1\nclick Test:1", "test:2: Test:1 is behind another window");
    EXPECT_FALSE(IsWindowVisible(second));
    expectFailure("click Test:1\nexpect Test:2 disabled", "test:2: Test:2 is enabled");
    expectSuccess("click Test:1");  // what is left open is closed
    EXPECT_FALSE(IsWindowVisible(second));
    EXPECT_EQ(window, first);
    DisposeWindow(second);
}

TEST_F(ScriptTest, DrivesWindowsOfOthersByNames) {
    open(property("windowTitle", "string", "Main") + R"(<layout class="QVBoxLayout"><item>)" +
         widget("QPushButton", 1) + "</item><item>" + widget("QPushButton", 2, command("ok  ")) + "</item></layout>");
    QDialog other(window->widget);  // as a module does: it belongs to the window that it was opened from
    other.setWindowTitle(QStringLiteral("Other"));
    QVBoxLayout layout(&other);
    const auto add = [&layout](auto* part, const char* name) {
        part->setObjectName(QLatin1String(name));
        layout.addWidget(part);
        return part;
    };
    auto* text = add(new QLineEdit(QStringLiteral("old")), "text");
    add(new QLineEdit, "secret")->setEchoMode(QLineEdit::Password);
    auto* count = add(new QSpinBox, "count");
    auto* length = add(new QDoubleSpinBox, "length");
    length->setSuffix(QStringLiteral(" mm"));
    auto* kind = add(new QComboBox, "kind");
    kind->addItems({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    qobject_cast<QStandardItemModel*>(kind->model())->item(2)->setEnabled(false);
    add(new QCheckBox(QStringLiteral("&Big")), "big");
    auto* page = new QWidget(&other);
    (new QPushButton(page))->setObjectName(QStringLiteral("away"));
    page->hide();
    add(new QPushButton, "off")->setEnabled(false);
    auto* done = add(new QPushButton, "done");
    done->setDefault(true);
    QObject::connect(done, &QPushButton::clicked, &other, &QDialog::accept);
    int result = -1;
    const TestHandler opener(GetControlEventTarget(control(1)), kEventClassControl, kEventControlHit,
                             [&](EventHandlerCallRef, EventRef) {
                                 result = other.exec();
                                 return noErr;
                             });
    const std::string begin = "click Test:1\n";
    const End end = run(begin +
                        "expect window Other\ntype @text \"two words\"\ntype @secret pass\nset @count 12\n"
                        "type @length 1.25\nchoose @kind b\nclick @big\nexpect @big value 1\n"
                        "expect @length text \"1.25 mm\"\nexpect @kind items 3\nexpect @kind text b\n"
                        "expect @off disabled\nexpect @away hidden\ncontrols\nclick @done\nexpect window Main");
    EXPECT_EQ(end.errors, "");
    EXPECT_EQ(end.output,
              "window \"Other\"\n"
              "  editText @text \"two words\"\n"
              "  passwordText @secret ••••\n"
              "  littleArrows @count value 12 of 0 to 99\n"
              "  editText @length \"1.25 mm\"\n"
              "  popUp @kind value 2 \"b\"\n    1 \"a\"\n    2 \"b\"\n    3 \"c\"\n"
              "  checkBox @big value 1 \"Big\"\n"
              "  pushButton @away (hidden)\n"
              "  pushButton @off (disabled)\n"
              "  pushButton @done\n");
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(text->text(), QStringLiteral("two words"));
    EXPECT_EQ(count->value(), 12);
    EXPECT_EQ(length->value(), 1.25);

    // What nobody can do fails; the window that is left open is closed.
    expectFailure(begin + "click @away", "test:2: @away is hidden");
    EXPECT_EQ(result, QDialog::Rejected);
    expectFailure(begin + "click @off", "test:2: @off is disabled");
    expectFailure(begin + "click Test:1", "test:2: Test:1 is behind another window");
    expectFailure(begin + "ok", "test:2: Test:2 is behind another window");
    expectFailure(begin + "set @count 100", "test:2: @count does not take the value 100");
    expectFailure(begin + "choose @kind c", "test:2: @kind cannot be reached or does not take that");
    expectFailure(begin + "choose @kind d", "test:2: @kind has no item \"d\"");
    expectFailure(begin + "type @big x", "test:2: @big is no field that takes this text");
    expectFailure(begin + "click @gone", "test:2: there is no control @gone");
    expectFailure("click @done", "test:1: there is no control @done");
    EXPECT_EQ(run("controls").output, "window \"Main\"\n  pushButton Test:1\n  pushButton Test:2 command \"ok  \"\n");
}

TEST_F(ScriptTest, AnswersNoticesBeforehand) {
    open(R"(<layout class="QVBoxLayout"><item>)" + widget("QPushButton", 1) + "</item></layout>");
    std::vector<CFOptionFlags> answers;
    const TestHandler asker(
        GetControlEventTarget(control(1)), kEventClassControl, kEventControlHit, [&](EventHandlerCallRef, EventRef) {
            CFUserNotificationDisplayAlert(0, kCFUserNotificationCautionAlertLevel, nullptr, nullptr, nullptr,
                                           CFSTR("Delete?"), CFSTR("For good."), CFSTR("Yes"), CFSTR("No"),
                                           CFSTR("Later"), &answers.emplace_back());
            return noErr;
        });
    const std::string press = "click Test:1\n";
    const End end = run(press + "answer alternate\n" + press + press + "answer other all\nanswer alternate\n" + press +
                        press + press);
    EXPECT_FALSE(end.failed);
    const std::string notice = "notice: Delete?\n        For good.\n";
    EXPECT_EQ(end.output, notice + notice + notice + notice + notice + notice);
    using Answers = std::vector<CFOptionFlags>;
    constexpr CFOptionFlags kYes = kCFUserNotificationDefaultResponse;
    constexpr CFOptionFlags kNo = kCFUserNotificationAlternateResponse;
    constexpr CFOptionFlags kLater = kCFUserNotificationOtherResponse;
    EXPECT_EQ(answers, (Answers{kYes, kNo, kYes, kNo, kLater, kLater}));
}

TEST_F(ScriptTest, SendsCommandsFromTheShownPanel) {
    open(R"(<layout class="QVBoxLayout"><item>)" + widget("QLineEdit", 1) +
         R"(</item><item><widget class="QComboBox"><property name="signature"><string>Tshl</string></property>)"
         R"(<property name="number"><number>16</number></property>)"
         R"(<item><property name="text"><string>First</string></property></item></widget></item><item>)"
         R"(<widget class="QWidget"><property name="signature"><string>TSgb</string></property>)"
         R"(<property name="number"><number>1</number></property><layout class="QVBoxLayout"><item>)" +
         widget("QLineEdit", 2) + "</item></layout></widget></item></layout>");
    std::vector<SInt32> senders;
    const TestHandler listener(GetWindowEventTarget(window), kEventClassCommand, kEventCommandProcess,
                               [&](EventHandlerCallRef, EventRef event) {
                                   HICommand command{};
                                   GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr,
                                                     sizeof command, nullptr, &command);
                                   ControlID id{};
                                   GetControlID(command.control, &id);
                                   senders.push_back(id.id);
                                   return noErr;
                               });
    // From a field beside the panel, the command starts at the panel's pane; from one inside, at that.
    expectSuccess("panel First\ntype Test:1 x\ncommand Bkcr\ntype Test:2 x\ncommand Bkcr");
    EXPECT_EQ(senders, (std::vector<SInt32>{1, 2}));
    expectFailure("panel Second", "test:1: there is no panel \"Second\"");
}

TEST_F(ScriptTest, NeverPrintsAPassword) {
    open(property("windowTitle", "string", "Main") + R"(<layout class="QVBoxLayout"><item>)" +
         widget("QLineEdit", 1, kPassword) + "</item><item>" + widget("QPushButton", 2) + "</item></layout>");
    End end = run("type Test:1 se4cret\nexpect Test:1 text se4cret\ncontrols");
    EXPECT_FALSE(end.failed);
    EXPECT_EQ(end.output, "window \"Main\"\n  passwordText Test:1 ••••\n  pushButton Test:2\n");
    for (const char* line : {"expect Test:1 text se4cre", "type Test:2 se4cret"}) {
        end = run(line);
        EXPECT_TRUE(end.failed) << line;
        EXPECT_EQ((end.output + end.errors).find("se4cre"), std::string::npos) << end.errors;
    }
}

TEST_F(ScriptTest, IsEndedByTheWatchdogWhenALineHangs) {
    EXPECT_EXIT(
        {
            script::startWatchdog(1, "test:1: hangs", 3);
            while (true) {
                pause();
            }
        },
        testing::ExitedWithCode(3), "test:1: hangs");
}

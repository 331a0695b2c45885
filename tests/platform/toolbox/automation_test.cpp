// The hands of a script: they do what a user could do, by the same events, and nothing else.

#include "platform/toolbox/Automation.h"

#include "platform/toolbox/Menus.h"
#include "platform/toolbox/objects.h"
#include "tests/platform/toolbox/toolbox_fixture.h"

#include <QApplication>
#include <QComboBox>
#include <QImage>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <array>
#include <limits>

#include <unistd.h>

namespace {

std::string item(const std::string& text) {
    return "<item><property name=\"text\"><string>" + text + "</string></property></item>";
}

class AutomationTest : public NibWindowTest {
protected:
    void show(const std::string& content) {
        open(rectangle(0, 0, 400, 400) + content);
        ShowWindow(window);
    }

    /// Hits of the control, and the commands that reach its window, as they come.
    void listen(int number) {
        handlers_.push_back(std::make_unique<TestHandler>(
            GetControlEventTarget(control(number)), kEventClassControl, kEventControlHit,
            [this, number](EventHandlerCallRef, EventRef) {
                log += "hit " + std::to_string(GetControl32BitValue(control(number))) + "; ";
                return eventNotHandledErr;
            }));
        if (handlers_.size() == 1) {
            handlers_.push_back(std::make_unique<TestHandler>(GetWindowEventTarget(window), kEventClassCommand,
                                                              kEventCommandProcess,
                                                              [this](EventHandlerCallRef, EventRef event) {
                                                                  log += FourCharCodeText(commandOf(event)) + "; ";
                                                                  return noErr;
                                                              }));
        }
    }
    std::string heard() { return std::exchange(log, {}); }

    OSStatus type(int number, const QString& typed) { return AutomationType(control(number), toCFString(typed).get()); }
    OSStatus choose(int number, MenuItemIndex menuItem) {
        return AutomationChooseMenuItem(control(number), GetControlPopupMenuHandle(control(number)), menuItem);
    }
    void TearDown() override {
        handlers_.clear();
        NibWindowTest::TearDown();
    }

    std::string log;

private:
    std::vector<std::unique_ptr<TestHandler>> handlers_;
};

TEST_F(AutomationTest, ControlsThatAUserCannotReachAreRefused) {
    show(widget("QPushButton", 1, rectangle(0, 0, 80, 30)) +
         widget("QWidget", 2, rectangle(0, 40, 80, 30) + widget("QPushButton", 3, rectangle(0, 0, 80, 30))) +
         widget("QPushButton", 4, rectangle(0, 80, 80, 30)) + widget("QLineEdit", 5, rectangle(0, 120, 80, 30)));
    listen(1);
    listen(3);
    listen(4);
    EXPECT_EQ(AutomationClick(control(1)), noErr);
    EXPECT_EQ(heard(), "hit 0; ");

    DisableControl(control(1));
    EXPECT_EQ(AutomationClick(control(1)), kControlNotUsableErr);
    DisableControl(control(2));
    EXPECT_EQ(AutomationClick(control(3)), kControlNotUsableErr) << "its parent is disabled";
    EnableControl(control(2));
    HideControl(control(2));
    EXPECT_EQ(AutomationClick(control(3)), kControlNotUsableErr) << "its parent is hidden";
    ShowControl(control(2));
    const Rect none{40, 0, 40, 80};
    SetControlBounds(control(2), &none);
    EXPECT_EQ(AutomationClick(control(3)), kControlNotUsableErr) << "there is nothing to click on";
    const Rect over{75, 0, 115, 90};
    SetControlBounds(control(2), &over);
    control(2)->widget->raise();
    EXPECT_EQ(AutomationClick(control(4)), kControlNotUsableErr) << "a pane lies over it";
    DisableControl(control(5));
    EXPECT_EQ(type(5, QStringLiteral("x")), kControlNotUsableErr);
    EXPECT_EQ(text(control(5)), "");
    HideWindow(window);
    EXPECT_EQ(AutomationClick(control(4)), kControlNotUsableErr);
    EXPECT_EQ(AutomationClick(nullptr), paramErr);
    EXPECT_EQ(heard(), "");
}

TEST_F(AutomationTest, WindowsBehindAModalOneAreOutOfReach) {
    TestBundle other("com.example.other");
    other.addNib("Nib", "Window", widget("QPushButton", 1));
    IBNibRef nib = nullptr;
    CreateNibReferenceWithCFBundle(other.bundle(), CFSTR("Nib"), &nib);
    WindowRef modal = nullptr;
    ASSERT_EQ(CreateWindowFromNib(nib, CFSTR("Window"), &modal), noErr);
    DisposeNibReference(nib);
    show(widget("QPushButton", 1, rectangle(0, 0, 80, 30)) + widget("QComboBox", 2, item("a") + item("b")));
    listen(1);
    OSStatus behind = noErr;
    OSStatus value = noErr;
    OSStatus front = paramErr;
    QTimer::singleShot(0, [&] {
        const ControlID id{kTest, 1};
        ControlRef button = nullptr;
        GetControlByID(modal, &id, &button);
        behind = AutomationClick(control(1));
        value = AutomationSetValue(control(2), 2);
        front = AutomationClick(button);
        QuitAppModalLoopForWindow(modal);
    });
    RunAppModalLoopForWindow(modal);
    EXPECT_EQ(behind, kControlNotUsableErr);
    EXPECT_EQ(value, kControlNotUsableErr);
    EXPECT_EQ(front, noErr);
    EXPECT_EQ(heard(), "");
    DisposeWindow(modal);
    EXPECT_EQ(AutomationClick(control(1)), noErr);
}

TEST_F(AutomationTest, IdleTimersFireOncePerPause) {
    show(widget("QPushButton", 1, rectangle(0, 0, 80, 30)));
    int pauses = 0;
    EventLoopTimerRef timer = nullptr;
    ASSERT_EQ(InstallEventLoopIdleTimer(
                  0.02, [](EventLoopTimerRef, void* count) { ++*static_cast<int*>(count); }, &pauses, &timer),
              noErr);
    QTest::qWait(60);
    EXPECT_EQ(pauses, 0);  // nobody has touched anything
    AutomationClick(control(1));
    EXPECT_TRUE(QTest::qWaitFor([&] { return pauses > 0; }));
    QTest::qWait(60);
    EXPECT_EQ(pauses, 1);
    AutomationClick(control(1));
    QMenu menu;
    menu.addAction(QStringLiteral("item"));
    menu.popup({0, 0});
    QTest::qWait(60);
    EXPECT_EQ(pauses, 1) << "a menu is open, which must stay as it is";
    menu.close();
    EXPECT_TRUE(QTest::qWaitFor([&] { return pauses == 2; }));
    AutomationClick(control(1));
    RemoveEventLoopTimer(timer);
    QTest::qWait(60);
    EXPECT_EQ(pauses, 2);
}

TEST_F(AutomationTest, TimersRepeatAtTheirIntervalAndNotAtTheirDelay) {
    int times = 0;
    EventLoopTimerRef timer = nullptr;
    ASSERT_EQ(InstallEventLoopTimer(
                  0, 60, [](EventLoopTimerRef, void* count) { ++*static_cast<int*>(count); }, &times, &timer),
              noErr);
    QTest::qWait(60);
    EXPECT_EQ(times, 1);
    RemoveEventLoopTimer(timer);
}

TEST_F(AutomationTest, DescriptorsAreHeardOfUntilTheyAreRemoved) {
    struct Reader {
        std::string text;
        EventLoopDescriptorRef watch = nullptr;
    } reader;
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    ASSERT_EQ(InstallEventLoopDescriptor(
                  ends[0],
                  [](int descriptor, void* data) {
                      auto& heard = *static_cast<Reader*>(data);
                      char letter = 0;
                      EXPECT_EQ(read(descriptor, &letter, 1), 1);
                      heard.text += letter;
                      if (letter == '.') {
                          RemoveEventLoopDescriptor(heard.watch);
                      }
                  },
                  &reader, &reader.watch),
              noErr);
    EXPECT_EQ(write(ends[1], "ab.c", 4), 4);
    EXPECT_TRUE(QTest::qWaitFor([&] { return reader.text.size() == 3; }));
    QTest::qWait(20);
    EXPECT_EQ(reader.text, "ab.");
    close(ends[0]);
    close(ends[1]);
}

TEST_F(AutomationTest, ValuesChangeByClicksAndKeys) {
    const std::string radios = "<widget class=\"QRadioButton\" name=\"r1\">" + rectangle(0, 0, 150, 20) +
                               "</widget><widget class=\"QRadioButton\" name=\"r2\">" + rectangle(0, 25, 150, 20) +
                               "</widget>";
    show(widget("QCheckBox", 1, rectangle(0, 0, 300, 30)) +
         widget("QWidget", 2, property("kind", "string", "radioGroup") + rectangle(0, 40, 200, 50) + radios) +
         widget("QSlider", 3, rectangle(0, 100, 100, 20) + property("maximum", "number", "9")) +
         widget("QSpinBox", 4, rectangle(0, 130, 100, 30) + property("minimum", "number", "-5")) +
         widget("QTabBar", 5, rectangle(0, 170, 300, 30)) +
         widget("QComboBox", 6, rectangle(0, 210, 100, 30) + item("a") + item("b") + item("c")));
    auto* tabs = qobject_cast<QTabBar*>(control(5)->widget);
    tabs->addTab(QStringLiteral("one"));
    tabs->addTab(QStringLiteral("two"));
    for (int number = 1; number <= 6; ++number) {
        listen(number);
    }
    struct Case {
        int number;
        SInt32 value;
        const char* hits;
    };
    for (const Case& c :
         {Case{1, 1, "hit 1; "}, Case{1, 1, ""}, Case{1, 0, "hit 0; "}, Case{2, 2, "hit 2; "}, Case{2, 1, "hit 1; "},
          Case{3, 2, "hit 1; hit 2; "}, Case{3, 1, "hit 1; "}, Case{4, -2, "hit -1; hit -2; "}, Case{5, 2, "hit 2; "},
          Case{6, 3, "hit 3; "}, Case{6, 1, "hit 1; "}}) {
        SCOPED_TRACE(std::to_string(c.number) + " to " + std::to_string(c.value));
        EXPECT_EQ(AutomationSetValue(control(c.number), c.value), noErr);
        EXPECT_EQ(GetControl32BitValue(control(c.number)), c.value);
        EXPECT_EQ(heard(), c.hits);
    }
    EXPECT_EQ(AutomationSetValue(control(3), 10), paramErr) << "beyond the slider's end";
    EXPECT_EQ(AutomationSetValue(control(1), 2), paramErr);
    EXPECT_EQ(AutomationSetValue(control(2), 3), paramErr);
    EXPECT_EQ(AutomationSetValue(control(5), 3), paramErr);
    for (const SInt32 number : {2, 5, 6}) {
        EXPECT_NE(AutomationSetValue(control(number), std::numeric_limits<SInt32>::min()), noErr) << number;
    }
    EXPECT_EQ(AutomationClick(control(6)), paramErr) << "which item?";
}

TEST_F(AutomationTest, MenuItemsArePickedAndDisabledOnesAreNot) {
    show(widget("QComboBox", 1, rectangle(0, 0, 100, 30)) +
         widget("QToolButton", 2,
                rectangle(0, 40, 100, 30) + property("popupMode", "enum", "QToolButton::InstantPopup")));
    for (const int number : {1, 2}) {
        const MenuRef menu = GetControlPopupMenuHandle(control(number));
        const auto append = [&](CFStringRef name, MenuItemAttributes attributes, OSType command) {
            EXPECT_EQ(AppendMenuItemTextWithCFString(menu, name, attributes, command, nullptr), noErr);
        };
        append(CFSTR("First"), 0, FourCharCode("frst"));
        append(CFSTR("Off"), kMenuItemAttrDisabled, FourCharCode("off "));
        append(CFSTR("-"), kMenuItemAttrSeparator, 0);
        append(CFSTR("Last"), 0, FourCharCode("last"));
    }
    listen(1);
    EXPECT_EQ(choose(1, 4), noErr);
    EXPECT_EQ(heard(), "last; hit 4; ");
    for (const int number : {1, 2}) {
        EXPECT_EQ(choose(number, 2), kControlNotUsableErr);
        EXPECT_EQ(choose(number, 3), kControlNotUsableErr);
        EXPECT_EQ(choose(number, 5), kControlNotUsableErr);
        EXPECT_EQ(choose(number, 0), kControlNotUsableErr);
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr) << "the menu is closed again";
    }
    EXPECT_EQ(heard(), "");
    EXPECT_EQ(GetControl32BitValue(control(1)), 4);
    EXPECT_EQ(choose(2, 4), noErr);
    EXPECT_EQ(choose(2, 1), noErr);
    EXPECT_EQ(heard(), "last; frst; ");
    EXPECT_EQ(AutomationChooseMenuItem(control(2), GetControlPopupMenuHandle(control(1)), 1), paramErr);
}

TEST_F(AutomationTest, ItemsOfSubmenusArePickedByWayOfTheMenu) {
    show(widget("QToolButton", 1,
                rectangle(0, 0, 100, 30) + property("popupMode", "enum", "QToolButton::InstantPopup")));
    const MenuRef menu = GetControlPopupMenuHandle(control(1));
    AppendMenuItemTextWithCFString(menu, CFSTR("Plain"), 0, FourCharCode("plan"), nullptr);
    const auto addSubmenu = [](MenuRef to, CFStringRef name, OSType command) {
        MenuItemIndex item = 0;
        MenuRef submenu = nullptr;
        AppendMenuItemTextWithCFString(to, name, 0, command, &item);
        EXPECT_EQ(CreateNewMenu(0, 0, &submenu), noErr);
        EXPECT_EQ(SetMenuItemHierarchicalMenu(to, item, submenu), noErr);
        ReleaseMenu(submenu);
        return submenu;
    };
    const MenuRef sizes = addSubmenu(menu, CFSTR("Sizes"), FourCharCode("size"));
    const MenuRef colors = addSubmenu(menu, CFSTR("Colors"), 0);
    const MenuRef pale = addSubmenu(colors, CFSTR("Pale"), 0);
    AppendMenuItemTextWithCFString(sizes, CFSTR("A4"), 0, FourCharCode("a4  "), nullptr);
    AppendMenuItemTextWithCFString(pale, CFSTR("Red"), kMenuItemAttrDisabled, FourCharCode("red "), nullptr);
    AppendMenuItemTextWithCFString(pale, CFSTR("Blue"), 0, FourCharCode("blue"), nullptr);

    // The command names the menu that its item stands in, and the control: it is that control's event.
    const TestHandler picked(GetControlEventTarget(control(1)), kEventClassCommand, kEventCommandProcess,
                             [&](EventHandlerCallRef, EventRef event) {
                                 HICommand command{};
                                 GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr,
                                                   sizeof command, nullptr, &command);
                                 EXPECT_EQ(command.control, control(1));
                                 log += FourCharCodeText(command.commandID) + (command.menu == pale ? " pale" : "") +
                                        std::to_string(command.menuItemIndex) + "; ";
                                 return noErr;
                             });
    // Each menu is announced before it opens; what its own handlers do not take reaches the control.
    const TestHandler announced(GetControlEventTarget(control(1)), kEventClassMenu, kEventMenuEnableItems,
                                [&](EventHandlerCallRef, EventRef) {
                                    log += "menu; ";
                                    return noErr;
                                });
    const TestHandler own(GetMenuEventTarget(pale), kEventClassMenu, kEventMenuEnableItems,
                          [&](EventHandlerCallRef, EventRef) {
                              log += "pale; ";
                              EnableMenuItem(pale, 1);
                              return noErr;
                          });
    EXPECT_EQ(AutomationChooseMenuItem(control(1), pale, 2), noErr);
    EXPECT_EQ(heard(), "menu; menu; pale; blue pale2; ");
    EXPECT_EQ(AutomationChooseMenuItem(control(1), pale, 1), noErr) << "enabled by the last call";
    EXPECT_EQ(heard(), "menu; menu; pale; red  pale1; ");
    EXPECT_EQ(AutomationChooseMenuItem(control(1), sizes, 1), noErr);
    EXPECT_EQ(heard(), "menu; menu; a4  1; ");
    EXPECT_EQ(AutomationChooseMenuItem(control(1), menu, 1), noErr);
    EXPECT_EQ(heard(), "menu; plan1; ");

    EXPECT_EQ(AutomationChooseMenuItem(control(1), sizes, 2), kControlNotUsableErr);
    DisableMenuItem(menu, 3);
    EXPECT_EQ(AutomationChooseMenuItem(control(1), pale, 2), kControlNotUsableErr);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr) << "all menus are closed again";
    MenuRef loose = nullptr;
    CreateNewMenu(0, 0, &loose);
    AppendMenuItemTextWithCFString(loose, CFSTR("Nowhere"), 0, 0, nullptr);
    EXPECT_EQ(AutomationChooseMenuItem(control(1), loose, 1), paramErr);
    ReleaseMenu(loose);
}

TEST_F(AutomationTest, TypingReplacesTheTextKeyByKey) {
    show(widget("QLineEdit", 1, rectangle(0, 0, 200, 30)) + widget("QLineEdit", 2, rectangle(0, 40, 200, 30)) +
         widget("QPlainTextEdit", 3, rectangle(0, 80, 200, 100)));
    std::vector<QString> keys;
    const TestHandler handler(GetControlEventTarget(control(1)), kEventClassTextInput,
                              kEventTextInputUnicodeForKeyEvent, [&](EventHandlerCallRef, EventRef event) {
                                  const QString key = eventText(event, kEventParamTextInputSendText);
                                  keys.push_back(key);
                                  return key == QStringLiteral("!") ? noErr : eventNotHandledErr;
                              });
    qobject_cast<QLineEdit*>(control(1)->widget)->setText(QStringLiteral("old"));
    EXPECT_EQ(type(1, QStringLiteral("A1!é😀")), noErr);
    EXPECT_EQ(keys, (std::vector<QString>{QStringLiteral("\x7f"), QStringLiteral("A"), QStringLiteral("1"),
                                          QStringLiteral("!"), QStringLiteral("é"), QStringLiteral("😀")}));
    EXPECT_EQ(text(control(1)), "A1é😀");
    EXPECT_EQ(window->widget->focusWidget(), control(1)->widget);
    EXPECT_EQ(type(1, QString()), noErr);
    EXPECT_EQ(text(control(1)), "");
    EXPECT_EQ(type(1, QStringLiteral("a\nb")), paramErr) << "Return would press a button";
    EXPECT_EQ(type(3, QStringLiteral("a\nb")), noErr);
    EXPECT_EQ(qobject_cast<QPlainTextEdit*>(control(3)->widget)->toPlainText(), QStringLiteral("a\nb"));

    qobject_cast<QLineEdit*>(control(2)->widget)->setReadOnly(true);
    EXPECT_EQ(type(2, QStringLiteral("x")), kControlNotUsableErr);
    EXPECT_EQ(AutomationType(control(1), nullptr), paramErr);
}

TEST_F(AutomationTest, RowsAreSelectedAsTheListAllows) {
    show({});
    auto* const list = new QListWidget(window->widget);
    list->setGeometry(0, 0, 200, 100);
    list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    for (int i = 1; i <= 30; ++i) {
        list->addItem(QStringLiteral("row %1").arg(i));
    }
    list->show();
    (new OpaqueControlRef(list, ControlKind::list))->id = {kTest, 1};
    EXPECT_EQ(AutomationCountRows(control(1)), 30);
    const UInt32 far[] = {1, 30};
    EXPECT_EQ(AutomationSelectRows(control(1), 2, far), noErr);
    EXPECT_EQ(list->selectedItems().size(), 2);
    EXPECT_TRUE(list->item(29)->isSelected());
    const UInt32 middle[] = {2, 1};
    EXPECT_EQ(AutomationSelectRows(control(1), 2, middle), noErr);
    EXPECT_FALSE(list->item(29)->isSelected());
    EXPECT_EQ(AutomationSelectRows(control(1), 0, nullptr), noErr);
    EXPECT_TRUE(list->selectedItems().isEmpty());

    const UInt32 beyond[] = {31};
    EXPECT_EQ(AutomationSelectRows(control(1), 1, beyond), paramErr);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    EXPECT_EQ(AutomationSelectRows(control(1), 2, middle), paramErr) << "only one at a time";
    EXPECT_EQ(AutomationSelectRows(control(1), 1, middle), noErr);
    EXPECT_TRUE(list->item(1)->isSelected());
    EXPECT_EQ(AutomationCountRows(nullptr), 0);
}

TEST_F(AutomationTest, ScrolledOutControlsAreScrolledTo) {
    show(widget("QWidget", 2, rectangle(0, 0, 180, 900) + widget("QPushButton", 1, rectangle(0, 800, 80, 30))));
    auto* const area = new QScrollArea(window->widget);
    area->setGeometry(0, 0, 200, 100);
    area->setWidget(control(2)->widget);
    area->show();
    listen(1);
    EXPECT_EQ(AutomationClick(control(1)), noErr);
    EXPECT_EQ(heard(), "hit 0; ");
}

TEST_F(AutomationTest, HandlersMayCloseTheWindowUnderTheHands) {
    show(widget("QComboBox", 1, item("a") + item("b")));
    const TestHandler handler(GetControlEventTarget(control(1)), kEventClassControl, kEventControlHit,
                              [&](EventHandlerCallRef, EventRef) {
                                  DisposeWindow(std::exchange(window, nullptr));
                                  return noErr;
                              });
    EXPECT_EQ(AutomationSetValue(control(1), 2), noErr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(AutomationTest, SnapshotsAreWhatTheWindowShows) {
    show(widget("QLineEdit", 1, property("echoMode", "enum", "QLineEdit::Password") + rectangle(0, 0, 200, 30)));
    const auto shot = [this](const char* name) {
        const std::string path = bundle.contents() / name;
        const auto file =
            CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, path.c_str(), kCFStringEncodingUTF8));
        const auto url =
            CFRef<CFURLRef>::adopt(CFURLCreateWithFileSystemPath(nullptr, file.get(), kCFURLPOSIXPathStyle, false));
        EXPECT_EQ(AutomationSnapshot(window, url.get()), noErr);
        return QImage(QString::fromStdString(path));
    };
    qobject_cast<QLineEdit*>(control(1)->widget)->setText(QStringLiteral("mmm"));
    const QImage first = shot("1.png");
    qobject_cast<QLineEdit*>(control(1)->widget)->setText(QStringLiteral("iii"));
    EXPECT_EQ(shot("2.png"), first) << "dots tell nothing";
    EXPECT_EQ(first.size(), window->widget->size());
    qobject_cast<QLineEdit*>(control(1)->widget)->setText(QStringLiteral("iiii"));
    EXPECT_NE(shot("3.png"), first);
    EXPECT_EQ(AutomationSnapshot(nullptr, nullptr), paramErr);
}

}  // namespace

// Fields of text: whatever a user does to the text is announced first, and what is refused does not happen.

#include "platform/toolbox/edit_field.h"
#include "platform/toolbox/text_area.h"
#include "tests/platform/toolbox/toolbox_fixture.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>

namespace {

constexpr int kField = 1;
constexpr int kPassword = 2;
constexpr int kArea = 3;

class TextEntryTest : public NibWindowTest {
protected:
    void SetUp() override {
        open(widget("QLineEdit", kField) + widget("QLineEdit", kPassword, property("echoMode", "enum", "Password")) +
             widget("QPlainTextEdit", kArea));
        ShowWindow(window);
    }

    void use(int number) {
        number_ = number;
        listener_ = std::make_unique<TestHandler>(GetControlEventTarget(control(number)), kEventClassTextInput,
                                                  kEventTextInputUnicodeForKeyEvent,
                                                  [this](EventHandlerCallRef, EventRef event) {
                                                      heard.push_back(eventText(event, kEventParamTextInputSendText));
                                                      return refusing ? noErr : eventNotHandledErr;
                                                  });
    }
    void TearDown() override {
        listener_.reset();
        NibWindowTest::TearDown();
    }

    QWidget* field() const { return control(number_)->widget; }
    TextSink& sink() const { return *dynamic_cast<TextSink*>(field()); }
    QString fieldText() const {
        auto* line = qobject_cast<QLineEdit*>(field());
        return line ? line->text() : qobject_cast<QPlainTextEdit*>(field())->toPlainText();
    }
    /// Set by the program, with the cursor at the end.
    void fill(const QString& content) const {
        if (auto* line = qobject_cast<QLineEdit*>(field())) {
            line->setText(content);
        } else {
            qobject_cast<QPlainTextEdit*>(field())->setPlainText(content);
        }
        const auto end = static_cast<SInt32>(content.size());
        sink().setSelection({end, end});
    }

    void press(int key, Qt::KeyboardModifiers modifiers = {}, const QString& typed = {}) const {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, typed);
        QCoreApplication::sendEvent(field(), &event);
    }
    void type(const QString& typed) const { press(Qt::Key_unknown, {}, typed); }
    void paste(const QString& content) const {
        QApplication::clipboard()->setText(content);
        press(Qt::Key_V, Qt::ControlModifier, QStringLiteral("\x16"));
    }
    /// The action that the source hears of.
    Qt::DropAction drop(const QString& content) const {
        auto* area = qobject_cast<QPlainTextEdit*>(field());
        QWidget* target = area ? area->viewport() : field();
        QMimeData data;
        data.setText(content);
        const Qt::DropActions possible = Qt::CopyAction | Qt::MoveAction;
        QDragEnterEvent enter(field()->rect().center(), possible, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(target, &enter);
        QDropEvent event(field()->rect().center(), possible, &data, Qt::LeftButton, {});
        event.setDropAction(Qt::MoveAction);
        QCoreApplication::sendEvent(target, &event);
        return event.dropAction();
    }
    void compose(const QString& preedit, const QString& commit, int from = 0, int length = 0) const {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(commit, from, length);
        QCoreApplication::sendEvent(field(), &event);
    }
    /// Picks the context menu's entry of that position, lines not counted.
    void pickEntry(int position) const {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(2, 2), field()->mapToGlobal(QPoint(2, 2)));
        QCoreApplication::sendEvent(field(), &event);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        QList<QAction*> entries = menu->actions();
        entries.removeIf([](const QAction* entry) { return entry->isSeparator(); });
        entries[position]->trigger();
        menu->close();
    }

    std::vector<QString> heard;
    bool refusing = false;

private:
    int number_ = 0;
    std::unique_ptr<TestHandler> listener_;
};

class AnyEntryTest : public TextEntryTest, public testing::WithParamInterface<int> {
protected:
    void SetUp() override {
        TextEntryTest::SetUp();
        use(GetParam());
    }
};
INSTANTIATE_TEST_SUITE_P(Entries, AnyEntryTest, testing::Values(kField, kArea),
                         [](const auto& i) { return i.param == kField ? "Field" : "Area"; });

struct WayIn {
    const char* name;
    std::function<void()> act;
    std::u16string announced;
    std::u16string result;  // from "one two|" with the cursor at the end
};

TEST_P(AnyEntryTest, EveryChangeIsAnnouncedAndRefusedWhenAHandlerWants) {
    const bool area = GetParam() == kArea;
    const auto key = [this](int code, Qt::KeyboardModifiers modifiers = {}) {
        return [this, code, modifiers] { press(code, modifiers); };
    };
    const auto select = [this](SInt32 from, SInt32 to, std::function<void()> act) {
        return [this, from, to, act] {
            sink().setSelection({from, to});
            act();
        };
    };
    const std::vector<WayIn> ways{
        {"typed", [&] { type(QStringLiteral("x")); }, u"x", u"one twox"},
        {"typed over", select(0, 3, [&] { type(QStringLiteral("x")); }), u"x", u"x two"},
        {"pasted", [&] { paste(QStringLiteral("a\r\nb")); }, area ? u"a\nb" : u"a b",
         area ? u"one twoa\nb" : u"one twoa b"},
        {"pasted by the menu",
         [&] {
             QApplication::clipboard()->setText(QStringLiteral("m"));
             pickEntry(4);
         },
         u"m", u"one twom"},
        {"dropped", [&] { drop(QStringLiteral("d")); }, u"d", u"one twod"},
        {"composed", [&] { compose({}, QStringLiteral("é")); }, u"é", u"one twoé"},
        {"composed anew", [&] { compose({}, QStringLiteral("2"), -3, 3); }, u"2", u"one 2"},
        {"taken back by composing", [&] { compose({}, {}, -4, 4); }, u"\x7f", u"one"},
        {"backspace", key(Qt::Key_Backspace), u"\b", u"one tw"},
        {"shift backspace", key(Qt::Key_Backspace, Qt::ShiftModifier), u"\b", u"one tw"},
        {"delete", select(0, 0, key(Qt::Key_Delete)), u"\x7f", u"ne two"},
        {"deleted by the menu", select(0, 4, [&] { pickEntry(5); }), u"\x7f", u"two"},
        {"cut", select(0, 4, key(Qt::Key_X, Qt::ControlModifier)), u"\x18", u"two"},
        {"cut by the menu", select(0, 4, [&] { pickEntry(2); }), u"\x18", u"two"},
        {"word before", key(Qt::Key_Backspace, Qt::ControlModifier), u"\x17", u"one "},
        {"word after", select(0, 0, key(Qt::Key_Delete, Qt::ControlModifier)), u"\x04", u"two"},
    };
    for (const WayIn& way : ways) {
        for (const bool refused : {false, true}) {
            SCOPED_TRACE(std::string(way.name) + (refused ? ", refused" : ""));
            fill(QStringLiteral("one two"));
            heard.clear();
            refusing = refused;
            way.act();
            EXPECT_EQ(heard, std::vector{QString::fromStdU16String(way.announced)});
            EXPECT_EQ(fieldText(), refused ? QStringLiteral("one two") : QString::fromStdU16String(way.result));
        }
    }
}

TEST_P(AnyEntryTest, UndoAndRedoAreAnnounced) {
    type(QStringLiteral("x"));
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(fieldText(), QString());
    press(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(fieldText(), QStringLiteral("x"));
    pickEntry(0);
    EXPECT_EQ(fieldText(), QString());
    pickEntry(1);
    EXPECT_EQ(heard, (std::vector<QString>{QStringLiteral("x"), QStringLiteral("\x1a"), QStringLiteral("\x19"),
                                           QStringLiteral("\x1a"), QStringLiteral("\x19")}));
    refusing = true;
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(fieldText(), QStringLiteral("x"));
}

TEST_P(AnyEntryTest, HandlerSeesTheNewTextOnceItHasPassedItOn) {
    QString before;
    QString after;
    const TestHandler handler(GetControlEventTarget(control(GetParam())), kEventClassTextInput,
                              kEventTextInputUnicodeForKeyEvent, [&](EventHandlerCallRef next, EventRef event) {
                                  before = fieldText();
                                  const OSStatus status = CallNextEventHandler(next, event);
                                  after = fieldText();
                                  return status;
                              });
    fill(QStringLiteral("1"));
    type(QStringLiteral("2"));
    EXPECT_EQ(before, QStringLiteral("1"));
    EXPECT_EQ(after, QStringLiteral("12"));
    EXPECT_EQ(fieldText(), QStringLiteral("12"));
}

TEST_P(AnyEntryTest, ComposingIsSilentUntilItCommits) {
    fill(QStringLiteral("ab"));
    compose(QStringLiteral("k"), {});
    compose(QStringLiteral("ka"), {});
    EXPECT_TRUE(heard.empty());
    EXPECT_EQ(fieldText(), QStringLiteral("ab"));
    compose({}, QStringLiteral("カ"));
    EXPECT_EQ(fieldText(), QStringLiteral("abカ"));

    // A composition takes the place of the selection, and that is a change by itself.
    heard.clear();
    sink().setSelection({0, 2});
    compose(QStringLiteral("k"), {});
    EXPECT_EQ(heard, std::vector{QStringLiteral("\x7f")});
    EXPECT_EQ(fieldText(), QStringLiteral("カ"));
}

TEST_P(AnyEntryTest, LinesAreKilledByTheirCodesToo) {
    // Only some desktops have keys for these.
    fill(QStringLiteral("one two"));
    sink().setSelection({3, 3});
    sink().takeText(QStringLiteral("\v"));
    EXPECT_EQ(fieldText(), QStringLiteral("one"));
    sink().takeText(QStringLiteral("\x15"));
    EXPECT_EQ(fieldText(), QString());
}

TEST_P(AnyEntryTest, DropsAreCopiesSoThatNothingIsLostWhenRefused) {
    refusing = true;
    EXPECT_EQ(drop(QStringLiteral("d")), Qt::CopyAction);
}

TEST_P(AnyEntryTest, ControlCharactersFromOutsideAreNoActions) {
    fill(QStringLiteral("ab"));
    paste(QStringLiteral("\x18"));
    EXPECT_TRUE(heard.empty());
    paste(QStringLiteral("\b1\x7f"));
    EXPECT_EQ(heard, std::vector{QStringLiteral("1")});
    EXPECT_EQ(fieldText(), QStringLiteral("ab1"));
}

TEST_P(AnyEntryTest, MovingSelectingAndCopyingAreNotAnnounced) {
    fill(QStringLiteral("ab"));
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_C, Qt::ControlModifier, QStringLiteral("\x03"));
    press(Qt::Key_Left);
    press(Qt::Key_Tab, {}, QStringLiteral("\t"));
    press(Qt::Key_Escape, {}, QStringLiteral("\x1b"));
    press(Qt::Key_B, Qt::AltModifier, QStringLiteral("b"));
    EXPECT_TRUE(heard.empty());
    EXPECT_EQ(fieldText(), QStringLiteral("ab"));
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("ab"));

    press(Qt::Key_Q, Qt::ControlModifier | Qt::AltModifier, QStringLiteral("@"));
    EXPECT_EQ(heard, std::vector{QStringLiteral("@")}) << "AltGr types";
}

TEST_P(AnyEntryTest, ReadOnlyTextStays) {
    fill(QStringLiteral("ab"));
    field()->setProperty("readOnly", true);
    type(QStringLiteral("x"));
    paste(QStringLiteral("x"));
    drop(QStringLiteral("x"));
    compose(QStringLiteral("x"), QStringLiteral("x"));
    press(Qt::Key_Backspace);
    press(Qt::Key_X, Qt::ControlModifier);
    EXPECT_TRUE(heard.empty());
    EXPECT_EQ(fieldText(), QStringLiteral("ab"));
}

TEST_F(TextEntryTest, ReturnIsTextInAnAreaAndACommandInAField) {
    use(kField);
    press(Qt::Key_Return, {}, QStringLiteral("\r"));
    EXPECT_TRUE(heard.empty());
    use(kArea);
    press(Qt::Key_Return, {}, QStringLiteral("\r"));
    press(Qt::Key_Return, Qt::ShiftModifier, QStringLiteral("\r"));
    EXPECT_EQ(heard, (std::vector<QString>{QStringLiteral("\n"), QStringLiteral("\n")}));
    EXPECT_EQ(fieldText(), QStringLiteral("\n\n"));
}

TEST_F(TextEntryTest, PasswordsCannotBeTakenOut) {
    use(kPassword);
    EXPECT_EQ(GetControlKind(control(kPassword)), ControlKind::passwordText);
    type(QStringLiteral("secret"));
    QApplication::clipboard()->setText(QStringLiteral("mine"));
    for (const int key : {Qt::Key_C, Qt::Key_X, Qt::Key_K}) {
        sink().setSelection({0, 6});
        press(key, Qt::ControlModifier);
        EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("mine"));
    }
    fill(QStringLiteral("secret"));
    sink().setSelection({0, 6});
    press(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(fieldText(), QStringLiteral("secret"));
}

TEST_P(AnyEntryTest, SelectionsStayInsideTheText) {
    fill(QStringLiteral("abcd"));
    sink().setSelection({1, 32767});
    EXPECT_EQ(sink().selection().selStart, 1);
    EXPECT_EQ(sink().selection().selEnd, 4);
    sink().setSelection({-5, -1});
    EXPECT_EQ(sink().selection().selStart, 0);
    EXPECT_EQ(sink().selection().selEnd, 0);
}

}  // namespace

// What gets into an edit field, on every road that a user has, and the word that the dialog gets of it.

#include "ui/text_input.h"

#include "platform/foundation/CFCharacterSet.h"
#include "tests/panels/plugin_fixture.h"

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QToolTip>
#include <memory>

namespace {

constexpr char kSmile[] = "\xF0\x9F\x98\x80";  // two UTF-16 code units

class TextInputTest : public NibWindowTest {
protected:
    void SetUp() override {
        open("<layout class=\"QVBoxLayout\"><item>" + widget("QLineEdit", 1) + "</item></layout>");
        ShowWindow(window);
        field = control(1);
        SetKeyboardFocus(window, field);
        QCoreApplication::processEvents();
        line = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        ASSERT_NE(line, nullptr);
        toWindow = listen(GetWindowEventTarget(window), "window");
        toField = listen(GetControlEventTarget(field), "field");
    }

    /// Word of changes is written down as "who:kind:text", the text as it is in the field at that moment.
    std::vector<std::unique_ptr<TestHandler>> listen(EventTargetRef target, const std::string& who) {
        std::vector<std::unique_ptr<TestHandler>> handlers;
        for (const UInt32 kind : {kEventInputIsEmpty, kEventInputHasText}) {
            handlers.push_back(
                std::make_unique<TestHandler>(target, kEventClassTextInputChange, kind, [this, who, kind](auto, auto) {
                    words.push_back(who + ":" + FourCharCodeText(kind) + ":" + content());
                    return noErr;
                }));
        }
        return handlers;
    }

    void key(int code, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = {}) {
        QKeyEvent press(QEvent::KeyPress, code, modifiers, text);
        QCoreApplication::sendEvent(line, &press);
    }
    void type(const std::string& text) {
        for (const char c : text) {
            key(0, Qt::NoModifier, QString(QLatin1Char(c)));
        }
    }
    void paste(const std::string& text) {
        QApplication::clipboard()->setText(QString::fromStdString(text));
        key(Qt::Key_V, Qt::ControlModifier, QStringLiteral("\x16"));
    }
    void compose(const std::string& text) {
        QInputMethodEvent commit;
        commit.setCommitString(QString::fromStdString(text));
        QCoreApplication::sendEvent(line, &commit);
    }
    std::string content() const { return line->text().toStdString(); }
    std::vector<std::string> takeWords() { return std::exchange(words, {}); }

    ControlRef field = nullptr;
    QLineEdit* line = nullptr;
    std::vector<std::string> words;
    std::vector<std::unique_ptr<TestHandler>> toWindow;
    std::vector<std::unique_ptr<TestHandler>> toField;
};

using Words = std::vector<std::string>;

TEST_F(TextInputTest, LengthHoldsOnEveryRoadAndTheFieldHearsOfEachChange) {
    LimitInputLength(field, 0);
    type("long text");
    EXPECT_EQ(content(), "long text");
    EXPECT_EQ(takeWords(), Words{});
    line->clear();

    LimitInputLength(field, 9);
    LimitInputLength(field, 3);  // changes the limit; the word still comes once
    type("abcd");
    EXPECT_EQ(takeWords(), (Words{"field:ICso:a", "field:ICso:ab", "field:ICso:abc"}));
    paste("x");
    compose("x");
    EXPECT_EQ(content(), "abc");
    EXPECT_EQ(takeWords(), Words{});
    QCoreApplication::processEvents();
    EXPECT_FALSE(QToolTip::text().isEmpty()) << "the field says why";

    key(Qt::Key_Backspace);
    compose("z");
    EXPECT_EQ(takeWords(), (Words{"field:ICso:ab", "field:ICso:abz"}));
    line->selectAll();
    key(Qt::Key_Delete);
    EXPECT_EQ(takeWords(), Words{"field:ICno:"});
}

TEST_F(TextInputTest, LengthCountsTheTextAfterTheSelectionIsReplaced) {
    LimitInputLength(field, 4);
    line->setText(QStringLiteral("abcd"));
    line->setSelection(1, 2);
    paste("xyz");
    EXPECT_EQ(content(), "abcd");
    paste("xy");
    EXPECT_EQ(content(), "axyd");
    line->selectAll();
    compose("1234");
    EXPECT_EQ(content(), "1234");
}

TEST_F(TextInputTest, NoRoadSplitsASurrogatePair) {
    LimitInputLength(field, 3);
    compose(std::string("ab") + kSmile);
    EXPECT_EQ(content(), "");
    compose(std::string("a") + kSmile);
    EXPECT_EQ(content(), std::string("a") + kSmile);

    line->setText(QString::fromStdString(std::string("ab") + kSmile));
    line->setCursorPosition(1);
    EditTextValidationHandler(field);
    EXPECT_EQ(content(), "ab");
    EXPECT_EQ(line->cursorPosition(), 1);
    line->setText(QString::fromStdString(std::string("a") + kSmile + "b"));
    EditTextValidationHandler(field);
    EXPECT_EQ(content(), std::string("a") + kSmile);
}

TEST_F(TextInputTest, LengthAndCharactersHoldTogetherAndTheWindowHears) {
    const auto set = CFRef<CFCharacterSetRef>::adopt(
        CFCharacterSetCreateWithCharactersInString(nullptr, String(std::string("01-") + kSmile).get()));
    LimitInputLengthAndCharacters(field, 4, set.get());
    type("0a1");
    paste("1x");
    EXPECT_EQ(takeWords(), (Words{"window:ICso:0", "window:ICso:01"}));
    compose(kSmile);
    paste("-");
    EXPECT_EQ(content(), std::string("01") + kSmile);
    line->selectAll();
    key(Qt::Key_X, Qt::ControlModifier, QStringLiteral("\x18"));
    EXPECT_EQ(takeWords().back(), "window:ICno:");

    LimitInputLengthAndCharacters(field, 0, nullptr);
    type("anything goes");
    EXPECT_EQ(content(), "anything goes");
    EXPECT_EQ(takeWords().size(), content().size());
}

TEST_F(TextInputTest, WhatTheSetHasNotIsLeftOutAndTold) {
    const auto set =
        CFRef<CFCharacterSetRef>::adopt(CFCharacterSetCreateWithCharactersInString(nullptr, CFSTR("0123456789S")));
    LimitInputLengthAndCharacters(field, 10, set.get());
    std::vector<std::string> told;
    KeepAllowedInput(
        field,
        [](const RefusedInput& refused, void* list) {
            static_cast<std::vector<std::string>*>(list)->push_back(Text(refused.characters) +
                                                                    (refused.isTooLong ? " too long" : ""));
        },
        &told);
    paste("+49 (0)89S");
    compose(std::string("\u0661") + kSmile);
    type("s");
    EXPECT_EQ(content(), "49089S1");
    paste("2 3 4 5");
    EXPECT_EQ(content(), "49089S1");
    EXPECT_EQ(told, (Words{"+ ()", kSmile, "s", "    too long"}));
    EXPECT_EQ(takeWords().size(), 2U) << "of what was taken";
    LimitInputLengthAndCharacters(field, 10, nullptr);  // gives the set back
}

TEST_F(TextInputTest, AFieldOwnsOneCountOfItsCharacterSet) {
    const auto set = CFRef<CFCharacterSetRef>::adopt(CFCharacterSetCreateWithCharactersInString(nullptr, CFSTR("01")));
    LimitInputLengthAndCharacters(field, 4, set.get());
    LimitInputLengthAndCharacters(field, 5, set.get());
    EXPECT_EQ(CFGetRetainCount(set.get()), 2);
    LimitInputLengthAndCharacters(field, 5, CFCharacterSetGetPredefined(kCFCharacterSetDecimalDigit));
    EXPECT_EQ(CFGetRetainCount(set.get()), 1);
}

TEST_F(TextInputTest, NumericFieldsTakeDigitsAlone) {
    FilterNumericInput(field);
    type("1x2");
    paste("3 4");
    compose("-");
    EXPECT_EQ(content(), "12");
    paste("34");
    EXPECT_EQ(takeWords(), (Words{"window:ICso:1", "window:ICso:12", "window:ICso:1234"}));
    line->selectAll();
    key(Qt::Key_Backspace);
    EXPECT_EQ(takeWords(), Words{"window:ICno:"});
    // A character without a width is neither a digit nor an editing action.
    compose("\xE2\x80\x8B");
    EXPECT_EQ(content(), "");
}

TEST_F(TextInputTest, PageRangeFieldsTakeDigitsCommasDashesAndBlanks) {
    const EventTypeSpec type{kEventClassTextInput, kEventTextInputUnicodeForKeyEvent};
    InstallControlEventHandler(field, PageRangeInputEventHandler, 1, &type, nullptr, nullptr);
    paste("1-3, 7");
    paste("8a");
    compose(";");
    EXPECT_EQ(content(), "1-3, 7");
    EXPECT_EQ(takeWords(), Words{"window:ICso:1-3, 7"});

    EXPECT_TRUE(PageRangeValidateInput(CFSTR("1,\t2 - 10\b")));
    EXPECT_TRUE(PageRangeValidateInput(String("1\u20133\u060C \u0664, \U0001E951").get()));
    EXPECT_FALSE(PageRangeValidateInput(CFSTR("1.5")));
}

}  // namespace

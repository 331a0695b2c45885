// Spin controls as their users meet them: real arrows, fields and sliders of a window, the keys of each locale.

#include "ui/spin_control.h"

#include "platform/toolbox/Automation.h"
#include "tests/panels/plugin_fixture.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QLocale>
#include <QMimeData>
#include <QMouseEvent>
#include <QRegularExpression>
#include <QToolTip>
#include <QWheelEvent>
#include <limits>

namespace {

constexpr SInt32 kField = 1;
constexpr SInt32 kArrows = 2;
constexpr SInt32 kSlider = 3;
constexpr SInt32 kPane = 4;
constexpr SInt32 kButton = 5;
constexpr SInt32 kOtherField = 6;
constexpr char kAngle[] = "\xCB\x9A";

// Names the locale that the environment asks for, in a run for one.
constexpr char kLocaleVariable[] = "TAVRO_TEST_LOCALE";

QString qString(const std::string& text) {
    return QString::fromStdString(text);
}

class SpinTest : public NibWindowTest {
protected:
    void SetUp() override {
        if (!qEnvironmentVariableIsSet(kLocaleVariable)) {
            QLocale::setDefault(QLocale::c());  // whoever runs the tests
        }
        const std::string range = property("minimum", "number", "-100") + property("maximum", "number", "2000");
        open("<layout class=\"QVBoxLayout\"><item>" + widget("QLineEdit", kField) + "</item><item>" +
             widget("LittleArrows", kArrows, range) + "</item><item>" + widget("QSlider", kSlider, range) +
             "</item><item>" +
             widget("QWidget", kPane, property("minimumSize", "size", "<width>9</width><height>9</height>")) +
             "</item><item>" + widget("QPushButton", kButton) + "</item><item>" + widget("QLineEdit", kOtherField) +
             "</item></layout>");
        arrows = control(kArrows);
        field = control(kField);
        slider = control(kSlider);
        tie(kArrows, kSpinControlFieldTag, kField);
        tie(kField, kSpinControlArrowsTag, kArrows);
    }

    void tie(SInt32 number, OSType tag, SInt32 value) const {
        ASSERT_EQ(SetControlProperty(control(number), kSpinControlCreator, tag, sizeof value, &value), noErr);
    }
    void mirror() const {
        tie(kArrows, kSpinControlMirrorTag, kSlider);
        tie(kSlider, kSpinControlArrowsTag, kArrows);
        SetControlAction(slider, NewControlActionUPP(SpinSliderActionProc));
    }
    void create() {
        ASSERT_EQ(CreateSpinControl(arrows), noErr);
        ShowWindow(window);
        focus(kField);
        line = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        ASSERT_NE(line, nullptr);
    }
    void step(SInt32 increment) const {
        ASSERT_EQ(SetControlData(arrows, kControlEntireControl, kControlLittleArrowsIncrementValueTag, sizeof increment,
                                 &increment),
                  noErr);
    }
    void focus(SInt32 number) const {
        SetKeyboardFocus(window, control(number));
        QCoreApplication::processEvents();
    }

    OSStatus set(SInt32 value) const { return SetSpinControlValue(arrows, value, true); }
    SInt32 value() const { return GetControl32BitValue(arrows); }
    bool isValid() const { return SpinControlIsInputValid(arrows); }
    std::string shown() const { return line->text().toStdString(); }

    void key(int code, const QString& typed = {}, Qt::KeyboardModifiers modifiers = {}) const {
        QKeyEvent press(QEvent::KeyPress, code, modifiers, typed);
        QCoreApplication::sendEvent(line, &press);
    }
    /// Replaces the text, key by key.
    void type(const std::string& typed) const {
        line->selectAll();
        key(Qt::Key_Delete);
        for (const QChar c : qString(typed)) {
            key(0, c);
        }
    }
    void paste(const std::string& pasted) const {
        QApplication::clipboard()->setText(qString(pasted));
        key(Qt::Key_V, QStringLiteral("\x16"), Qt::ControlModifier);
    }
    void compose(const std::string& text) const {
        QInputMethodEvent commit;
        commit.setCommitString(qString(text));
        QCoreApplication::sendEvent(line, &commit);
    }
    void drop(const std::string& text) const {
        QMimeData data;
        data.setText(qString(text));
        QDragEnterEvent enter(line->rect().center(), Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(line, &enter);
        QDropEvent event(line->rect().center(), Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(line, &event);
    }
    void turnWheel(int angle) const {
        QWheelEvent event(line->rect().center(), line->mapToGlobal(line->rect().center()), {}, {0, angle}, {}, {},
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(line, &event);
    }
    static int beepsOf(const std::function<void()>& act) {
        const UInt32 before = AutomationCountBeeps();
        act();
        return static_cast<int>(AutomationCountBeeps() - before);
    }

    PluginBundle plugin;
    ControlRef arrows = nullptr;
    ControlRef field = nullptr;
    ControlRef slider = nullptr;
    QLineEdit* line = nullptr;
};

TEST_F(SpinTest, NeedsItsFieldAndSaysWhatIsMissing) {
    EXPECT_EQ(CreateSpinControl(nullptr), paramErr);
    EXPECT_EQ(SetSpinControlValue(nullptr, 1, false), paramErr);
    EXPECT_TRUE(SpinControlIsInputValid(arrows));
    EXPECT_TRUE(SpinControlIsInputValid(nullptr));
    SpinControlValidate(nullptr);
    tie(kArrows, kSpinControlFieldTag, 99);
    EXPECT_EQ(CreateSpinControl(arrows), errUnknownControl);
    RemoveControlProperty(arrows, kSpinControlCreator, kSpinControlFieldTag);
    EXPECT_EQ(CreateSpinControl(arrows), controlPropertyNotFoundErr);
    // Arrows without a field hold a value all the same.
    EXPECT_EQ(set(7), noErr);
    EXPECT_EQ(value(), 7);
}

TEST_F(SpinTest, ShowsValuesWithDecimalsAndSuffixAndReadsThemBack) {
    create();
    const struct {
        SInt32 decimals, angle, percent, value;
        std::string text;
    } rows[] = {
        {0, 0, 0, -5, "-5"},
        {0, 0, 1, 50, "50%"},
        {2, 0, 0, 850, "8.50"},
        {1, 0, 1, 7, "0.7%"},
        {2, 0, 0, -1, "-0.01"},
        {0, 1, 0, 45, std::string("45") + kAngle + '\0'},
        {0, 1, 1, 0, std::string("0") + kAngle + '\0'},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        tie(kArrows, kSpinControlDecimalsTag, row.decimals);
        tie(kArrows, kSpinControlAngleTag, row.angle);
        tie(kArrows, kSpinControlPercentTag, row.percent);
        EXPECT_EQ(set(row.value), noErr);
        EXPECT_EQ(shown(), row.text);
        // An edit that changes nothing: the suffix is no part of the number.
        SetControl32BitValue(arrows, 1);
        SpinControlValidate(field);
        EXPECT_EQ(value(), row.value);
        EXPECT_TRUE(isValid());
        line->setText(line->text().remove(QRegularExpression(QStringLiteral("[0-9.-]"))));
        SpinControlValidate(field);
        EXPECT_EQ(value(), 0) << "no digits are no text";
    }
}

TEST_F(SpinTest, WhatIsTypedIsReadKeyByKeyAndStaysUntilTheFieldIsLeft) {
    tie(kArrows, kSpinControlDecimalsTag, 2);
    create();
    set(100);
    type("8.5");
    EXPECT_EQ(value(), 850);
    EXPECT_EQ(shown(), "8.5");
    focus(kOtherField);
    EXPECT_EQ(shown(), "8.50");

    // text, value, valid: the value of 1.00 stays when the text is none
    const struct {
        const char* text;
        SInt32 value;
        bool valid;
    } rows[] = {
        {"", 0, true},
        {"-", 100, false},
        {".", 100, false},
        {"8.", 800, true},
        {".5", 50, true},
        {"8.299", 829, true},
        {"-0.999", -99, true},
        {"20", 2000, true},
        {"20.01", 100, false},
        {"-1.01", 100, false},
        {"1-2", 100, false},
        {"1.2.3", 100, false},
        {"--1", 100, false},
        {"99999999999999999999", 100, false},
        {"42949673", 100, false},
    };
    focus(kField);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        set(100);
        line->clear();
        paste(row.text);
        if (!*row.text) {
            SpinControlValidate(field);
        }
        EXPECT_EQ(value(), row.value);
        EXPECT_EQ(isValid(), row.valid);
        EXPECT_EQ(shown(), row.text);
    }
    focus(kOtherField);
    EXPECT_EQ(shown(), "1.00");
    EXPECT_TRUE(isValid());

    tie(kArrows, kSpinControlDecimalsTag, 0);
    focus(kField);
    type("12");
    EXPECT_EQ(value(), 12);
    type("7.5");
    EXPECT_EQ(value(), 7) << "kept from before the point";
    EXPECT_FALSE(isValid());
}

TEST_F(SpinTest, TypingBeyondTheRangeKeepsTheLastValueInIt) {
    create();
    set(10);
    type("2001");
    EXPECT_EQ(value(), 200) << "2001 begins with it";
    EXPECT_FALSE(isValid());
    set(10);
    line->selectAll();
    compose("2001");
    EXPECT_EQ(value(), 10);
    EXPECT_FALSE(isValid());
    key(Qt::Key_Backspace);
    EXPECT_EQ(value(), 200);
    EXPECT_TRUE(isValid());
}

TEST_F(SpinTest, NoRoadBringsOtherCharactersIn) {
    create();
    set(12);
    const std::function<void(const std::string&)> roads[] = {
        [this](const std::string& text) { key(0, qString(text)); },
        [this](const std::string& text) { paste(text); },
        [this](const std::string& text) { compose(text); },
        [this](const std::string& text) { drop(text); },
    };
    for (const auto& road : roads) {
        for (const char* refused : {"x", "3x", "%", " ", ",", "+", "e"}) {
            SCOPED_TRACE(refused);
            EXPECT_EQ(beepsOf([&] { road(refused); }), 1);
            EXPECT_EQ(shown(), "12");
        }
        line->selectAll();
        EXPECT_EQ(beepsOf([&] { road("34"); }), 0);
        EXPECT_NE(shown().find("34"), std::string::npos);
        set(12);
    }
    const std::u16string control = u"\b\x7F";
    const std::u16string mixed = u"1\b";
    EXPECT_TRUE(SpinControlValidateInput(control.data(), 2));
    EXPECT_FALSE(SpinControlValidateInput(mixed.data(), 2));
    EXPECT_TRUE(SpinControlValidateInput(mixed.data(), 0));
}

TEST_F(SpinTest, ArrowsKeysAndWheelStepToTheEndsAndBeepThere) {
    tie(kArrows, kSpinControlDecimalsTag, 2);
    create();
    step(30);
    set(1960);
    const std::function<void(bool)> roads[] = {
        [this](bool up) {
            HIViewSimulateClick(arrows, up ? kControlUpButtonPart : kControlDownButtonPart, 0, nullptr);
        },
        [this](bool up) { key(up ? Qt::Key_Up : Qt::Key_Down); },
        [this](bool up) { turnWheel(up ? 120 : -120); },
    };
    for (const auto& road : roads) {
        set(1960);
        EXPECT_EQ(beepsOf([&] { road(true); }), 0);
        EXPECT_EQ(shown(), "19.90");
        EXPECT_EQ(beepsOf([&] { road(true); }), 0);
        EXPECT_EQ(shown(), "20.00") << "the last step is shorter";
        EXPECT_EQ(beepsOf([&] { road(true); }), 1);
        EXPECT_EQ(value(), 2000);
        set(-80);
        road(false);
        EXPECT_EQ(shown(), "-1.00");
        EXPECT_EQ(beepsOf([&] { road(false); }), 1);
        EXPECT_EQ(value(), -100);
    }
    line->selectAll();
    compose("-");
    EXPECT_FALSE(isValid());
    key(Qt::Key_Up);
    EXPECT_EQ(shown(), "-0.70") << "a step goes from the value, whatever stands in the field";
    EXPECT_TRUE(isValid());

    turnWheel(50);
    turnWheel(50);
    EXPECT_EQ(value(), -70);
    turnWheel(50);
    EXPECT_EQ(value(), -40) << "three parts of a notch and more";
    focus(kOtherField);
    turnWheel(120);
    EXPECT_EQ(value(), -40) << "the wheel passes over fields without the focus";
    DisableControl(arrows);
    focus(kField);
    key(Qt::Key_Up);
    EXPECT_EQ(value(), -40);

    EnableControl(arrows);
    SetControl32BitMinimum(arrows, std::numeric_limits<SInt32>::min());
    SetControl32BitMaximum(arrows, std::numeric_limits<SInt32>::max());
    set(std::numeric_limits<SInt32>::max() - 1);
    key(Qt::Key_Up);
    EXPECT_EQ(value(), std::numeric_limits<SInt32>::max());
    set(std::numeric_limits<SInt32>::min() + 1);
    key(Qt::Key_Down);
    EXPECT_EQ(value(), std::numeric_limits<SInt32>::min());
}

TEST_F(SpinTest, OnlyTheUsersLeavingCanonizesTheText) {
    tie(kArrows, kSpinControlDecimalsTag, 2);
    create();
    set(100);
    type("99");
    const auto stillThere = [&] { return shown() == "99" && !isValid(); };
    QString whenPressed;
    TestHandler pressed(GetControlEventTarget(control(kButton)), kEventClassControl, kEventControlHit, [&](auto, auto) {
        whenPressed = line->text();
        return noErr;
    });
    ASSERT_EQ(AutomationClick(control(kButton)), noErr);
    EXPECT_EQ(whenPressed, QStringLiteral("99")) << "OK must see that the input is invalid";
    EXPECT_TRUE(stillThere());
    for (const Qt::FocusReason reason : {Qt::PopupFocusReason, Qt::ActiveWindowFocusReason, Qt::MenuBarFocusReason}) {
        for (const QEvent::Type kind : {QEvent::FocusOut, QEvent::FocusIn}) {
            QFocusEvent event(kind, reason);
            QCoreApplication::sendEvent(line, &event);
            EXPECT_TRUE(stillThere()) << reason;
        }
    }
    HIViewSimulateClick(control(kArrows), kControlUpButtonPart, 0, nullptr);
    EXPECT_EQ(QApplication::focusWidget(), line);
    type("99");
    key(Qt::Key_Tab);
    focus(kOtherField);
    EXPECT_EQ(shown(), "9.00") << "the last value in range on the way to 99";
    EXPECT_TRUE(isValid());
    QCoreApplication::processEvents();
    EXPECT_EQ(QToolTip::text(), QStringLiteral("This can be -1.00 to 20.00. It is 9.00 now."));

    // The field says it while it is typed, and takes what is copied from a page.
    const QWidget* const fieldWidget = line;
    EXPECT_EQ(fieldWidget->accessibleDescription(), QStringLiteral("-1.00 to 20.00"));
    focus(kField);
    type("99");
    EXPECT_EQ(fieldWidget->accessibleDescription(), QStringLiteral("Type -1.00 to 20.00."));
    line->selectAll();
    type("\u00A0\uFF11\uFF12 ");
    EXPECT_TRUE(isValid());
    EXPECT_EQ(GetControl32BitValue(arrows), 1200);
}

TEST_F(SpinTest, MirrorsAndRedrawsFollowEachRoadAndTheSliderLeads) {
    tie(kArrows, kSpinControlRedrawTag, kPane);
    mirror();
    create();
    int drawn = 0;
    TestHandler draw(GetControlEventTarget(control(kPane)), kEventClassControl, kEventControlDraw, [&](auto, auto) {
        ++drawn;
        return noErr;
    });
    const auto redraws = [&](const std::function<void()>& act) {
        QCoreApplication::processEvents();
        drawn = 0;
        act();
        QCoreApplication::processEvents();
        return drawn > 0;
    };
    EXPECT_TRUE(redraws([&] { set(500); }));
    EXPECT_EQ(GetControl32BitValue(slider), 500);
    EXPECT_TRUE(redraws([&] { type("7"); }));
    EXPECT_EQ(GetControl32BitValue(slider), 7);
    EXPECT_TRUE(redraws([&] { key(Qt::Key_Up); }));
    EXPECT_EQ(GetControl32BitValue(slider), 8);
    EXPECT_EQ(AutomationSetValue(slider, 10), noErr);
    EXPECT_EQ(value(), 10);
    EXPECT_EQ(shown(), "10");

    // A slider with a longer way than the arrows.
    SetControl32BitMaximum(arrows, 11);
    EXPECT_EQ(beepsOf([&] { EXPECT_EQ(set(12), paramErr); }), 1);
    EXPECT_EQ(value(), 11);
    EXPECT_EQ(shown(), "10");
    EXPECT_FALSE(isValid());
    EXPECT_EQ(set(11), noErr);
    EXPECT_TRUE(isValid());
}

TEST_F(SpinTest, AssistiveTechnologiesReachTheValue) {
    create();
    set(5);
    QAccessibleInterface* accessible =
        QAccessible::queryAccessibleInterface(line->window()->findChild<QWidget*>(QStringLiteral("w2")));
    ASSERT_NE(accessible, nullptr);
    QAccessibleValueInterface* access = accessible->valueInterface();
    ASSERT_NE(access, nullptr);
    EXPECT_EQ(access->currentValue().toInt(), 5);
    EXPECT_EQ(access->maximumValue().toInt(), 2000);
    access->setCurrentValue(12);
    EXPECT_EQ(shown(), "12");
}

TEST_F(SpinTest, ScriptsTakeTheUsersRoad) {
    tie(kArrows, kSpinControlDecimalsTag, 1);
    create();
    set(0);
    SInt32 hits = 0;
    TestHandler hit(GetControlEventTarget(arrows), kEventClassControl, kEventControlHit, [&](auto, auto) {
        ++hits;
        return noErr;
    });
    EXPECT_EQ(AutomationSetValue(arrows, 25), noErr);
    EXPECT_EQ(shown(), "2.5");
    EXPECT_EQ(hits, 25);
    EXPECT_EQ(AutomationSetValue(arrows, 2001), paramErr);
    EXPECT_EQ(AutomationType(field, CFSTR("7.25")), noErr);
    EXPECT_EQ(value(), 72);
    EXPECT_EQ(shown(), "7.25");
    step(10);
    EXPECT_EQ(AutomationSetValue(arrows, 75), paramErr) << "no number of steps leads there";
    DisableControl(arrows);
    EXPECT_EQ(AutomationSetValue(arrows, 85), kControlNotUsableErr);
}

// ---- Each locale: run by CTest once a locale, since a process has one

class SpinLocale : public SpinTest {
protected:
    /// A number as people of the locale write it, by its digits.
    static std::string written(SInt32 number, int decimals) {
        const QLocale locale;
        QString digits = QString::number(std::abs(number)).rightJustified(decimals + 1, u'0');
        for (QChar& digit : digits) {
            digit = QChar(locale.zeroDigit().front().unicode() + digit.digitValue());
        }
        if (decimals > 0) {
            digits.insert(digits.size() - decimals, locale.decimalPoint());
        }
        return ((number < 0 ? locale.negativeSign() : QString()) + digits).toStdString();
    }

    void checkRange(SInt32 first, SInt32 last, SInt32 decimals) {
        tie(kArrows, kSpinControlDecimalsTag, decimals);
        SetControl32BitMinimum(arrows, first);
        SetControl32BitMaximum(arrows, last);
        for (SInt32 number = first; number <= last; ++number) {
            ASSERT_EQ(set(number), noErr);
            ASSERT_EQ(shown(), written(number, decimals));
            // What is shown is read as the same value, and so is what is typed.
            SetControl32BitValue(arrows, number == first ? last : first);
            SpinControlValidate(field);
            ASSERT_EQ(value(), number) << shown();
            SetControl32BitValue(arrows, number == first ? last : first);
            line->selectAll();
            compose(number < 0 ? "-" + written(-number, decimals) : written(number, decimals));
            ASSERT_EQ(value(), number) << shown();
            ASSERT_TRUE(isValid());
        }
    }
};

TEST_F(SpinLocale, EveryValueIsWrittenAndReadInTheUsersNotation) {
    if (qEnvironmentVariableIsSet(kLocaleVariable)) {
        ASSERT_EQ(QLocale().name(), qEnvironmentVariable(kLocaleVariable));
    }
    create();
    checkRange(-250, 250, 0);
    checkRange(100, 2000, 2);  // hundredths of an inch
    checkRange(254, 5080, 1);  // tenths of a millimetre
    checkRange(-120, 120, 2);
}

TEST_F(SpinLocale, AnyDecimalSignAndAnyDigitsAreTaken) {
    tie(kArrows, kSpinControlDecimalsTag, 2);
    create();
    const std::string point = QLocale().decimalPoint().toStdString();
    const std::string foreign = point == "," ? "." : ",";
    type("8" + point + "29");
    EXPECT_EQ(value(), 829);
    type("\xD9\xA8" + point + "\xD9\xA2\xD9\xA9");  // Arabic digits
    EXPECT_EQ(value(), 829);
    type("-0" + point + "5");
    EXPECT_EQ(value(), -50);
    EXPECT_EQ(beepsOf([&] { type("8" + foreign + "5"); }), 0);
    EXPECT_EQ(value(), 850);
    paste("1" + foreign + "2" + point + "3");
    EXPECT_FALSE(isValid()) << shown();
    EXPECT_FALSE(SpinControlValidateInput(foreign == "." ? u"." : u",", 1)) << "it is read as the other one";
    // A direction mark that a keyboard or another program brings along.
    set(1);
    type(
        "\xE2\x80\x8F"
        "7");
    EXPECT_EQ(value(), 700);
    EXPECT_TRUE(isValid());
}

}  // namespace

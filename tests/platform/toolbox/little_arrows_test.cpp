// Little arrows: what a press does, and the word that a field gives of keys, wheel and focus.

#include "platform/toolbox/little_arrows.h"

#include "platform/toolbox/Automation.h"
#include "platform/toolbox/objects.h"
#include "tests/platform/toolbox/toolbox_fixture.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QProxyStyle>
#include <QWheelEvent>

namespace {

constexpr int kArrows = 1;
constexpr int kNumberField = 2;
constexpr int kSlider = 3;

class LittleArrowsTest : public NibWindowTest {
protected:
    void SetUp() override {
        open("<layout class=\"QVBoxLayout\"><item>" +
             widget("LittleArrows", kArrows,
                    property("minimum", "number", "-5") + property("maximum", "number", "20") +
                        property("singleStep", "number", "2")) +
             "</item><item>" + widget("QLineEdit", kNumberField) + "</item><item>" + widget("QSlider", kSlider) +
             "</item></layout>");
        ShowWindow(window);
        QCoreApplication::processEvents();
        arrows = control(kArrows);
        widget_ = dynamic_cast<LittleArrows*>(arrows->widget);
        ASSERT_NE(widget_, nullptr);
        parts().clear();
    }

    void mouse(QEvent::Type type, QPoint place, Qt::MouseButton button = Qt::LeftButton) const {
        QMouseEvent event(type, place, widget_->mapToGlobal(place), button,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : button, {});
        QCoreApplication::sendEvent(widget_, &event);
    }
    void click(ControlPartCode part) const {
        mouse(QEvent::MouseButtonPress, middle(part));
        mouse(QEvent::MouseButtonRelease, middle(part));
    }
    QPoint middle(ControlPartCode part) const { return widget_->partRect(part).center(); }
    SInt32 value() const { return GetControl32BitValue(arrows); }
    static void waitUntil(const std::function<bool()>& done, int limit) {
        QElapsedTimer timer;
        timer.start();
        while (!done() && timer.elapsed() < limit) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        }
    }

    /// Parts that an action procedure was called with.
    static std::vector<ControlPartCode>& parts() {
        static std::vector<ControlPartCode> called;
        return called;
    }
    static void note(ControlRef, ControlPartCode part) { parts().push_back(part); }

    ControlRef arrows = nullptr;
    LittleArrows* widget_ = nullptr;
};

/// Repeats start at once.
class ImpatientStyle final : public QProxyStyle {
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override {
        return hint == SH_SpinBox_ClickAutoRepeatThreshold ? 1 : QProxyStyle::styleHint(hint, option, widget, data);
    }
};

TEST_F(LittleArrowsTest, AreAControlOfTheirOwnWithAnIncrement) {
    EXPECT_EQ(GetControlKind(arrows), ControlKind::littleArrows);
    EXPECT_EQ(GetControl32BitMinimum(arrows), -5);
    EXPECT_EQ(GetControl32BitMaximum(arrows), 20);
    SetControl32BitValue(arrows, 21);
    EXPECT_EQ(value(), 20);
    const auto setIncrement = [this](ControlRef of, SInt32 increment, ByteCount size = sizeof(SInt32)) {
        return SetControlData(of, kControlEntireControl, kControlLittleArrowsIncrementValueTag, size, &increment);
    };
    EXPECT_EQ(setIncrement(arrows, 4), noErr);
    EXPECT_EQ(setIncrement(arrows, 0), paramErr);
    EXPECT_EQ(setIncrement(arrows, 4, 2), paramErr);
    EXPECT_EQ(setIncrement(control(kNumberField), 4), errDataNotSupported);
    SInt32 increment = 0;
    EXPECT_EQ(GetControlData(arrows, kControlEntireControl, kControlLittleArrowsIncrementValueTag, sizeof increment,
                             &increment, nullptr),
              noErr);
    EXPECT_EQ(increment, 4);
    EXPECT_EQ(HIViewSimulateClick(nullptr, kControlUpButtonPart, 0, nullptr), controlHandleInvalidErr);
    EXPECT_EQ(HIViewSimulateClick(arrows, 19, 0, nullptr), paramErr);
    EXPECT_EQ(HIViewSimulateClick(control(kNumberField), kControlUpButtonPart, 0, nullptr), paramErr);
    DisableControl(arrows);
    ControlPartCode clicked = 1;
    EXPECT_EQ(HIViewSimulateClick(arrows, kControlDownButtonPart, 0, &clicked), noErr);
    EXPECT_EQ(clicked, 0);
    EXPECT_EQ(value(), 20);
}

TEST_F(LittleArrowsTest, AClickStepsOnceTellsTheHandlersAndLeavesTheFocus) {
    SetKeyboardFocus(window, control(kNumberField));
    std::vector<SInt32> hits;
    TestHandler hit(GetControlEventTarget(arrows), kEventClassControl, kEventControlHit, [&](auto, auto) {
        hits.push_back(value());
        return noErr;
    });
    click(kControlUpButtonPart);
    click(kControlUpButtonPart);
    click(kControlDownButtonPart);
    mouse(QEvent::MouseButtonPress, middle(kControlUpButtonPart), Qt::RightButton);
    SetControl32BitValue(arrows, 19);
    click(kControlUpButtonPart);
    EXPECT_EQ(hits, (std::vector<SInt32>{2, 4, 2, 20}));
    EXPECT_EQ(GetControlOwner(arrows), window);
    ControlRef focused = nullptr;
    GetKeyboardFocus(window, &focused);
    EXPECT_EQ(focused, control(kNumberField));

    SetControlAction(arrows, NewControlActionUPP(note));
    click(kControlUpButtonPart);
    click(kControlDownButtonPart);
    EXPECT_EQ(parts(), (std::vector<ControlPartCode>{kControlUpButtonPart, kControlDownButtonPart}));
    EXPECT_EQ(value(), 20) << "the action moves the value, nobody else";
    EXPECT_EQ(hits.size(), 6U);

    SetControlAction(control(kSlider), NewControlActionUPP(note));
    SetControl32BitValue(control(kSlider), 3);
    EXPECT_EQ(parts().size(), 2U) << "what the program sets calls no action";
    EXPECT_EQ(AutomationSetValue(control(kSlider), 4), noErr);
    EXPECT_EQ(parts().back(), kControlIndicatorPart);
}

TEST_F(LittleArrowsTest, HoldingRepeatsWhileTheMouseIsOnTheHalf) {
    ImpatientStyle style;
    widget_->setStyle(&style);
    SetControlAction(arrows, NewControlActionUPP(note));
    mouse(QEvent::MouseButtonPress, middle(kControlUpButtonPart));
    waitUntil([] { return parts().size() >= 4; }, 5000);
    EXPECT_GE(parts().size(), 4U);
    mouse(QEvent::MouseMove, middle(kControlDownButtonPart));
    const std::size_t moved = parts().size();
    waitUntil([] { return false; }, 150);
    EXPECT_EQ(parts().size(), moved);
    mouse(QEvent::MouseMove, middle(kControlUpButtonPart));
    waitUntil([&] { return parts().size() > moved; }, 5000);
    EXPECT_GT(parts().size(), moved);
    for (const auto& end :
         {std::function<void()>([this] { mouse(QEvent::MouseButtonRelease, middle(kControlUpButtonPart)); }),
          std::function<void()>([this] { DisableControl(arrows); }), std::function<void()>([this] {
              EnableControl(arrows);
              mouse(QEvent::MouseButtonPress, middle(kControlUpButtonPart));
              HideControl(arrows);
          })}) {
        end();
        const std::size_t ended = parts().size();
        waitUntil([] { return false; }, 150);
        EXPECT_EQ(parts().size(), ended);
        ShowControl(arrows);
        mouse(QEvent::MouseButtonPress, middle(kControlUpButtonPart));
    }
    EXPECT_TRUE(std::ranges::all_of(parts(), [](ControlPartCode part) { return part == kControlUpButtonPart; }));
    widget_->setStyle(nullptr);
}

TEST_F(LittleArrowsTest, AnActionMayDisposeOfItsWindow) {
    static WindowRef doomed;
    doomed = window;
    SetControlAction(arrows, [](ControlRef, ControlPartCode) { DisposeWindow(std::exchange(doomed, nullptr)); });
    mouse(QEvent::MouseButtonPress, middle(kControlUpButtonPart));
    EXPECT_FALSE(IsValidWindowPtr(window));
    QCoreApplication::processEvents();
    window = nullptr;
}

TEST_F(LittleArrowsTest, AFieldTellsOfArrowKeysWheelAndFocus) {
    ControlRef field = control(kNumberField);
    std::string log;
    bool taking = true;
    const auto answer = [&] { return taking ? OSStatus{noErr} : OSStatus{eventNotHandledErr}; };
    TestHandler keys(GetControlEventTarget(field), kEventClassKeyboard, kEventRawKeyDown, [&](auto, EventRef event) {
        const QString key = eventText(event, kEventParamKeyUnicodes);
        log += key == QString(QChar(kUpArrowCharCode))     ? "up "
               : key == QString(QChar(kDownArrowCharCode)) ? "down "
                                                           : "?";
        return answer();
    });
    TestHandler wheel(GetControlEventTarget(field), kEventClassMouse, kEventMouseWheelMoved, [&](auto, EventRef event) {
        SInt32 delta = 0;
        GetEventParameter(event, kEventParamMouseWheelDelta, typeSInt32, nullptr, sizeof delta, nullptr, &delta);
        log += "wheel " + std::to_string(delta) + " ";
        return answer();
    });
    TestHandler focus(
        GetControlEventTarget(field), kEventClassControl, kEventControlSetFocusPart, [&](auto, EventRef event) {
            ControlPartCode part = -1;
            GetEventParameter(event, kEventParamControlPart, typeControlPartCode, nullptr, sizeof part, nullptr, &part);
            log += "focus " + std::to_string(part) + " ";
            return eventNotHandledErr;
        });
    const auto heard = [&log] { return std::exchange(log, {}); };
    const auto turn = [&](int angle) {
        const QPoint place = field->widget->rect().center();
        QWheelEvent event(place, field->widget->mapToGlobal(place), {}, {0, angle}, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(field->widget, &event);
        return event.isAccepted();
    };
    const auto press = [&](int key, Qt::KeyboardModifiers modifiers = {}) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        QCoreApplication::sendEvent(field->widget, &event);
    };
    SetKeyboardFocus(window, control(kSlider));
    heard();
    EXPECT_FALSE(turn(120));
    EXPECT_EQ(heard(), "") << "no focus, no wheel";
    SetKeyboardFocus(window, field);
    QCoreApplication::processEvents();
    EXPECT_EQ(heard(), "focus 5 ");
    press(Qt::Key_Up);
    press(Qt::Key_Down, Qt::KeypadModifier);
    press(Qt::Key_Up, Qt::ShiftModifier);
    press(Qt::Key_PageUp);
    EXPECT_EQ(heard(), "up down ");
    EXPECT_TRUE(turn(240));
    EXPECT_TRUE(turn(-60));
    EXPECT_TRUE(turn(-60));
    EXPECT_EQ(heard(), "wheel 1 wheel 1 wheel -1 ");
    taking = false;
    EXPECT_FALSE(turn(120)) << "what nobody takes scrolls what lies behind";
    heard();
    SetKeyboardFocus(window, control(kSlider));
    EXPECT_EQ(heard(), "focus 0 ");
}

}  // namespace

#include "tests/support/gallery/accessibility.h"

#include "host/script/quoted.h"
#include "platform/toolbox/objects.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTabBar>
#include <algorithm>

namespace {

template <typename... Kinds>
bool isAnyOf(const QWidget* widget) {
    return ((qobject_cast<const Kinds*>(widget) != nullptr) || ...);
}

/// Whether people do something with it; parts of another control are not meant.
bool isControl(const QWidget* widget) {
    if (widget->isWindow() || isAnyOf<QScrollBar, QTabWidget>(widget)) {
        return false;
    }
    if (isAnyOf<QAbstractItemView, QAbstractSpinBox, QComboBox, QTabBar, QPlainTextEdit>(widget->parentWidget())) {
        return false;
    }
    return (widget->focusPolicy() & Qt::TabFocus) != 0 ||
           isAnyOf<QAbstractButton, QComboBox, QLineEdit, QPlainTextEdit, QAbstractItemView, QAbstractSpinBox,
                   QAbstractSlider, QTabBar>(widget);
}

std::string textOf(const QWidget* widget, QAccessible::Text kind) {
    QAccessibleInterface* const interface = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(widget));
    return interface == nullptr ? std::string() : interface->text(kind).trimmed().toStdString();
}

std::string describe(const QWidget* widget) {
    const std::string name = textOf(widget, QAccessible::Name);
    return std::string(widget->metaObject()->className()) + " " + widget->objectName().toStdString() +
           (name.empty() ? "" : " " + quoted(name));
}

/// Little arrows belong to a field that takes the arrow keys itself.
bool isArrowsOfField(const QWidget* widget) {
    return isAnyOf<QAbstractSlider>(widget) && !isAnyOf<QSlider>(widget);
}

bool isReachable(const QWidget* widget) {
    if (const auto* radio = qobject_cast<const QRadioButton*>(widget); radio != nullptr && radio->autoExclusive()) {
        return true;  // by the arrow keys of its group
    }
    return (widget->focusPolicy() & Qt::TabFocus) != 0 || isArrowsOfField(widget);
}

QRect placeOf(const QWidget* widget) {
    return {widget->mapTo(widget->window(), QPoint()), widget->size()};
}

/// Whether somebody who reads would look at `second` before `first`: it is above it in the same column, or to its left
/// on the same line; to its right, where words run from there.
bool comesBefore(const QRect& second, const QRect& first) {
    const bool sharesColumn = second.left() <= first.right() && first.left() <= second.right();
    const bool sharesLine = second.top() <= first.center().y() && first.center().y() <= second.bottom();
    const bool isAhead = QApplication::isRightToLeft() ? second.left() > first.right() : second.right() < first.left();
    return (sharesColumn && second.bottom() < first.top()) || (sharesLine && isAhead);
}

std::vector<QWidget*> shownControls(const QWidget* window) {
    std::vector<QWidget*> controls;
    for (QWidget* widget : window->findChildren<QWidget*>()) {
        if (widget->isVisible() && isControl(widget)) {
            controls.push_back(widget);
        }
    }
    return controls;
}

void addOrderFaults(QWidget* window, std::vector<std::string>* lines) {
    const QWidget* before = nullptr;
    QWidget* step = window;
    do {
        step = step->nextInFocusChain();
        const bool isStop = step->isVisible() && isControl(step) && (step->focusPolicy() & Qt::TabFocus) != 0 &&
                            !isAnyOf<QRadioButton>(step);
        if (!isStop) {
            continue;
        }
        // A pane and what lies in it are one place.
        if (before != nullptr && !before->isAncestorOf(step) && comesBefore(placeOf(step), placeOf(before))) {
            lines->push_back("fault: the Tab key goes back from " + describe(before) + " to " + describe(step));
        }
        before = step;
    } while (step != window);
}

/// Whether all of it lies in what it lies in; what scrolls shows it.
bool isInSight(const QWidget* widget) {
    for (const QWidget* around = widget->parentWidget(); around != nullptr; around = around->parentWidget()) {
        if (isAnyOf<QScrollArea>(around)) {
            return true;
        }
        if (!around->rect().contains({widget->mapTo(around, QPoint()), widget->size()})) {
            return false;
        }
    }
    return true;
}

bool hasRoomForWords(const QWidget* widget) {
    if (const auto* popUp = qobject_cast<const QComboBox*>(widget)) {
        QStyleOptionComboBox option;
        option.initFrom(popUp);
        const QRect field =
            popUp->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, popUp);
        return popUp->fontMetrics().horizontalAdvance(popUp->currentText()) <= field.width();
    }
    const auto* const label = qobject_cast<const QLabel*>(widget);
    const bool hasLine = (label != nullptr && !label->wordWrap()) || isAnyOf<QAbstractButton>(widget);
    return !hasLine || widget->width() >= std::min(widget->minimumSizeHint().width(), widget->maximumWidth());
}

void addPlaceFaults(const QWidget* window, std::vector<std::string>* lines) {
    const std::vector<QWidget*> controls = shownControls(window);
    for (const QWidget* widget : window->findChildren<QWidget*>()) {
        const bool isPart =
            isAnyOf<QAbstractScrollArea, QAbstractSpinBox, QComboBox, QLineEdit>(widget->parentWidget());
        if (widget->isVisible() && !isPart && !(isInSight(widget) && hasRoomForWords(widget))) {
            lines->push_back("fault: cut off: " + describe(widget));
        }
    }
    for (auto one = controls.begin(); one != controls.end(); ++one) {
        for (auto other = one + 1; other != controls.end(); ++other) {
            if (!(*one)->isAncestorOf(*other) && placeOf(*one).intersects(placeOf(*other))) {
                lines->push_back("fault: " + describe(*one) + " lies over " + describe(*other));
            }
        }
    }
}

/// A dialog begins where something is typed or chosen, not at a button that ends it. The gallery's own window, with a
/// panel in it, is none.
void addFocusFaults(const QWidget* window, std::vector<std::string>* lines) {
    const auto ends = [](const QWidget* widget) {
        const OSType command = GetControlCommandID(OpaqueControlRef::of(widget));
        return command == FourCharCode("ok  ") || command == FourCharCode("not!") || command == FourCharCode("Thlp");
    };
    const auto isChoice = [&](const QWidget* control) {
        return control->isEnabled() && isReachable(control) && !ends(control);
    };
    const QWidget* const focused = window->focusWidget();
    const bool isWell = focused != nullptr && focused->isEnabled() &&
                        (!ends(focused) || std::ranges::none_of(shownControls(window), isChoice));
    if (!isWell && window->findChild<QWidget*>("pieces") == nullptr) {
        lines->push_back("fault: no field has the focus");
    }
}

QString shownText(const QWidget* widget) {
    if (const auto* label = qobject_cast<const QLabel*>(widget)) {
        return label->buddy() != nullptr && label->buddy()->isVisible() ? label->text() : QString();
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
        return button->text();
    }
    const auto* group = qobject_cast<const QGroupBox*>(widget);
    return group != nullptr ? group->title() : QString();
}

std::string letters(const QWidget* window) {
    std::string letters;
    const auto add = [&](const QString& text) {
        const QKeySequence key = QKeySequence::mnemonic(text);
        if (const char letter = key.isEmpty() ? '\0' : key.toString().back().toLower().toLatin1(); letter != '\0') {
            letters += letter;  // those of other scripts are looked at in the tables
        }
    };
    for (const QWidget* widget : window->findChildren<QWidget*>()) {
        if (!widget->isVisible()) {
            continue;
        }
        add(shownText(widget));
        if (const auto* tabs = qobject_cast<const QTabBar*>(widget)) {
            for (int i = 0; i < tabs->count(); ++i) {
                add(tabs->tabText(i));
            }
        }
    }
    std::ranges::sort(letters);
    return letters;
}

}  // namespace

std::vector<std::string> auditFrontWindow() {
    QWidget* const modal = QApplication::activeModalWidget();
    QWidget* const window = modal != nullptr ? modal : QApplication::activeWindow();
    std::vector<std::string> lines;
    if (window == nullptr) {
        return {"fault: there is no window"};
    }
    for (const QWidget* control : shownControls(window)) {
        if (textOf(control, QAccessible::Name).empty()) {
            lines.push_back("fault: no name: " + describe(control));
        }
        if (!isReachable(control)) {
            lines.push_back("fault: keys do not reach " + describe(control));
        }
    }
    addOrderFaults(window, &lines);
    addPlaceFaults(window, &lines);
    addFocusFaults(window, &lines);
    lines.push_back("keys: " + letters(window));
    return lines;
}

// The values of controls: read from their widgets, in the platform's own meaning.

#include "platform/toolbox/Controls.h"
#include "platform/toolbox/objects.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QProgressBar>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <algorithm>

namespace {

QList<QRadioButton*> radioButtons(const QWidget* group) {
    return group->findChildren<QRadioButton*>(Qt::FindDirectChildrenOnly);
}

int checkedRadio(const QWidget* group) {
    const QList<QRadioButton*> buttons = radioButtons(group);
    const auto checked = std::find_if(buttons.begin(), buttons.end(), [](QRadioButton* b) { return b->isChecked(); });
    return checked == buttons.end() ? 0 : static_cast<int>(checked - buttons.begin()) + 1;
}

void checkRadio(const QWidget* group, int value) {
    const QList<QRadioButton*> buttons = radioButtons(group);
    if (value >= 1) {
        buttons[value - 1]->setChecked(true);
        return;
    }
    // Exclusive buttons keep one checked; only without the rule can the last check mark go.
    for (QRadioButton* button : buttons) {
        button->setAutoExclusive(false);
        button->setChecked(false);
        button->setAutoExclusive(true);
    }
}

/// One way to reach the value and the range of each kind.
struct Range {
    int minimum = 0;
    int maximum = 0;
};

Range rangeOf(const OpaqueControlRef& control) {
    QWidget* widget = control.widget;
    switch (control.kind) {
        case ControlKind::checkBox:
        case ControlKind::radioButton:
            return {0, 1};
        case ControlKind::radioGroup:
            return {0, static_cast<int>(radioButtons(widget).size())};
        case ControlKind::popUp:
            return {0, qobject_cast<QComboBox*>(widget)->count()};
        case ControlKind::slider:
        case ControlKind::littleArrows:
            if (const auto* spinBox = qobject_cast<const QSpinBox*>(widget)) {
                return {spinBox->minimum(), spinBox->maximum()};
            }
            return {qobject_cast<QAbstractSlider*>(widget)->minimum(),
                    qobject_cast<QAbstractSlider*>(widget)->maximum()};
        case ControlKind::progressBar:
            return {qobject_cast<QProgressBar*>(widget)->minimum(), qobject_cast<QProgressBar*>(widget)->maximum()};
        case ControlKind::tabs:
            return {1, qobject_cast<QTabWidget*>(widget) != nullptr ? qobject_cast<QTabWidget*>(widget)->count()
                                                                    : qobject_cast<QTabBar*>(widget)->count()};
        default:
            return {};
    }
}

template <typename Limit>
void setLimit(ControlRef control, Limit set) {
    if (control == nullptr) {
        return;
    }
    const QSignalBlocker programmatic(control->widget);
    if (auto* slider = qobject_cast<QAbstractSlider*>(control->widget)) {
        set(*slider);
    } else if (auto* spinBox = qobject_cast<QSpinBox*>(control->widget)) {
        set(*spinBox);
    } else if (auto* bar = qobject_cast<QProgressBar*>(control->widget)) {
        set(*bar);
    }
}

void setTabCount(QTabBar* tabs, int count) {
    const QSignalBlocker programmatic(tabs);
    while (tabs->count() < count) {
        tabs->addTab(QString());
    }
    while (tabs->count() > std::max(count, 0)) {
        tabs->removeTab(tabs->count() - 1);
    }
}

}  // namespace

ControlKind GetControlKind(ControlRef control) {
    return control != nullptr ? control->kind : ControlKind::userPane;
}

SInt32 GetControl32BitValue(ControlRef control) {
    if (control == nullptr) {
        return 0;
    }
    QWidget* widget = control->widget;
    switch (control->kind) {
        case ControlKind::checkBox:
        case ControlKind::radioButton:
            return qobject_cast<QAbstractButton*>(widget)->isChecked() ? 1 : 0;
        case ControlKind::radioGroup:
            return checkedRadio(widget);
        case ControlKind::popUp:
            return qobject_cast<QComboBox*>(widget)->currentIndex() + 1;
        case ControlKind::slider:
        case ControlKind::littleArrows:
            if (const auto* spinBox = qobject_cast<const QSpinBox*>(widget)) {
                return spinBox->value();
            }
            return qobject_cast<QAbstractSlider*>(widget)->value();
        case ControlKind::progressBar:
            return qobject_cast<QProgressBar*>(widget)->value();
        case ControlKind::tabs:
            return (qobject_cast<QTabWidget*>(widget) != nullptr ? qobject_cast<QTabWidget*>(widget)->currentIndex()
                                                                 : qobject_cast<QTabBar*>(widget)->currentIndex()) +
                   1;
        default:
            return 0;
    }
}

void SetControl32BitValue(ControlRef control, SInt32 value) {
    if (control == nullptr) {
        return;
    }
    QWidget* widget = control->widget;
    const Range range = rangeOf(*control);
    value = std::clamp(value, range.minimum, std::max(range.minimum, range.maximum));
    // What the program sets makes no event. A tab widget must hear its own tab bar, so its control is not told instead.
    const QSignalBlocker programmatic(widget);
    switch (control->kind) {
        case ControlKind::checkBox:
        case ControlKind::radioButton:
            qobject_cast<QAbstractButton*>(widget)->setChecked(value != 0);
            break;
        case ControlKind::radioGroup:
            checkRadio(widget, value);
            break;
        case ControlKind::popUp:
            qobject_cast<QComboBox*>(widget)->setCurrentIndex(value - 1);
            break;
        case ControlKind::slider:
        case ControlKind::littleArrows:
            if (auto* spinBox = qobject_cast<QSpinBox*>(widget)) {
                spinBox->setValue(value);
            } else {
                qobject_cast<QAbstractSlider*>(widget)->setValue(value);
            }
            break;
        case ControlKind::progressBar:
            qobject_cast<QProgressBar*>(widget)->setValue(value);
            break;
        case ControlKind::tabs:
            if (auto* pages = qobject_cast<QTabWidget*>(widget)) {
                pages->setCurrentIndex(value - 1);
            } else {
                qobject_cast<QTabBar*>(widget)->setCurrentIndex(value - 1);
            }
            break;
        default:
            break;
    }
}

SInt32 GetControl32BitMinimum(ControlRef control) {
    return control != nullptr ? rangeOf(*control).minimum : 0;
}

void SetControl32BitMinimum(ControlRef control, SInt32 minimum) {
    setLimit(control, [minimum](auto& widget) { widget.setMinimum(minimum); });
}

SInt32 GetControl32BitMaximum(ControlRef control) {
    return control != nullptr ? rangeOf(*control).maximum : 0;
}

void SetControl32BitMaximum(ControlRef control, SInt32 maximum) {
    if (auto* tabs = control != nullptr ? qobject_cast<QTabBar*>(control->widget) : nullptr) {
        setTabCount(tabs, maximum);
        return;
    }
    setLimit(control, [maximum](auto& widget) { widget.setMaximum(maximum); });
}

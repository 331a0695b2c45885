#include "platform/toolbox/wheel.h"

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QScrollBar>
#include <QTabBar>
#include <QWheelEvent>

namespace {

bool hasValue(const QWidget* widget) {
    const bool isSlider = qobject_cast<const QAbstractSlider*>(widget) && !qobject_cast<const QScrollBar*>(widget);
    return isSlider || qobject_cast<const QComboBox*>(widget) || qobject_cast<const QAbstractSpinBox*>(widget) ||
           qobject_cast<const QTabBar*>(widget);
}

class WheelRule final : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Wheel && event->type() != QEvent::Polish) {
            return false;
        }
        auto* widget = qobject_cast<QWidget*>(watched);
        if (widget == nullptr) {
            return false;
        }
        if (event->type() == QEvent::Polish) {
            if (widget->focusPolicy() == Qt::WheelFocus) {
                widget->setFocusPolicy(Qt::StrongFocus);
            }
            return false;
        }
        if (widget->hasFocus() || !hasValue(widget)) {
            return false;
        }
        event->ignore();  // so that it goes on to the widget behind
        return true;
    }
};

}  // namespace

void restrictWheelToFocus(QApplication* application) {
    application->installEventFilter(new WheelRule(application));
}

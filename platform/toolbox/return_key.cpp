#include "platform/toolbox/return_key.h"

#include <QApplication>
#include <QToolButton>

namespace {

class ReturnRule final : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress || !isReturn(static_cast<const QKeyEvent&>(*event))) {
            return false;
        }
        auto* button = qobject_cast<QToolButton*>(watched);
        if (button == nullptr) {
            return false;
        }
        button->click();
        return true;
    }
};

}  // namespace

void letReturnPressToolButtons(QApplication* application) {
    application->installEventFilter(new ReturnRule(application));
}

#include "platform/toolbox/plain_labels.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>

namespace {

class PlainRule final : public QObject {
public:
    using QObject::QObject;

    // A label is polished before its size is asked for, and that of a tool tip before it gets its text.
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Polish) {
            auto* label = qobject_cast<QLabel*>(watched);
            if (label != nullptr && label->textFormat() == Qt::AutoText) {
                label->setTextFormat(Qt::PlainText);
            }
        }
        return false;
    }
};

}  // namespace

void keepLabelsPlain(QApplication* application) {
    application->installEventFilter(new PlainRule(application));
}

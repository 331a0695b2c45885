// What a field says of what may stand in it.

#include "platform/toolbox/objects.h"

#include <QAccessible>
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>

namespace {

constexpr const char* kMark = "faultMark";  // the icon's action
constexpr const char* kHint = "hint";       // what the nib says
constexpr int kLeastWidthForMark = 100;

/// The label that the nib has for the field's messages; null for none.
QLabel* labelOf(const QWidget* field) {
    for (QLabel* label : field->window()->findChildren<QLabel*>()) {
        if (label->property("messageOf").toString() == field->objectName()) {
            return label;
        }
    }
    return nullptr;
}

void mark(QLineEdit* field, bool isFault) {
    auto* const shown = field->findChild<QAction*>(QLatin1String(kMark));
    if (isFault && shown == nullptr && field->width() >= kLeastWidthForMark) {
        const QIcon icon = field->style()->standardIcon(QStyle::SP_MessageBoxWarning);
        field->addAction(icon, QLineEdit::TrailingPosition)->setObjectName(QLatin1String(kMark));
    } else if (!isFault) {
        delete shown;
    }
}

}  // namespace

OSStatus HIViewSetFieldMessage(ControlRef field, CFStringRef message, Boolean isFault) {
    if (field == nullptr) {
        return controlHandleInvalidErr;
    }
    QWidget* const widget = field->widget;
    QLabel* const label = labelOf(widget);
    QString text = toQString(message);
    if (label != nullptr) {
        if (!label->property(kHint).isValid()) {
            label->setProperty(kHint, label->text());
        }
        text = message != nullptr ? text : label->property(kHint).toString();
        label->setText(text);
    }
    const bool isNew = widget->accessibleDescription() != text;
    widget->setToolTip(text);
    widget->setAccessibleDescription(text);
    widget->setProperty("fault", static_cast<bool>(isFault));
    if (auto* const line = qobject_cast<QLineEdit*>(widget)) {
        mark(line, isFault);
    }
    widget->update();
    if (isFault && isNew) {
        QAccessibleEvent alert(widget, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
    return noErr;
}

#include "platform/toolbox/alerts.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <QStyle>
#include <QToolButton>

namespace {

QString behind(const QString& alert, const QString& text) {
    return alert.isEmpty() || text.isEmpty() ? alert + text : alert + u'\n' + text;
}

void showHelp(const OpaqueControlRef& control) {
    control.widget->setToolTip(behind(control.alert, control.help.tip));
    control.widget->setAccessibleDescription(behind(control.alert, control.help.description));
}

/// A button with a picture of its own keeps that alone.
void showSign(QAbstractButton* button, bool isShown) {
    const bool hasSign = button->icon().cacheKey() == alertSign().cacheKey();
    if (hasSign == isShown || (isShown && !button->icon().isNull())) {
        return;
    }
    button->setIcon(isShown ? alertSign() : QIcon());
    if (auto* const toolButton = qobject_cast<QToolButton*>(button)) {
        const bool hasText = isShown && !button->text().isEmpty();
        toolButton->setToolButtonStyle(hasText ? Qt::ToolButtonTextBesideIcon : Qt::ToolButtonIconOnly);
    }
}

}  // namespace

const QIcon& alertSign() {
    static const QIcon sign = QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning);
    return sign;
}

void setHelp(OpaqueControlRef& control, const ControlHelp& help) {
    control.help = help;
    showHelp(control);
}

OSStatus SetControlAlert(ControlRef control, CFStringRef reason) {
    if (control == nullptr) {
        return controlHandleInvalidErr;
    }
    const QString alert = toQString(reason);
    if (alert == control->alert) {
        return noErr;
    }
    if (control->alert.isEmpty()) {
        control->help = {control->widget->toolTip(), control->widget->accessibleDescription()};
    }
    control->alert = alert;
    showHelp(*control);
    if (auto* const button = qobject_cast<QAbstractButton*>(control->widget)) {
        showSign(button, !alert.isEmpty());
    } else if (control->menu) {
        control->widget->update();  // the sign stands in the item that it shows
    }
    return noErr;
}

OSStatus AnnounceControl(ControlRef text) {
    auto* const label = text == nullptr ? nullptr : qobject_cast<QLabel*>(text->widget);
    if (label == nullptr) {
        return controlHandleInvalidErr;
    }
    QAccessibleEvent alert(label, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
    return noErr;
}

// Windows that somebody else made of widgets of their own, as scripts see them.

#include "platform/toolbox/Automation.h"

#include "platform/toolbox/nib_loader.h"
#include "platform/toolbox/objects.h"

#include <QAbstractSpinBox>
#include <QApplication>

namespace {

bool isQtsOwn(const QWidget* widget) {
    return widget->objectName().startsWith(QLatin1String("qt_"));
}

void adopt(QWidget* widget) {
    const ControlKind kind = kindOfClass(widget);
    const bool isNumber = kind == ControlKind::userPane && qobject_cast<const QAbstractSpinBox*>(widget) != nullptr;
    new OpaqueControlRef(widget, isNumber ? ControlKind::editText : kind, ControlOrigin::adopted);
}

}  // namespace

void AutomationAdoptFrontWindow() {
    QWidget* modal = QApplication::activeModalWidget();
    const OpaqueControlRef* root = OpaqueControlRef::of(modal);
    if (modal == nullptr || (root != nullptr && root->origin != ControlOrigin::adopted)) {
        return;
    }
    if (root == nullptr) {
        new OpaqueWindowRef(modal);
        new OpaqueControlRef(modal, ControlKind::userPane, ControlOrigin::adopted);
    }
    for (QWidget* widget : modal->findChildren<QWidget*>()) {
        if (widget->window() == modal && !widget->objectName().isEmpty() && !isQtsOwn(widget) &&
            OpaqueControlRef::of(widget) == nullptr) {
            adopt(widget);
        }
    }
}

CFStringRef AutomationCopyControlName(ControlRef control) {
    const bool isNamed = control != nullptr && control->origin == ControlOrigin::adopted;
    return isNamed ? toCFString(control->widget->objectName()).leak() : nullptr;
}

OSStatus AutomationFindControl(WindowRef window, CFStringRef name, ControlRef* control) {
    if (!IsValidWindowPtr(window) || control == nullptr) {
        return paramErr;
    }
    for (const QWidget* widget : window->widget->findChildren<QWidget*>(toQString(name))) {
        OpaqueControlRef* found = OpaqueControlRef::of(widget);
        const bool isOwn = widget->window() == window->widget;  // not of a window in front of it
        if (isOwn && found != nullptr && found->origin == ControlOrigin::adopted) {
            *control = found;
            return noErr;
        }
    }
    return errUnknownControl;
}

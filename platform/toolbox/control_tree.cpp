// Where controls are: found by signature and number, in a tree, at a place in their window.

#include "platform/toolbox/Controls.h"
#include "platform/toolbox/layout.h"
#include "platform/toolbox/objects.h"
#include "platform/toolbox/tab_order.h"
#include "platform/toolbox/view_widget.h"

#include <algorithm>
#include <utility>

namespace {

bool matches(const OpaqueControlRef& control, ControlID id) {
    return control.id.id == id.id &&
           (control.id.signature == id.signature || control.secondSignature == id.signature) && id.signature != 0;
}

/// A widget's child as a widget of the same window, or null.
QWidget* inSameWindow(QObject* child) {
    auto* widget = child->isWidgetType() ? static_cast<QWidget*>(child) : nullptr;
    return widget != nullptr && !widget->isWindow() ? widget : nullptr;
}

/// The first control below a widget, itself included, that has the identity. Parents come before their children.
OpaqueControlRef* find(QWidget* root, ControlID id) {
    if (OpaqueControlRef* control = OpaqueControlRef::of(root); control != nullptr && matches(*control, id)) {
        return control;
    }
    for (QObject* child : root->children()) {
        QWidget* const widget = inSameWindow(child);
        if (OpaqueControlRef* control = widget != nullptr ? find(widget, id) : nullptr) {
            return control;
        }
    }
    return nullptr;
}

/// The nearest controls below a widget, in the order of its children.
void collectChildren(const QWidget* parent, std::vector<OpaqueControlRef*>& children) {
    for (QObject* child : parent->children()) {
        QWidget* const widget = inSameWindow(child);
        if (OpaqueControlRef* control = widget != nullptr ? OpaqueControlRef::of(widget) : nullptr) {
            children.push_back(control);
        } else if (widget != nullptr) {
            collectChildren(widget, children);
        }
    }
}

/// Whether there was anything to make below the widget, itself included.
bool makeContents(QWidget* root) {
    QList<QWidget*> widgets = root->findChildren<QWidget*>();
    widgets.prepend(root);
    bool made = false;
    for (const QWidget* widget : widgets) {
        if (OpaqueControlRef* control = OpaqueControlRef::of(widget); control != nullptr && control->makeContent) {
            MakeControlContent(control);
            made = true;
        }
    }
    return made;
}

OpaqueControlRef* findOrMake(QWidget* root, ControlID id) {
    OpaqueControlRef* found = find(root, id);
    return found == nullptr && makeContents(root) ? find(root, id) : found;
}

std::vector<OpaqueControlRef*> childrenOf(ControlRef control) {
    MakeControlContent(control);
    std::vector<OpaqueControlRef*> children;
    if (control != nullptr) {
        collectChildren(control->widget, children);
    }
    return children;
}

QRect boundsInWindow(const QWidget* widget) {
    return {widget->mapTo(widget->window(), QPoint(0, 0)), widget->size()};
}

void placeInWindow(QWidget* widget, const QRect& bounds) {
    const QWidget* parent = widget->parentWidget();
    const QPoint origin = parent != nullptr ? parent->mapTo(widget->window(), QPoint(0, 0)) : QPoint(0, 0);
    widget->setGeometry(bounds.translated(-origin));
    activateLayouts(widget);
}

QRect toQRect(const Rect& rect) {
    return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

}  // namespace

OSStatus SetControlContentProc(ControlRef control, ControlContentProc make, void* userData) {
    if (control == nullptr || make == nullptr) {
        return paramErr;
    }
    control->makeContent = [=] { make(control, userData); };
    return noErr;
}

void MakeControlContent(ControlRef control) {
    if (control != nullptr && control->makeContent) {
        std::exchange(control->makeContent, nullptr)();
    }
}

OSStatus GetControlByID(WindowRef window, const ControlID* id, ControlRef* control) {
    if (id == nullptr || control == nullptr) {
        return paramErr;
    }
    if (!IsValidWindowPtr(window)) {
        return errInvalidWindowRef;
    }
    OpaqueControlRef* found = findOrMake(window->widget, *id);
    if (found == nullptr) {
        return errUnknownControl;
    }
    *control = found;
    return noErr;
}

OSStatus HIViewFindByID(ControlRef root, ControlID id, ControlRef* control) {
    if (root == nullptr || control == nullptr) {
        return paramErr;
    }
    OpaqueControlRef* found = findOrMake(root->widget, id);
    if (found == nullptr) {
        return errUnknownControl;
    }
    *control = found;
    return noErr;
}

OSStatus GetControlID(ControlRef control, ControlID* id) {
    if (control == nullptr || id == nullptr) {
        return paramErr;
    }
    *id = control->id;
    return noErr;
}

OSStatus SetControlID(ControlRef control, const ControlID* id) {
    if (control == nullptr || id == nullptr) {
        return paramErr;
    }
    control->id = *id;
    return noErr;
}

OSType GetControlCommandID(ControlRef control) {
    return control != nullptr ? control->command : 0;
}

WindowRef GetControlOwner(ControlRef control) {
    return control != nullptr ? OpaqueWindowRef::of(control->widget->window()) : nullptr;
}

OSStatus GetRootControl(WindowRef window, ControlRef* root) {
    if (!IsValidWindowPtr(window) || root == nullptr) {
        return errInvalidWindowRef;
    }
    *root = OpaqueControlRef::of(window->widget);
    return noErr;
}

ControlRef GetSuperControl(ControlRef control) {
    return control != nullptr ? OpaqueControlRef::above(control->widget) : nullptr;
}

UInt16 CountSubControls(ControlRef control) {
    return static_cast<UInt16>(childrenOf(control).size());
}

OSStatus GetIndexedSubControl(ControlRef control, UInt16 index, ControlRef* child) {
    const std::vector<OpaqueControlRef*> children = childrenOf(control);
    if (child == nullptr || index < 1 || index > children.size()) {
        return errUnknownControl;
    }
    *child = children[index - 1u];
    return noErr;
}

OSStatus EmbedControl(ControlRef control, ControlRef container) {
    if (control == nullptr || container == nullptr) {
        return controlHandleInvalidErr;
    }
    if (control == container || control->widget->isAncestorOf(container->widget)) {
        return paramErr;
    }
    QWidget* widget = control->widget;
    const QRect bounds = boundsInWindow(widget);
    const bool shown = IsControlVisible(control);
    QWidget* const before = tabStopBeforeNextIn(container->widget);
    widget->setParent(container->widget);
    putTabStopsBehind(before, widget);
    placeInWindow(widget, bounds);
    widget->setVisible(shown);
    return noErr;
}

void DisposeControl(ControlRef control) {
    if (control == nullptr) {
        return;
    }
    QWidget* widget = control->widget;
    if (!isDispatching()) {
        delete widget;
        return;
    }
    widget->hide();
    widget->setParent(nullptr);
    widget->deleteLater();
}

OSStatus CreateUserPaneControl(WindowRef window, const Rect* bounds, UInt32, ControlRef* control) {
    if (!IsValidWindowPtr(window) || bounds == nullptr || control == nullptr) {
        return paramErr;
    }
    auto* pane = new ViewWidget(window->widget);
    *control = new OpaqueControlRef(pane, ControlKind::userPane);
    placeInWindow(pane, toQRect(*bounds));
    pane->show();
    return noErr;
}

Rect* GetControlBounds(ControlRef control, Rect* bounds) {
    if (control == nullptr || bounds == nullptr) {
        return nullptr;
    }
    const QRect rect = boundsInWindow(control->widget);
    *bounds = {static_cast<SInt16>(rect.y()), static_cast<SInt16>(rect.x()),
               static_cast<SInt16>(rect.y() + rect.height()), static_cast<SInt16>(rect.x() + rect.width())};
    return bounds;
}

void SetControlBounds(ControlRef control, const Rect* bounds) {
    if (control != nullptr && bounds != nullptr) {
        placeInWindow(control->widget, toQRect(*bounds));
    }
}

void MoveControl(ControlRef control, SInt16 left, SInt16 top) {
    if (control != nullptr) {
        placeInWindow(control->widget, QRect(QPoint(left, top), control->widget->size()));
    }
}

// Whether controls are shown, enabled, active and focused.

#include "platform/toolbox/Controls.h"
#include "platform/toolbox/objects.h"
#include "platform/toolbox/screen_fit.h"

#include <QApplication>
#include <QPointer>
#include <utility>

namespace {

template <typename Change>
OSStatus change(ControlRef control, Change apply) {
    if (control == nullptr) {
        return controlHandleInvalidErr;
    }
    apply(*control);
    return noErr;
}

/// Tells the control and those in it that they are active now, but for those that are inactive by themselves.
void tellActive(OpaqueControlRef& control) {
    const DispatchScope dispatching;
    const QPointer<OpaqueControlRef> alive(&control);
    ScopedEvent(kEventClassControl, kEventControlActivate)
        .with(kEventParamDirectObject, typeControlRef, ControlRef(&control))
        .sendTo(&control);
    for (UInt16 index = 1; alive && index <= CountSubControls(&control); ++index) {
        ControlRef child = nullptr;
        if (GetIndexedSubControl(&control, index, &child) == noErr && child->active) {
            tellActive(*child);
        }
    }
}

}  // namespace

void ShowControl(ControlRef control) {
    SetControlVisibility(control, true, true);
}

void HideControl(ControlRef control) {
    SetControlVisibility(control, false, true);
}

Boolean IsControlVisible(ControlRef control) {
    if (control != nullptr && control->origin == ControlOrigin::adopted) {
        return control->widget->isVisible();  // what it lies in need not be a control
    }
    // A child of a window that was never shown is "hidden" for Qt, but nobody hid it.
    return control != nullptr && !(control->widget->testAttribute(Qt::WA_WState_ExplicitShowHide) &&
                                   control->widget->testAttribute(Qt::WA_WState_Hidden));
}

OSStatus SetControlVisibility(ControlRef control, Boolean visible, Boolean) {
    return change(control, [visible](OpaqueControlRef& target) { target.widget->setVisible(visible); });
}

OSStatus EnableControl(ControlRef control) {
    return change(control, [](OpaqueControlRef& target) { target.widget->setEnabled(true); });
}

OSStatus DisableControl(ControlRef control) {
    return change(control, [](OpaqueControlRef& target) { target.widget->setEnabled(false); });
}

Boolean IsControlEnabled(ControlRef control) {
    return control != nullptr && control->widget->isEnabled();
}

OSStatus ActivateControl(ControlRef control) {
    return change(control, [](OpaqueControlRef& target) {
        if (!std::exchange(target.active, true) && IsControlActive(&target)) {
            tellActive(target);
        }
    });
}

OSStatus DeactivateControl(ControlRef control) {
    return change(control, [](OpaqueControlRef& target) { target.active = false; });
}

Boolean IsControlActive(ControlRef control) {
    for (const OpaqueControlRef* step = control; step != nullptr; step = OpaqueControlRef::above(step->widget)) {
        if (!step->active) {
            return false;
        }
    }
    return control != nullptr;
}

void Draw1Control(ControlRef control) {
    if (control != nullptr) {
        control->widget->update();
    }
}

OSStatus SetKeyboardFocus(WindowRef window, ControlRef control) {
    if (!IsValidWindowPtr(window) || GetControlOwner(control) != window) {
        return paramErr;
    }
    control->widget->setFocus(Qt::OtherFocusReason);
    scrollTo(control->widget);
    return noErr;
}

OSStatus ClearKeyboardFocus(WindowRef window) {
    if (!IsValidWindowPtr(window)) {
        return paramErr;
    }
    if (QWidget* focused = window->widget->focusWidget()) {
        focused->clearFocus();
    }
    return noErr;
}

OSStatus GetKeyboardFocus(WindowRef window, ControlRef* control) {
    if (!IsValidWindowPtr(window) || control == nullptr) {
        return paramErr;
    }
    *control = nullptr;
    if (const QWidget* focused = window->widget->focusWidget()) {
        OpaqueControlRef* own = OpaqueControlRef::of(focused);
        *control = own != nullptr ? own : OpaqueControlRef::above(focused);
    }
    return noErr;
}

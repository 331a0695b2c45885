#include "platform/toolbox/user_input.h"

#include <QWheelEvent>
#include <cstdlib>

bool sendKey(OpaqueControlRef* control, UniChar character) {
    return control != nullptr && ScopedEvent(kEventClassKeyboard, kEventRawKeyDown)
                                         .with(kEventParamDirectObject, typeControlRef, ControlRef(control))
                                         .with(kEventParamKeyUnicodes, typeUnicodeText, character)
                                         .sendTo(control) == noErr;
}

bool WheelNotches::turn(OpaqueControlRef* control, const QWheelEvent& event) {
    constexpr int kNotch = QWheelEvent::DefaultDeltasPerStep;
    const QPointer<OpaqueControlRef> alive(control);
    rest_ += event.angleDelta().y();
    while (alive && std::abs(rest_) >= kNotch) {
        const SInt32 notch = rest_ > 0 ? 1 : -1;
        rest_ -= notch * kNotch;
        const bool isTaken = ScopedEvent(kEventClassMouse, kEventMouseWheelMoved)
                                 .with(kEventParamDirectObject, typeControlRef, ControlRef(control))
                                 .with(kEventParamMouseWheelDelta, typeSInt32, notch)
                                 .sendTo(control) == noErr;
        if (!isTaken) {
            return false;
        }
    }
    return true;
}

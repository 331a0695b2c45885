// Keys and the wheel, as a control's handlers hear of them. Private to this folder.
#pragma once

#include "platform/toolbox/objects.h"

class QWheelEvent;

/// Tells the handlers of a key; false when none of them took it.
bool sendKey(OpaqueControlRef* control, UniChar character);

/// The wheel over one control. Fine wheels send parts of a notch.
class WheelNotches {
public:
    /// Tells the handlers of each whole notch; false when one was not taken.
    bool turn(OpaqueControlRef* control, const QWheelEvent& event);
    void forget() { rest_ = 0; }

private:
    int rest_ = 0;  // what has been turned of the next notch
};

// The wheel of the mouse, in all windows of the process.
#pragma once

class QApplication;

/// From now on the wheel changes values only where the focus is, and moves no focus. Over any other control it scrolls
/// what that lies in.
void restrictWheelToFocus(QApplication* application);

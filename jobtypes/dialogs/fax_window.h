// The windows of the fax dialogs.
#pragma once

#include "ui/dialog_window.h"

// How a fax dialog ended.
inline constexpr SInt16 kFaxDialogOK = 1;
inline constexpr SInt16 kFaxDialogCancel = 2;

/// A window of the nib "LANFAX".
class FaxWindow : public DialogWindow {
public:
    using DialogWindow::DialogWindow;
    [[nodiscard]] OSStatus load(CFStringRef name);
};

// Windows made from the plug-in's nibs.
#pragma once

#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Windows.h"

/// A window of a nib that is disposed of with its owner.
class WindowFromNib {
public:
    WindowFromNib() = default;
    ~WindowFromNib();
    WindowFromNib(const WindowFromNib&) = delete;
    WindowFromNib& operator=(const WindowFromNib&) = delete;

    /// Makes the window, hidden. Returns the platform's status; get() is null unless it is 0.
    [[nodiscard]] OSStatus load(CFBundleRef bundle, CFStringRef nibName, CFStringRef windowName);
    [[nodiscard]] WindowRef get() const { return window_; }

private:
    WindowRef window_ = nullptr;
};

/// Takes a pane out of a nib's window, puts it in the middle of the host pane and shows it; the rest of the window is
/// thrown away. *pane is set only when the status is 0.
[[nodiscard]] OSStatus EmbedPaneFromNib(CFBundleRef bundle, CFStringRef nibName, CFStringRef windowName,
                                        ControlID paneID, ControlRef hostPane, ControlRef* pane);

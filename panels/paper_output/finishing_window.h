// What the dialogs of finishing have in common.
#pragma once

#include "ui/dialog_window.h"

/// A window of the nib "FinishingDialogs", run until its OK or Cancel. A dialog derives from it.
class FinishingWindow : public DialogWindow {
public:
    virtual ~FinishingWindow() = default;
    FinishingWindow(const FinishingWindow&) = delete;
    FinishingWindow& operator=(const FinishingWindow&) = delete;

protected:
    explicit FinishingWindow(CFBundleRef bundle) : DialogWindow(bundle) {}

    [[nodiscard]] OSStatus load(CFStringRef windowName);
    /// True when the user ended it with OK.
    [[nodiscard]] bool run();
    /// Lets picture() say what a pane shows.
    void showPictureOf(SInt32 pane);

private:
    /// The user has changed a control.
    virtual void changed() {}
    /// Whether OK may end the dialog; when not, a field says why.
    virtual bool mayEnd() const { return true; }
    /// The file of the picture on a pane, constant; null for none.
    virtual CFStringRef picture(SInt32) const { return nullptr; }

    static OSStatus handleCommand(EventHandlerCallRef next, EventRef event, void* self);
    static OSStatus handleHit(EventHandlerCallRef next, EventRef event, void* self);
    static OSStatus drawPicture(EventHandlerCallRef next, EventRef event, void* self);

    bool accepted_ = false;
};

// The gallery's window: one panel at a time in it, dialogs in front of it.
#pragma once

#include "host/settings/print_session.h"
#include "tests/support/gallery/pieces.h"

#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Events.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

/// Stands where print dialog and shell stand otherwise: it makes the session and its tickets and drives a panel through
/// its operations. OK writes the shown panel's settings into the tickets.
class Gallery {
public:
    struct Setup {
        CFBundleRef ownBundle;
        CFBundleRef plugin;
        CFBundleRef host;
        Printer printer;
        JobSettings settings;
        CFRef<CFDictionaryRef> installed;  // may be null
    };

    static Result<std::unique_ptr<Gallery>> make(const Setup& setup);
    ~Gallery();
    Gallery(const Gallery&) = delete;
    Gallery& operator=(const Gallery&) = delete;

    WindowRef window() const { return window_; }

    /// Everything that open() takes.
    std::vector<std::string> names() const;

    /// Opens a panel in the window, or a dialog, or the bare window of a nib ("NIB/WINDOW"), and for the last two
    /// returns when they are closed. Why it could not, or nothing.
    std::optional<std::string> open(const std::string& name);

    /// Shows the window until OK (true) or Cancel; `shown` is called first, when it is on the screen.
    bool run(std::function<void()> shown);
    /// Ends run() as Cancel does.
    void end();

    JobSettings copySettings() const { return session_->copySettings(); }

private:
    explicit Gallery(const Setup& setup) : setup_(setup) {}
    static OSStatus handleEvent(EventHandlerCallRef next, EventRef event, void* self);
    static OSStatus syncShownPanel(PMPrintSession session, Boolean ticketsToControls);
    OSStatus openPanel(PanelInterfaceGetter getter);
    void closePanel();
    ControlRef control(SInt32 number) const;

    Setup setup_;
    WindowRef window_ = nullptr;
    std::unique_ptr<PrintSession> session_;
    PDEOperations panel_{};
    PMPDEContext context_ = nullptr;  // of the shown panel
    ControlRef pane_ = nullptr;
    std::function<void()> shown_;
    bool accepted_ = false;
};

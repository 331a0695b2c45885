// How the pages lie on their sheets, and which and in which order they are: scaling, pages per side, odd or even.
#pragma once

#include "host/dialog/dialog_controls.h"
#include "host/settings/print_session.h"

class PageSettings {
public:
    /// The window must outlive this.
    explicit PageSettings(WindowRef window) : window_(window) {}

    void show(const PrintSession& session) const;
    /// Takes what the user did with one of these controls into the session; false for any other control.
    bool handleHit(SInt32 number, PrintSession* session) const;

private:
    ControlRef control(HostControl number) const { return hostControl(window_, number); }
    void read(JobInstructions* job) const;

    WindowRef window_;
};

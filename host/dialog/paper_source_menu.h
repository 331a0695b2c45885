// The pop-up that shows where the printer takes its paper from.
#pragma once

#include "host/dialog/dialog_controls.h"
#include "host/settings/print_session.h"

#include <string>
#include <vector>

class PaperSourceMenu {
public:
    /// The window and the bundle of its texts must outlive this.
    PaperSourceMenu(WindowRef window, CFBundleRef texts) : window_(window), texts_(texts) {}

    /// Fills the menu with the printer's trays; those that need what is not installed are gray, and say why. It is
    /// hidden when there is nothing to choose.
    void fill(const PrintSession& session);
    /// Shows the session's choice.
    void show(const PrintSession& session) const;
    /// The option that the user has chosen; empty for none.
    std::string chosen() const;

private:
    WindowRef window_;
    CFBundleRef texts_;
    std::vector<std::string> options_;  // of the items
};

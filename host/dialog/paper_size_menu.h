// The menu of paper sizes: those of the printer, one of the user's own, and an item that asks for such a one.
#pragma once

#include "host/settings/print_session.h"
#include "platform/foundation/CFBundle.h"
#include "platform/toolbox/Controls.h"

#include <string>
#include <vector>

class PaperSizeMenu {
public:
    /// The pop-up and the bundle of its texts must outlive this.
    PaperSizeMenu(ControlRef popUp, CFBundleRef texts) : popUp_(popUp), texts_(texts) {}

    /// Fills the menu with the sizes of a session's printer. Those that it cannot print with what it has installed are
    /// gray, and say why.
    void fill(const PrintSession& session);
    /// Shows the size that the session asks for.
    void show(const PrintSession& session);
    /// The option of "PageSize" that is chosen; empty when none is.
    std::string chosen() const;
    /// Whether the user wants to be asked for a size.
    bool isSizeWanted() const;

private:
    void addCustom(const PrintSession& session, const std::string& option);
    void addSizeItem();

    ControlRef popUp_;
    CFBundleRef texts_;
    std::vector<std::string> options_;  // in the order of the menu's items
    std::size_t sizesOfPrinter_ = 0;    // the first ones
    bool takesCustom_ = false;          // the last item then asks for a size
};

// The menu of printers: the PPD that was given and the server's queues.
#pragma once

#include "host/printer.h"
#include "platform/toolbox/Controls.h"

#include <vector>

/// A printer that may be chosen: a queue, or a PPD without one.
struct PrinterChoice {
    enum class Kind { queue, ppd } kind;
    std::string name;  // of the queue, or the path of the PPD

    bool operator==(const PrinterChoice&) const = default;
};
Result<Printer> openPrinter(const PrinterChoice& choice);

class PrinterMenu {
public:
    /// A menu with one printer, which is chosen.
    PrinterMenu(ControlRef popUp, PrinterChoice choice, const std::string& title);

    /// Adds the server's queues. May wait for the print server.
    void addQueues();

    /// What the pop-up shows now.
    const PrinterChoice& chosen() const;
    /// The one that was settled last.
    const PrinterChoice& settled() const { return choices_[settled_]; }
    /// Makes the chosen one the settled one.
    void settle();
    /// Goes back to the settled one.
    void revert();

private:
    void add(PrinterChoice choice, const std::string& title);

    ControlRef popUp_;
    std::vector<PrinterChoice> choices_;  // in the order of the menu's items
    std::size_t settled_ = 0;
};

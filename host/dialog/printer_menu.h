// The menu of printers: the PPD that was given and the server's queues.
#pragma once

#include "host/settings/printer.h"
#include "platform/foundation/CFBundle.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Windows.h"

#include <functional>
#include <vector>

/// A printer that may be chosen: a queue, or a PPD without one, be it the program's own sample.
struct PrinterChoice {
    enum class Kind { queue, ppd, sample } kind;
    std::string name;  // of the queue, or the path of the PPD

    bool operator==(const PrinterChoice&) const = default;
};
Result<Printer> openPrinter(const PrinterChoice& choice);

class PrinterMenu {
public:
    /// A menu with one printer, which is chosen. `texts` is the program's own bundle.
    PrinterMenu(ControlRef popUp, CFBundleRef texts, PrinterChoice choice, const std::string& title);
    ~PrinterMenu();
    PrinterMenu(const PrinterMenu&) = delete;
    PrinterMenu& operator=(const PrinterMenu&) = delete;

    /// Adds the server's queues, and their instances, when the server has told them; an item that cannot be chosen says
    /// so when it does not. Returns at once; calls `filled` from the event loop when the menu is complete.
    void fill(std::function<void()> filled);

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
    void lookForAnswer();
    void takeAnswer();

    ControlRef popUp_;
    CFBundleRef texts_;  // lent
    PMPrinterList queues_ = nullptr;
    EventLoopTimerRef timer_ = nullptr;  // while the server is asked
    std::function<void()> filled_;
    std::vector<PrinterChoice> choices_;  // in the order of the menu's items
    std::size_t settled_ = 0;
};

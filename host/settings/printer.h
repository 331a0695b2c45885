// The printer that a job goes to.
#pragma once

#include "host/settings/result.h"
#include "platform/foundation/CFRef.h"
#include "platform/printing/PMPrinter.h"

#include <string>
#include <utility>
#include <vector>

/// The maker whose panels the plug-in has.
inline constexpr const char* kMaker = "Tavro";

/// Owns one count of a printer, or nothing.
class Printer {
public:
    Printer() = default;
    explicit Printer(PMPrinter adopted) : printer_(adopted) {}
    Printer(const Printer& other) : printer_(other.printer_) { PMPrinterRetain(printer_); }
    Printer(Printer&& other) noexcept : printer_(std::exchange(other.printer_, nullptr)) {}
    Printer& operator=(Printer other) noexcept {
        std::swap(printer_, other.printer_);
        return *this;
    }
    ~Printer() { PMPrinterRelease(printer_); }

    PMPrinter get() const { return printer_; }
    std::string name() const;
    /// "queue" or "queue/instance"; empty for a printer without a queue.
    std::string queue() const;
    std::string ppdPath() const;
    bool isOfMaker() const;

private:
    PMPrinter printer_ = nullptr;
};

/// Both say in the failure which file or queue, and why. A queue may be an instance ("queue/instance").
Result<Printer> openPPD(const std::string& path);
Result<Printer> openQueue(const std::string& queue);

/// Begins to ask the print server for a queue, or for the default one where it is empty, that is opened soon.
void askForPrinterAhead(const std::string& queue);

/// The default queue when it is one of the maker's, or of any where that will do, else the sample printer. May wait for
/// the print server.
Result<Printer> openDefaultPrinter(const std::string& samplePPD, bool isOfAnyMaker = false);

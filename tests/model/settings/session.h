// A print session on the printer of a PPD file, for tests without a window.
#pragma once

#include "model/settings/plugin_state.h"
#include "platform/printing/CompiledPPD.h"
#include "platform/printing/PMSession.h"
#include "tests/platform/printing/printing_fixture.h"

#include <map>

class Session {
public:
    using Options = std::map<std::string, std::string>;

    /// `installed` are options chosen on top of the PPD's own.
    explicit Session(const std::filesystem::path& ppd, const Options& installed = {}) : printer_(ppd) {
        PMCreateSession(&session_);
        settings = addTicket(kPDE_PMPrintSettingsKey);
        printerInfo = addTicket(kPDE_PMPrinterInfoKey);
        const auto options = makeDictionary();
        for (const auto& [keyword, option] : installed) {
            set(options.get(), keyword, option);
        }
        PMPrinterWriteInfoTicket(printer_.get(), options.get(), printerInfo);
        PMSessionSetCurrentPMPrinter(session_, printer_.get());
    }
    ~Session() {
        PMTicketReleaseAndClear(&settings);
        PMTicketReleaseAndClear(&printerInfo);
        PMReleaseSession(session_);
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    [[nodiscard]] PMPrintSession get() const { return session_; }

    PMTicketRef settings = 0;
    PMTicketRef printerInfo = 0;

private:
    PMTicketRef addTicket(CFStringRef kind) const {
        PMTicketRef ticket = 0;
        PMTicketCreate(nullptr, kind, &ticket);
        PMSessionSetDataInSession(session_, kind, cf(ticket).get());
        return ticket;
    }

    Printer printer_;
    PMPrintSession session_ = nullptr;
};

/// The ZR420's PPD with every occurrence of a text replaced.
inline std::string changedPPD(std::initializer_list<std::string> froms, const std::string& to) {
    std::string ppd = readFile(kZR420);
    for (const std::string& from : froms) {
        for (std::size_t at = ppd.find(from); at != std::string::npos; at = ppd.find(from, at + to.size())) {
            ppd.replace(at, from.size(), to);
        }
    }
    return ppd;
}

/// The compiled PPD of a session's printer, closed with the object.
class OpenPPD {
public:
    explicit OpenPPD(const Session& session) { ppdOpenCompiledPPDFromTicket(session.printerInfo, &context_); }
    ~OpenPPD() { ppdCloseCompiledPPDFromTicket(context_); }
    OpenPPD(const OpenPPD&) = delete;
    OpenPPD& operator=(const OpenPPD&) = delete;

    [[nodiscard]] PPDContext get() const { return context_; }

private:
    PPDContext context_ = nullptr;
};

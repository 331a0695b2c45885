// The command line: one table says what may stand there, and the help is made from it.
#pragma once

#include "host/settings/result.h"
#include "platform/foundation/CFBundle.h"

#include <string>
#include <utility>
#include <vector>

struct CommandLine {
    std::vector<std::string> documents;
    std::string ppd;
    std::string printer;
    std::vector<std::string> installed;  // as it stands there: Option2=HCSS
    std::string ticketIn;
    std::string preset;
    std::string ticketOut;
    std::string jobOut;
    std::string pdfOut;
    std::string currentPage;
    std::string script;
    std::string shots;
    std::string proof;
    std::string portal;
    std::string format;  // of what is told: "json", or "text" as when nothing is said
    bool check = false;
    bool print = false;
    bool listControls = false;
    bool listPrinters = false;
    bool listPresets = false;
    bool help = false;
    bool version = false;

    /// Nobody is at the screen.
    bool isScripted() const { return !script.empty() || listControls; }
    /// Only names are told.
    bool isListing() const { return listPrinters || listPresets; }
    /// Something is told on standard output, and nothing printed.
    bool isTelling() const { return check || listControls || isListing() || !proof.empty(); }
    bool tellsJSON() const { return format == "json"; }
};

/// A page of a document by its number, from 1; 0 for what is none.
int pageNumber(const std::string& text);

/// Reads the arguments behind the program's name. The failure is one line without the program's name.
Result<CommandLine> readCommandLine(const std::vector<std::string>& arguments);

/// In the user's language; `texts` is the program's own bundle.
std::string helpText(CFBundleRef texts);
std::string versionText();

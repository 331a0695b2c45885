// What a run of the program starts from, taken from its command line.
#pragma once

#include "host/job/command_line.h"
#include "host/job/document.h"
#include "host/job/print_job.h"
#include "host/settings/printer.h"
#include "host/settings/settings_file.h"
#include "host/settings/settings_origin.h"

#include <string>

struct JobSetup {
    Document document;
    Printer printer;
    JobSettings settings;  // to start from; never changed
    SettingsOrigin origin;
    CFRef<CFDictionaryRef> installedOptions;  // main keyword to option keyword; null for the printer's own
    std::string ticketOut;                    // where the settings are written; may be empty
    JobTarget target;
    int currentPage = 0;  // of the document, which the user was looking at; 0 when nobody has said
};

/// Opens everything that the command line names and that may be missing or broken, but for the document, which is being
/// looked at meanwhile (OpeningDocument). `samplePPD` is the printer when it
/// names none and the default queue is none of the maker's. May wait for the print server.
Result<JobSetup> openJobSetup(const CommandLine& line, const std::string& samplePPD);

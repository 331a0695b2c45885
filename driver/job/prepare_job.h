// A job on its way to the printer: its sheets planned, its pages made, its settings as the print system reads them.
#pragma once

#include "driver/instructions/job_instructions.h"
#include "driver/job/job_ticket.h"
#include "driver/pages/document.h"
#include "driver/pages/make_pages.h"
#include "platform/files/byte_sink.h"
#include "platform/printing/PMPrinter.h"
#include "platform/printing/private_file.h"

#include <cstddef>
#include <optional>
#include <string>

struct JobSource {
    PMPrinter printer;  // lent, like the tickets
    PMTicketRef printSettings;
    PMTicketRef pageFormat;
    std::string document;          // what lines call it, and the job if nothing else does
    std::string content;           // the file of its PDF
    std::string password;          // of it; empty for none
    const DocumentPages& pages;    // of it
    std::string faxCover;          // a PDF of one page; empty for a job without one
    std::optional<PageMark> mark;  // on its pages
    PMTicketRef printerInfo = 0;   // what is installed; 0 for all
};

struct PreparedJob {
    explicit PreparedJob(PMTicketRef printSettings) : settings(printSettings) {}

    JobTicket settings;          // what the print system still does
    PrivateFile pages;           // a PDF, or PostScript
    bool arePostScript = false;  // with the printer's code and instructions
    std::size_t count = 0;       // of the pages
    std::string fault;           // why it is not ready: one line that names the file; may be empty when it was ended
};

/// Makes a job's pages. What the PPD has options for is left to them, so that its settings are not those of the
/// session. Takes time that grows with the document; `progress` hears how far it is and can end it. False with the
/// fault, or when it was ended.
bool prepareJob(const JobSource& source, const PagesProgress& progress, PreparedJob* job);

/// Writes one set of a job's pages as a PDF for its readers: nothing is left to a printer, as far as pages can have it.
/// False with the fault, as above; without one also when `output` took no more.
bool writePages(const JobSource& source, const PagesProgress& progress, ByteSink& output, std::string* fault);

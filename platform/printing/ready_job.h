// A job as the printer gets it.
#pragma once

#include "platform/files/byte_sink.h"
#include "platform/printing/filter_route.h"
#include "platform/printing/job_options.h"
#include "platform/printing/printer_record.h"

struct Job {
    PMPrinter printer;
    std::string document;
    JobRequest request;
    SInt32 orientation;  // as a page format ticket counts it
    CFDataRef cover;     // a PDF of one page in front of the document; may be null
    CFDataRef setup;     // PostScript for the end of the job's setup; may be null
};

inline constexpr const char* kCollateKeyword = "Collate";
/// Whether all copies of a page follow one another.
bool isUncollated(const JobRequest& request);

/// Whether the server could not make the job's PostScript: it cannot draw what is not in the document, it would show a
/// passcode as an option of the job, and hand it to its filters on their command lines, and those collate all sets.
bool mustBeReady(const Job& job);

/// Whether the job is not of the document's file: it has a cover, or it has some pages only where a sheet holds
/// several, and the filters would count sheets.
bool mustPickPages(const Job& job);
/// Writes the job's pages to the file. On failure, with the reason in PMGetLastErrorText, kPMFilterFailed or
/// kPMCannotWriteOutput.
OSStatus pickPages(const Job& job, PrivateFile& pages);

/// The job's options for the CUPS filters, but for its copies: what is saved for the queue, and what the job asks for
/// of its pages.
OptionList filterOptions(const Job& job);

/// Whether the printer reads the PostScript that this program can put code into, and no filter of its own makes its
/// jobs.
bool readsPostScript(const OpaquePMPrinter& printer);

/// Writes the job as the printer reads it, PostScript or what its own filter makes: what the filters of this machine
/// make of the document. Failures as those of pickPages(); the last error does not say why `output` took no more.
OSStatus writePrinterJob(const Job& job, ByteSink& output);
/// Writes the job's PostScript, as the print server gets it for any printer.
OSStatus writePostScriptJob(const Job& job, ByteSink& output);

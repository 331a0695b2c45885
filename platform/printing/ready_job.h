// A job as the printer gets it.
#pragma once

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

inline constexpr const char* kPDFType = "application/pdf";
inline constexpr const char* kReadyType = "application/vnd.cups-postscript";

/// Whether the server could not make the job's PostScript: it cannot draw what is not in the document, it would show a
/// passcode as an option of the job, and hand it to its filters on their command lines, and those collate all sets.
bool mustBeReady(const Job& job);

/// Whether the job is not of the document's file: it has a cover, or it has some pages only where a sheet holds
/// several, and the filters would count sheets.
bool mustPickPages(const Job& job);
/// Writes the job's pages to the file. On failure, with the reason in PMGetLastErrorText, kPMFilterFailed or
/// kPMCannotWriteOutput.
OSStatus pickPages(const Job& job, const PrivateFile& pages);

/// The job's options for the CUPS filters, but for its copies: what is saved for the queue, and what the job asks for
/// of its pages.
OptionList filterOptions(const Job& job);

/// Writes the job's PostScript: what the filters make of it. Failures as those of pickPages().
OSStatus writeReadyJob(const Job& job, int output);

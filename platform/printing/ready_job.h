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

/// The job's options for the CUPS filters, but for its copies: what is saved for the queue, and what the job asks for.
OptionList filterOptions(const Job& job);

/// Writes the job's PostScript: what the filters make of it. On failure, with the reason in PMGetLastErrorText,
/// kPMFilterFailed or kPMCannotWriteOutput.
OSStatus writeReadyJob(const Job& job, int output);

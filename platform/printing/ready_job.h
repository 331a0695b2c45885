// A job as the printer gets it.
#pragma once

#include "platform/files/byte_sink.h"
#include "platform/printing/filter_route.h"
#include "platform/printing/job_options.h"
#include "platform/printing/printer_record.h"

struct Job {
    PMPrinter printer;
    int file;  // what is printed: an open descriptor
    const char* contentType;
    std::size_t pageCount;
    std::string document;  // what the job is called in messages
    JobRequest request;
};

inline constexpr const char* kCollateKeyword = "Collate";
/// Whether all copies of a page follow one another.
bool isUncollated(const JobRequest& request);

/// The job's options for the CUPS filters, but for its copies: what is saved for the queue, what the job asks for, and
/// that nothing is done to its pages.
OptionList filterOptions(const Job& job);

/// Whether the printer reads the PostScript that this program can put code into, and no filter of its own makes its
/// jobs.
bool readsPostScript(const OpaquePMPrinter& printer);

/// Writes the job as the printer reads it, PostScript or what its own filter makes: what the filters of this machine
/// make of the pages. On failure, with the reason in PMGetLastErrorText, kPMFilterFailed or kPMCannotWriteOutput; the
/// last error does not say why `output` took no more.
OSStatus writePrinterJob(const Job& job, ByteSink& output);
/// Writes the job's PostScript, as the print server gets it for any printer.
OSStatus writePostScriptJob(const Job& job, ByteSink& output);

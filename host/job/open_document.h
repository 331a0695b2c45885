// Opening a document where the program waits for it: nobody is at the screen, or nothing is there yet.
#pragma once

#include "host/job/document.h"
#include "host/job/job_setup.h"

/// The first of several documents that are not there at all: they are told before any is printed. One is told of when
/// it is opened.
std::optional<Failure> findMissing(const std::vector<std::string>& paths);

/// Begins to make a PDF of a document that is none, for the paper of the job.
void prepareFor(const JobSetup& setup, OpeningDocument* document);

/// Waits for the document, with all that it needs: a password is asked for on the terminal, up to three times. Without
/// a terminal the failure says so.
Result<Document> openForJob(const JobSetup& setup, OpeningDocument* document);

// A printer: what PMPrinter refers to.
#pragma once

#include "platform/foundation/CFRef.h"
#include "platform/printing/PMPrinter.h"
#include "platform/printing/ppd_cache.h"
#include "platform/printing/private_file.h"
#include "platform/printing/starting_options.h"

#include <memory>

struct OpaquePMPrinter {
    /// `destination` is empty for a printer without a queue.
    OpaquePMPrinter(std::shared_ptr<const PPDFile> file, std::string path, const std::string& destination);
    OpaquePMPrinter(const OpaquePMPrinter&) = delete;
    OpaquePMPrinter& operator=(const OpaquePMPrinter&) = delete;

    int owners = 1;
    std::shared_ptr<const PPDFile> ppdFile;
    const PPDFile& ppd;  // the same
    std::string ppdPath;
    std::string queue;                     // empty for a printer without a queue
    std::shared_ptr<PrivateFile> ppdCopy;  // of a queue's PPD; null for a printer without a queue
    StartingOptions start;                 // of the queue or its instance, on top of the PPD's own

    // Lent to callers.
    struct PaperStrings {
        CFRef<CFStringRef> name;
        CFRef<CFStringRef> title;
    };
    CFRef<CFStringRef> name;
    CFRef<CFStringRef> id;
    CFRef<CFStringRef> maker;
    CFRef<CFURLRef> ppdURL;
    std::vector<PaperStrings> papers;
};

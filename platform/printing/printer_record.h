// A printer: what PMPrinter refers to.
#pragma once

#include "platform/foundation/CFRef.h"
#include "platform/printing/PMPrinter.h"
#include "platform/printing/cups_server.h"
#include "platform/printing/ppd_file.h"

struct OpaquePMPrinter {
    OpaquePMPrinter(PPDFile file, std::string path, std::string queueName);
    ~OpaquePMPrinter();
    OpaquePMPrinter(const OpaquePMPrinter&) = delete;
    OpaquePMPrinter& operator=(const OpaquePMPrinter&) = delete;

    int owners = 1;
    PPDFile ppd;
    std::string ppdPath;
    std::string queue;         // empty for a printer without a queue; with one, the PPD is the printer's own copy
    OptionList queueDefaults;  // on top of the PPD's own

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

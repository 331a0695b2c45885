#include "driver/queue/queue_job.h"

#include "driver/instructions/read_instructions.h"
#include "driver/job/prepare_job.h"
#include "platform/foundation/CFNumber.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <array>

#include <unistd.h>

namespace {

/// Owns one count of a printer.
class JobPrinter {
public:
    ~JobPrinter() { PMPrinterRelease(printer_); }
    JobPrinter() = default;
    JobPrinter(const JobPrinter&) = delete;
    JobPrinter& operator=(const JobPrinter&) = delete;

    [[nodiscard]] PMPrinter get() const { return printer_; }
    PMPrinter* place() { return &printer_; }

private:
    PMPrinter printer_ = nullptr;
};

/// A ticket of the job.
class Ticket {
public:
    explicit Ticket(CFStringRef kind) { PMTicketCreate(nullptr, kind, &ticket_); }
    ~Ticket() { PMTicketReleaseAndClear(&ticket_); }
    Ticket(const Ticket&) = delete;
    Ticket& operator=(const Ticket&) = delete;

    [[nodiscard]] PMTicketRef get() const { return ticket_; }

private:
    PMTicketRef ticket_ = 0;
};

bool isPDF(const PrivateFile& document) {
    std::array<char, 1024> bytes;
    const ssize_t count = pread(document.descriptor(), bytes.data(), bytes.size(), 0);
    const std::string_view beginning(bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    return beginning.find("%PDF-") != std::string_view::npos;
}

/// What needs somebody who can be asked, or a secret, which an option would tell everybody.
const char* faultOf(JobKind kind) {
    switch (kind) {
        case JobKind::fax:
            return "Faxes cannot be sent by settings that come with a job.";
        case JobKind::secure:
            return "Secure print jobs cannot be made by settings that come with a job.";
        case JobKind::delayed:
            return "Delayed print jobs cannot be made by settings that come with a job.";
        default:
            return nullptr;
    }
}

class Maker {
public:
    Maker(const QueueJob& job, const QueueJobProgress& progress, ByteSink& output, std::string* reason)
        : job_(job), progress_(progress), output_(output), reason_(*reason) {}

    bool make(const PrivateFile& document) {
        if (!openPrinter()) {
            return false;
        }
        fillTickets();
        if (isPDF(document)) {
            return print(document);
        }
        PrivateFile pages;
        constexpr double kNoMatter = 612;  // PostScript has its own paper
        return isKept(pages) && PMWritePDF(document.descriptor(), makeFileURL(name()).get(),
                                           CFSTR("application/postscript"), kNoMatter, kNoMatter, &pages) == noErr
                   ? print(pages)
                   : failAsPlatformSays();
    }

private:
    [[nodiscard]] std::string name() const { return "job-" + job_.number; }

    bool fail(const std::string& reason) {
        reason_ = reason;
        return false;
    }
    bool failAsPlatformSays() { return fail(utf8Text(PMGetLastErrorText())); }

    bool openPrinter() {
        const OSStatus status =
            PMPrinterCreateForJob(makeFileURL(job_.ppd).get(), makeString(job_.options).get(), printer_.place());
        if (status != paramErr) {
            return status == noErr || failAsPlatformSays();
        }
        // "settings: are damaged"
        std::string reason = utf8Text(PMGetLastErrorText());
        reason.erase(0, reason.find(": ") + 2);
        return fail("The settings that came with the job " + reason + ". Nothing was printed. Save the preset again.");
    }

    void fillTickets() {
        PMPrinterWriteDefaultSettings(printer_.get(), settings_.get(), format_.get());
        PMPrinterWriteInfoTicket(printer_.get(), nullptr, info_.get());
        const SInt32 copies = job_.copies;
        const auto number = CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, kCFNumberSInt32Type, &copies));
        PMTicketSetCFNumber(settings_.get(), kDriverClient, kPMCopiesKey, number.get(), kPMUnlocked);
        for (const auto& [key, text] : {std::pair{kPMJobNameKey, job_.title}, std::pair{kPMJobOwnerKey, job_.user}}) {
            PMTicketSetCFString(settings_.get(), kDriverClient, key, makeString(text).get(), kPMUnlocked);
        }
    }

    bool readMark(const JobInstructions& instructions, std::optional<PageMark>* mark) {
        if (!instructions.watermark) {
            return true;
        }
        const CFDictionaryRef saved = PMPrinterGetSavedSettings(printer_.get());
        const void* const travelled =
            saved == nullptr ? nullptr : CFDictionaryGetValue(saved, kPMSavedSettingsWatermarkKey);
        std::string reason = "did not come with the job";
        if (travelled != nullptr && CFGetTypeID(travelled) == CFDictionaryGetTypeID()) {
            *mark = readPageMark(*instructions.watermark, static_cast<CFDictionaryRef>(travelled), &reason);
        }
        return *mark || fail("The watermark cannot be printed: " + reason + ". Nothing was printed.");
    }

    bool print(const PrivateFile& document) {
        const JobInstructions instructions = readInstructions(settings_.get(), format_.get());
        if (const char* const fault = faultOf(instructions.kind)) {
            return fail(fault);
        }
        std::string reason;
        const auto pages = readDocument(document.descriptor(), &reason);
        if (!pages) {
            return fail("The document " + reason + ".");
        }
        std::optional<PageMark> mark;
        if (!readMark(instructions, &mark)) {
            return false;
        }
        const JobSource source{printer_.get(), settings_.get(), format_.get(), name(), document.path(), {}, *pages, {},
                               mark,           info_.get()};
        PreparedJob prepared(settings_.get());
        const auto report = [this](int percent) {
            progress_(percent);
            return true;
        };
        if (!prepareJob(source, report, &prepared)) {
            return fail(prepared.fault);
        }
        const auto url = makeFileURL(name());
        const PMJobPages ready{prepared.pages.descriptor(), prepared.arePostScript,
                               static_cast<CFIndex>(prepared.count), url.get()};
        return PMPrinterWriteJob(printer_.get(), prepared.settings.get(), &ready, &output_) == noErr ||
               failAsPlatformSays();
    }

    const QueueJob& job_;
    const QueueJobProgress& progress_;
    ByteSink& output_;
    std::string& reason_;
    JobPrinter printer_;
    Ticket settings_{kPDE_PMPrintSettingsKey};
    Ticket format_{kPDE_PMPageFormatKey};
    Ticket info_{kPDE_PMPrinterInfoKey};
};

}  // namespace

bool writeQueueJob(const QueueJob& job, const PrivateFile& document, const QueueJobProgress& progress, ByteSink& output,
                   std::string* reason) {
    return Maker(job, progress, output, reason).make(document);
}

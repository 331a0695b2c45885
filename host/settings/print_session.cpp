#include "host/settings/print_session.h"

#include "driver/instructions/page_options.h"
#include "driver/instructions/panel_items.h"
#include "driver/plan/sheet_plan.h"
#include "host/settings/dictionary_values.h"
#include "host/settings/panel_defaults.h"
#include "host/settings/ticket_items.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFNumber.h"
#include "platform/foundation/text.h"

#include <array>

namespace {

PMTicketRef makeTicket(PMPrintSession session, CFStringRef kind, const CFRef<CFDictionaryRef>& items) {
    PMTicketRef ticket = 0;
    PMTicketCreate(nullptr, kind, &ticket);
    if (items) {
        PMTicketSetItems(ticket, items.get());
    }
    const auto number = CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, kCFNumberSInt32Type, &ticket));
    PMSessionSetDataInSession(session, kind, number.get());
    return ticket;
}

CFRef<CFDictionaryRef> copyItems(PMTicketRef ticket) {
    return CFRef<CFDictionaryRef>::adopt(PMTicketCopyItems(ticket));
}

/// The number of an item, or the fallback when it is missing, no number, or outside the range.
SInt32 numberInRange(PMTicketRef ticket, CFStringRef key, SInt32 minimum, SInt32 maximum, SInt32 fallback) {
    const SInt32 value = numberItem(ticket, key, fallback);
    return value >= minimum && value <= maximum ? value : fallback;
}

void setNumberItem(PMTicketRef ticket, CFStringRef key, SInt32 value) {
    const auto number = CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, kCFNumberSInt32Type, &value));
    PMTicketSetCFNumber(ticket, kHostClient, key, number.get(), kPMUnlocked);
}

}  // namespace

PrintSession::PrintSession(const Printer& printer, const JobSettings& settings, CFDictionaryRef installedOptions,
                           const std::string& jobName)
    : printer_(printer) {
    PMCreateSession(&session_);
    PMSessionSetCurrentPMPrinter(session_, printer_.get());
    printSettings_ = makeTicket(session_, kPDE_PMPrintSettingsKey, settings.printSettings);
    pageFormat_ = makeTicket(session_, kPDE_PMPageFormatKey, settings.pageFormat);
    printerInfo_ = makeTicket(session_, kPDE_PMPrinterInfoKey, settings.printerInfo);
    PMPrinterWriteInfoTicket(printer_.get(), installedOptions, printerInfo_);
    choices_.emplace(printerInfo_);
    isPaperChosen_ = !choice(CFSTR("PageSize")).empty();
    dropChoicesNotOffered();
    PMPrinterWriteDefaultSettings(printer_.get(), printSettings_, pageFormat_);
    if (!printer_.queue().empty()) {
        writePanelDefaults(*choices_, printSettings_);
    }
    fillOutputColor(printSettings_);
    setJobName(jobName);
    setCopies(copies());
    setOrientation(orientation());
    updatePaperRectangle();
}

void PrintSession::setJobName(const std::string& name) {
    setDocumentName(printSettings_, name);
}

PrintSession::~PrintSession() {
    choices_.reset();
    PMReleaseSession(session_);
    for (PMTicketRef* ticket : {&printSettings_, &pageFormat_, &printerInfo_}) {
        PMTicketReleaseAndClear(ticket);
    }
}

/// Settings may come from another printer: what this one's keywords do not offer gives way to its default.
void PrintSession::dropChoicesNotOffered() {
    CFMutableDictionaryRef pairs = nullptr;
    PMTicketGetPPDDict(printSettings_, kPMTopLevel, &pairs);
    const auto count = static_cast<std::size_t>(CFDictionaryGetCount(pairs));
    std::vector<const void*> keys(count);
    std::vector<const void*> values(count);
    CFDictionaryGetKeysAndValues(pairs, keys.data(), values.data());
    for (std::size_t i = 0; i < count; ++i) {
        const auto key = CFRef<CFStringRef>::retain(static_cast<CFStringRef>(keys[i]));
        const std::string keyword = utf8Text(key.get());
        const std::string option = utf8Text(static_cast<CFStringRef>(values[i]));
        // A secret that is not taken must stop the job and not go unnoticed.
        if (!PMSettingIsSecret(printer_.get(), key.get()) && choices_->hasKeyword(keyword) &&
            !choices_->offers(keyword, option)) {
            choicesNotOffered_.push_back(std::string(keyword).append("=").append(option));
            CFDictionaryRemoveValue(pairs, key.get());
        }
    }
}

JobSettings PrintSession::copySettings() const {
    return {copyItems(printSettings_), copyItems(pageFormat_), copyItems(printerInfo_)};
}

const UsualSettings& PrintSession::usual() const {
    if (!usual_) {
        PMTicketRef settings = 0;
        PMTicketRef format = 0;
        PMTicketCreate(nullptr, kPDE_PMPrintSettingsKey, &settings);
        PMTicketCreate(nullptr, kPDE_PMPageFormatKey, &format);
        PMPrinterWriteDefaultSettings(printer_.get(), settings, format);
        CFMutableDictionaryRef pairs = nullptr;
        PMTicketGetPPDDict(settings, kPMTopLevel, &pairs);
        CFDictionaryRef pages = nullptr;
        PMTicketGetCFDictionary(settings, kPMTopLevel, kPMTopLevel, kPMPageOptionsKey, &pages);
        usual_ = {pairsIn(pairs), numberItem(settings, kPMCopiesKey, 1),
                  numberItem(format, kPMOrientationKey, kPortrait), CFRef<CFDictionaryRef>::retain(pages)};
        PMTicketReleaseAndClear(&settings);
        PMTicketReleaseAndClear(&format);
    }
    return *usual_;
}

const JobInstructions& PrintSession::instructions() const {
    return reader_.read(printSettings_, pageFormat_);
}

const SheetPlan& PrintSession::plan(std::int64_t pageCount) const {
    if (!planned_ || planned_->version != reader_.version() || planned_->pageCount != pageCount) {
        planned_ = {reader_.version(), pageCount, planSheets(reader_.last(), pageCount)};
    }
    return planned_->plan;
}

SInt32 PrintSession::copies() const {
    return numberInRange(printSettings_, kPMCopiesKey, 1, kMostCopies, 1);
}

void PrintSession::setCopies(SInt32 copies) {
    setNumberItem(printSettings_, kPMCopiesKey, copies);
}

std::string PrintSession::pageRange() const {
    CFStringRef range = nullptr;
    PMTicketGetCFString(printSettings_, kPMTopLevel, kPMTopLevel, kPMPageRangeKey, &range);
    return utf8Text(range);
}

void PrintSession::setPageRange(const std::string& range) {
    if (range.empty()) {
        PMTicketReleaseItem(printSettings_, kPMTopLevel, kPMPageRangeKey);
    } else {
        PMTicketSetCFString(printSettings_, kHostClient, kPMPageRangeKey, makeString(range).get(), kPMUnlocked);
    }
}

SInt32 PrintSession::orientation() const {
    return numberInRange(pageFormat_, kPMOrientationKey, kPortrait, kReverseLandscape, kPortrait);
}

void PrintSession::setOrientation(SInt32 orientation) {
    setNumberItem(pageFormat_, kPMOrientationKey, orientation);
}

void PrintSession::changePages(const std::function<void(JobInstructions& job)>& change) {
    JobInstructions job = instructions();
    change(job);
    writePageOptions(job, usual().pageOptions.get(), printSettings_);
}

std::string PrintSession::choice(CFStringRef mainKeyword) const {
    CFMutableDictionaryRef pairs = nullptr;
    PMTicketGetPPDDict(printSettings_, kPMTopLevel, &pairs);
    const CFTypeRef option = CFDictionaryGetValue(pairs, mainKeyword);
    return CFGetTypeID(option) == CFStringGetTypeID() ? utf8Text(static_cast<CFStringRef>(option)) : std::string();
}

void PrintSession::setChoice(CFStringRef mainKeyword, CFStringRef option) {
    CFMutableDictionaryRef pairs = nullptr;
    if (PMTicketGetPPDDict(printSettings_, kPMTopLevel, &pairs) == noErr) {
        CFDictionarySetValue(pairs, mainKeyword, option);
    }
}

void PrintSession::updatePaperRectangle() {
    PMPaper paper{};
    if (PMPrinterGetPaper(printer_.get(), makeString(choice(CFSTR("PageSize"))).get(), &paper) != noErr) {
        return;
    }
    const std::array<double, 4> sides{0, 0, paper.height, paper.width};  // top, left, bottom, right
    const auto rectangle = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 4, &kCFTypeArrayCallBacks));
    for (const double side : sides) {
        CFArrayAppendValue(rectangle.get(),
                           CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, kCFNumberDoubleType, &side)).get());
    }
    PMTicketSetCFArray(pageFormat_, kHostClient, kPMUnadjustedPaperRectKey, rectangle.get(), kPMUnlocked);
}

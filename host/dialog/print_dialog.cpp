#include "host/dialog/print_dialog.h"

#include "host/dialog/dialog_printing.h"
#include "host/dialog/notice.h"
#include "host/dialog/start_marks.h"
#include "host/dialog/window_place.h"
#include "host/job/print_job.h"
#include "host/script/panels.h"
#include "host/script/watchdog.h"
#include "host/settings/document_paper.h"
#include "host/settings/left_out.h"
#include "host/settings/remedy.h"
#include "host/settings/summary.h"
#include "host/settings/texts.h"
#include "platform/files/temporary_files.h"
#include "platform/foundation/message.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Navigation.h"
#include "platform/toolbox/Windows.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <iterator>

namespace {

constexpr OSType kCommandOK = FourCharCode("ok  ");
constexpr OSType kCommandCancel = FourCharCode("not!");
constexpr OSType kCommandShowConflict = FourCharCode("Cshw");
constexpr OSType kCommandHelp = FourCharCode("Thlp");

constexpr double kSecondsOfPause = 0.1;

}  // namespace

// ---- Making

Result<std::unique_ptr<PrintDialog>> PrintDialog::make(CFBundleRef bundle, PluginHost& plugin, DialogWindow window,
                                                       Setup setup) {
    std::unique_ptr<PrintDialog> dialog(new PrintDialog(bundle, plugin, std::move(window), std::move(setup)));
    dialog->installHandlers();
    const JobSetup& first = dialog->setup_.job;
    const PrinterChoice& choice = dialog->setup_.printerChoice;
    dialog->printers_.emplace(dialog->control(kPrinterMenu), bundle, choice,
                              choice.kind == PrinterChoice::Kind::sample
                                  ? utf8Text(localized(bundle, CFSTR("Sample Printer"), first.printer.name()).get())
                                  : first.printer.name());
    dialog->general_.emplace(dialog->window_, bundle, first.document,
                             [dialog = dialog.get()](const auto& change) { dialog->changeShared(change); });
    dialog->makePresets();
    dialog->tabs_.emplace(dialog->window_, plugin);
    dialog->conflicts_.emplace(dialog->window_, bundle, first.document.pageCount, first.target.way);
    dialog->preview_.emplace(dialog->window_, bundle, first.document, dialog->setup_.pageDrawer);
    dialog->printer_ = first.printer;
    dialog->installed_ = first.installedOptions;
    const auto start = dialog->startSession(first.settings);
    if (start == PluginHost::Start::refused && first.printer.isOfMaker()) {
        return Failure{ExitStatus::unusableInput,
                       plugin.path() + ": " + messageText("its settings panels do not start")};
    }
    dialog->makeDocuments();
    markStart("panels");
    return dialog;
}

PrintDialog::PrintDialog(CFBundleRef bundle, PluginHost& plugin, DialogWindow window, Setup setup)
    : bundle_(bundle), plugin_(plugin), setup_(std::move(setup)), window_(window.release()) {}

PrintDialog::~PrintDialog() {
    RemoveEventLoopTimer(pause_);
    plugin_.stop(noErr);
    DisposeWindow(window_);
}

void PrintDialog::installHandlers() {
    // Before the maker's panels are there: their handlers come first and may hold the dialog open.
    static constexpr std::array kEvents{EventTypeSpec{kEventClassControl, kEventControlHit},
                                        EventTypeSpec{kEventClassCommand, kEventCommandProcess},
                                        EventTypeSpec{kEventClassWindow, kEventWindowShown}};
    InstallWindowEventHandler(window_, handleEvent, kEvents.size(), kEvents.data(), this, nullptr);
    InstallEventLoopIdleTimer(
        kSecondsOfPause, [](EventLoopTimerRef, void* self) { static_cast<PrintDialog*>(self)->settle(); }, this,
        &pause_);
}

void PrintDialog::makePresets() {
    presets_.emplace(window_, bundle_,
                     DialogPresets::Dialog{[this]() -> PrintSession& {
                                               takeMakersSettings();
                                               return *session_;
                                           },
                                           [this](const JobSettings& settings) { startSession(settings); },
                                           [this] { renewPrinter(); }},
                     setup_.job.origin);
}

void PrintDialog::makeDocuments() {
    setup_.documents.scripted = setup_.scripted;
    general_->setDocumentCount(setup_.documents.paths.size());
    general_->setCurrentPage(setup_.job.currentPage);
    general_->showDocument(setup_.job.document);
    if (setup_.preparing) {
        general_->offerPages(setup_.preparing->pages);
    }
    preparedFor_ = paperOf(*session_);
    documents_.emplace(window_, bundle_, std::move(setup_.documents),
                       DialogDocuments::Dialog{[this] { return preparedFor_ = paperOf(*session_); },
                                               [this](const Document& document) { showDocument(document); },
                                               [this](const std::string& sentence) { tellOfDocument(sentence); },
                                               [this](const Failure& failure) {
                                                   end({failure.status, failure.line});
                                               }});
}

/// The paper may follow the document, unless the user has chosen another one meanwhile.
void PrintDialog::showDocument(const Document& document) {
    setup_.job.document = document;
    isOtherFileTold_ = false;
    const Size paper = paperOf(*session_);
    const bool isPaperKept = paper.width != preparedFor_.width || paper.height != preparedFor_.height;
    changeShared([&] {
        session_->setJobName(document.name);
        if (isPaperKept && document.pageCount > 0) {
            session_->setFirstPage(document.pages.sizes.front());
        } else {
            followDocument(session_.get(), document);
        }
    });
    general_->setDocumentCount(documents_->count());
    general_->showDocument(setup_.job.document);
    conflicts_->setPageCount(document.pageCount);
    conflicts_->show(*session_);
    showSummary();
    preview_->showDocument(*session_);
}

void PrintDialog::tellOfDocument(const std::string& sentence) {
    general_->tell(sentence);
    preview_->tell(sentence);
}

void PrintDialog::tellOfOtherFile() {
    const auto& file = setup_.job.document.file;
    if (!isOtherFileTold_ && file && file->isOutdated()) {
        isOtherFileTold_ = true;
        general_->tell(utf8Text(localized(bundle_, CFSTR("Document Outdated")).get()));
    }
}

PluginHost::Start PrintDialog::startSession(const JobSettings& settings) {
    plugin_.stop(noErr);
    preview_->forget();
    session_ = std::make_unique<PrintSession>(printer_, settings, installed_.get(), setup_.job.document.name);
    followDocument(session_.get(), setup_.job.document);
    general_->show(*session_);
    conflicts_->forget();
    // For others the plug-in would say in its own words, on standard error, what the window tells.
    const auto start =
        printer_.isOfMaker() ? plugin_.start(control(kMakersPlace), session_->get()) : PluginHost::Start::refused;
    const bool hasPanels = start == PluginHost::Start::started;
    tabs_->fill();
    SetControlVisibility(control(kMakersPlace), hasPanels, true);
    SetControlVisibility(control(kNoMakersPanels), !hasPanels, true);
    if (!hasPanels) {
        setStaticText(control(kNoMakersPanels), localized(bundle_, CFSTR("No Maker's Panels"), printer_.name()));
    }
    showPrinterNote();
    presets_->begin(*session_);
    showSummary();
    if (IsWindowVisible(window_)) {
        conflicts_->lookForChanges(*session_);
    }
    conflicts_->show(*session_);
    preview_->show(*session_);
    return start;
}

// ---- Events

OSStatus PrintDialog::handleEvent(EventHandlerCallRef, EventRef event, void* self) {
    auto& dialog = *static_cast<PrintDialog*>(self);
    switch (GetEventClass(event)) {
        case kEventClassControl: {
            ControlRef control = nullptr;
            GetEventParameter(event, kEventParamDirectObject, typeControlRef, nullptr, sizeof control, nullptr,
                              &control);
            return dialog.handleHit(control);
        }
        case kEventClassCommand: {
            HICommand command{};
            GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr,
                              &command);
            return dialog.handleCommand(command.commandID);
        }
        default:
            dialog.handleShown();
            return noErr;
    }
}

OSStatus PrintDialog::handleHit(ControlRef control) {
    ControlID id{};
    GetControlID(control, &id);
    if (id.signature == kHostSignature && preview_->handleHit(id.id)) {
        return noErr;  // to look changes nothing
    }
    const auto isOf = [&id](const ControlID& one) { return id.signature == one.signature && id.id == one.id; };
    const bool isDocumentMenu = isOf({kHostSignature, kDocumentMenu});
    if (!isDocumentMenu) {
        conflicts_->used(id);
    }
    if (!isDocumentMenu && !isOf(script::kPanelSelector) && !isOf(script::kExtensionTabs)) {
        presets_->touch();
    }
    if (id.signature != kHostSignature) {
        general_->showShared();  // one of the maker's controls: it may have written a setting that stands here too
        return eventNotHandledErr;
    }
    switch (id.id) {
        case kDocumentMenu:
            documents_->choose();
            return noErr;
        case kMakersTabs:
            tabs_->choose();
            general_->showShared();
            return noErr;
        case kPrinterMenu:
            printerChosen();
            return noErr;
        case kPresetMenu:
            presets_->choose();
            return noErr;
        case kConflictButton:
        case kOtherRemedy:
            remedyChosen(conflicts_->takeRemedy(static_cast<HostControl>(id.id)));
            return noErr;
        case kUndoChange:
            undoChange();
            return noErr;
        case kSavePDF:
            savePDF();
            return noErr;
        default:
            return general_->handleHit(id.id) ? noErr : eventNotHandledErr;
    }
}

OSStatus PrintDialog::handleCommand(OSType command) {
    switch (command) {
        case kCommandOK:
            accept();
            return noErr;
        case kCommandCancel:
            end({ExitStatus::cancelled, {}});
            return noErr;
        case kCommandShowConflict:
            conflicts_->goToConflict();
            return noErr;
        case kCommandHelp:  // the maker's panels have pages of their own, and come first
            return plugin_.showHelp(CFSTR("printing.html"));
        default:
            return presets_->act(command) ? noErr : eventNotHandledErr;
    }
}

void PrintDialog::handleShown() {
    markStart("first-frame");
    if (startIsMeasured() && !firstPictureIsMeasured()) {
        end({ExitStatus::cancelled, {}});
        return;
    }
    preview_->begin([this] {
        markStart("first-picture");
        if (startIsMeasured()) {
            end({ExitStatus::cancelled, {}});
        }
    });
    conflicts_->lookForChanges(*session_);
    documents_->begin();
    presets_->refresh();
    sweepTemporaryFolder();
    if (auto shown = std::exchange(shown_, nullptr)) {
        printers_->fill(std::move(shown));
    }
}

void PrintDialog::settle() {
    if (!outcome_ && FrontNonFloatingWindow() == window_) {
        enablePrinting(general_->takePages() == PageRangeFault::none);
        takeMakersSettings();
        presets_->settle(*session_, script::shownPanel(window_));
        showSummary();
        preview_->show(*session_);
        tellOfOtherFile();
    }
}

void PrintDialog::finishPictures() {
    if (!outcome_ && FrontNonFloatingWindow() == window_) {
        preview_->finish();
    }
}

/// What Print does where there is no queue.
void PrintDialog::showPrinterNote() const {
    const JobTarget& target = setup_.job.target;
    const bool isSample = printers_->settled().kind == PrinterChoice::Kind::sample;
    const auto note =
        isNowhere() ? localized(bundle_, isSample ? CFSTR("Printer Is Sample") : CFSTR("Printer Without Queue"))
        : target.way == JobWay::queue ? CFRef<CFStringRef>()
                                      : localized(bundle_, CFSTR("Printer Writes File"),
                                                  shortened(std::filesystem::path(target.file).filename().string()));
    setStaticText(control(kPrinterNote), note);
    SetControlVisibility(control(kPrinterNote), static_cast<bool>(note), true);
    enablePrinting(true);
}

void PrintDialog::enablePrinting(bool hasPages) const {
    // Who asks for the settings in a file has a use for Print all the same.
    const bool canPrint = hasPages && (!isNowhere() || !setup_.job.ticketOut.empty());
    canPrint ? EnableControl(control(kPrint)) : DisableControl(control(kPrint));
    hasPages && !setup_.preparing ? EnableControl(control(kSavePDF)) : DisableControl(control(kSavePDF));
}

void PrintDialog::showSummary() {
    std::string lines;
    for (const std::string& line : summarize(*session_, setup_.job.document.pageCount, bundle_)) {
        lines += (lines.empty() ? "" : "\n") + line;
    }
    if (lines != summary_) {
        setFieldText(control(kSummary), makeString(lines));
        summary_ = lines;
    }
}

// ---- What the user does

void PrintDialog::takeMakersSettings() {
    plugin_.copyControlsToTickets();
    session_->updatePaperRectangle();
    general_->showShared();
    conflicts_->lookForChanges(*session_);
    conflicts_->show(*session_);
}

void PrintDialog::changeShared(const std::function<void()>& change) {
    plugin_.copyControlsToTickets();
    change();
    session_->updatePaperRectangle();
    plugin_.copyTicketsToControls();
    general_->showShared();
}

void PrintDialog::printerChosen() {
    if (printers_->chosen() == printers_->settled()) {
        return;
    }
    Result<Printer> printer = openPrinter(printers_->chosen());
    if (!printer) {
        showNotice(kCFUserNotificationCautionAlertLevel, localized(bundle_, CFSTR("Printer Unusable Header")),
                   makeString(printer.failure().line));
        printers_->revert();
        return;
    }
    printers_->settle();
    takeMakersSettings();
    const JobSettings settings = presets_->settingsForOtherPrinter(*session_);
    printer_ = *printer;
    installed_ = nullptr;
    startSession(settings);
}

void PrintDialog::renewPrinter() {
    if (Result<Printer> printer = openPrinter(printers_->settled())) {
        printer_ = *printer;
    }
}

bool PrintDialog::acceptLeftOut(JobWay way) const {
    std::vector<std::string> sentences = tellLeftOut(*session_, setup_.job.document.pageCount, way, bundle_);
    std::ranges::move(tellJobFaults(*session_, way, bundle_), std::back_inserter(sentences));
    if (sentences.empty()) {
        return true;
    }
    return goesOnDespiteNotice(localized(bundle_, CFSTR("Left Out Header")), makeString(listed(bundle_, sentences)),
                               localized(bundle_, CFSTR("Left Out Go Back")),
                               localized(bundle_, CFSTR("Left Out Print")));
}

void PrintDialog::remedyChosen(const std::vector<SettingChange>& changes) {
    changeShared([&] { applyRemedy(changes, session_.get()); });
    takeMakersSettings();
}

void PrintDialog::undoChange() {
    const ChangeWatch::Before before = conflicts_->takeBackChange();
    // First, since a panel that is shown might change the settings again.
    if (before.panel != script::shownPanel(window_)) {
        script::showPanel(window_, before.panel);
    }
    presets_->putBack(before.settings);
    ControlRef used = nullptr;
    if (before.control && GetControlByID(window_, &*before.control, &used) == noErr) {
        SetKeyboardFocus(window_, used);
    }
}

bool PrintDialog::acceptConflicts() {
    switch (conflicts_->askAboutConflicts()) {
        case ConflictLine::Answer::print:
            return true;
        case ConflictLine::Answer::printWithRemedy:
            remedyChosen(conflicts_->report().remedy);
            return true;
        default:
            return false;
    }
}

void PrintDialog::accept() {
    takeMakersSettings();
    const JobTarget& target = setup_.job.target;
    if (hasDocument() && general_->takePageRange() && acceptConflicts() && acceptLeftOut(target.way)) {
        setup_.preparing ? handOver() : print(target);
    }
}

void PrintDialog::handOver() {
    if (const auto failure = setup_.preparing->take(*session_, general_->pagesAsked())) {
        showNotice(kCFUserNotificationStopAlertLevel, localized(bundle_, CFSTR("Settings Not Written Header")),
                   makeString(*failure));
        end({ExitStatus::unusableInput, *failure});
        return;
    }
    presets_->rememberSent(*session_);
    end({ExitStatus::success, {}});
}

void PrintDialog::savePDF() {
    takeMakersSettings();
    if (!hasDocument() || !general_->takePageRange() || !acceptLeftOut(JobWay::pdf)) {
        return;
    }
    const auto kindName = localized(bundle_, CFSTR("PDF Files"));
    const NavFileKind kind{kindName.get(), CFSTR("*.pdf")};
    const std::filesystem::path name(setup_.job.document.name);
    const auto proposed = localized(bundle_, CFSTR("PDF File Name"), name.stem().string());
    CFURLRef chosen = nullptr;
    if (NavChooseNewFile(localized(bundle_, CFSTR("Save as PDF Title")).get(), &kind, proposed.get(), &chosen) ==
        noErr) {
        const auto file = CFRef<CFURLRef>::adopt(chosen);
        print({JobWay::pdf, filePath(file.get())});
    }
}

bool PrintDialog::hasDocument() {
    if (documents_->count() == 0) {
        return true;
    }
    std::string fault;
    const auto brought = documents_->bring(documents_->shown(), &fault);
    if (brought == DialogDocuments::Brought::failed) {
        showNotice(kCFUserNotificationStopAlertLevel, localized(bundle_, CFSTR("Job Failed Header")),
                   makeString(fault));
    }
    if (brought == DialogDocuments::Brought::failed && (setup_.scripted || documents_->count() == 1)) {
        end({ExitStatus::unusableInput, fault});
    }
    return brought == DialogDocuments::Brought::ready;
}

void PrintDialog::print(const JobTarget& target) {
    script::stopWatchdog();  // a long document may take its time
    const DialogPrinting printing{*documents_, *general_, *session_, setup_.job.document, bundle_, setup_.scripted};
    const bool isOneJob = target.way == JobWay::pdf || documents_->count() <= 1;
    const JobOutcome job = isOneJob ? printShown(printing, target) : printAll(printing, target);
    if (job.isCancelled) {
        return;
    }
    if (!job.failure.empty()) {
        showNotice(kCFUserNotificationStopAlertLevel, localized(bundle_, CFSTR("Job Failed Header")),
                   makeString(job.failure));
        if (!setup_.scripted) {
            // The settings are still there, for another printer or another try.
            if (job.isPrinterChanged) {
                renewPrinter();
                startSession(session_->copySettings());
            }
            return;
        }
    } else if (!job.obstacle.empty()) {
        showNotice(kCFUserNotificationNoteAlertLevel, localized(bundle_, CFSTR("Job Waits Header")),
                   makeString(job.obstacle));
    }
    if (job.failure.empty()) {
        presets_->rememberSent(*session_);
    }
    const auto notWritten =
        setup_.job.ticketOut.empty() ? std::nullopt : writeSettingsFile(session_->copySettings(), setup_.job.ticketOut);
    if (notWritten) {
        showNotice(kCFUserNotificationCautionAlertLevel, localized(bundle_, CFSTR("Settings Not Written Header")),
                   makeString(*notWritten));
    }
    if (!job.failure.empty()) {
        end({ExitStatus::notSent, job.failure});
    } else if (notWritten) {
        end({ExitStatus::unusableInput, *notWritten});
    } else {
        end({ExitStatus::success, {}});
    }
}

// ---- Beginning and end

PrintDialog::Outcome PrintDialog::run(std::function<void()> shown) {
    shown_ = std::move(shown);
    if (setup_.scripted) {
        preview_->arrange(true);
    } else {
        const WindowPlace place = rememberedPlace(window_);
        preview_->arrange(place.hasPreview);
        if (place.bounds) {
            SetWindowContentBounds(window_, &*place.bounds);
        }
    }
    RunAppModalLoopForWindow(window_);
    Outcome outcome = outcome_.value_or(Outcome{ExitStatus::cancelled, {}});
    plugin_.stop(noErr);
    return outcome;
}

void PrintDialog::end(Outcome outcome) {
    if (outcome_) {
        return;
    }
    outcome_ = std::move(outcome);
    if (!setup_.scripted && !startIsMeasured()) {
        rememberPlace(window_, preview_->isWanted());
    }
    HideWindow(window_);
    QuitAppModalLoopForWindow(window_);
}

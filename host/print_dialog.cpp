#include "host/print_dialog.h"

#include "host/page_range.h"
#include "host/print_job.h"
#include "host/script/text.h"
#include "host/script/watchdog.h"
#include "host/start_marks.h"
#include "host/texts.h"
#include "host/window_place.h"
#include "platform/toolbox/Menus.h"
#include "platform/toolbox/Notices.h"

#include <array>

namespace {

#define kCollateKeyword CFSTR("Collate")
#define kPageSizeKeyword CFSTR("PageSize")

constexpr OSType kCommandOK = FourCharCode("ok  ");
constexpr OSType kCommandCancel = FourCharCode("not!");

// The items of the radio group of pages.
constexpr SInt32 kAllPages = 1;
constexpr SInt32 kSomePages = 2;

/// What fits on one line of the dialog; of a longer name the middle is left out.
std::string shortened(const std::string& name) {
    constexpr std::size_t kMost = 38;
    constexpr std::size_t kEnd = 14;
    std::u16string units(static_cast<std::size_t>(CFStringGetLength(cfString(name).get())), u'\0');
    if (units.size() <= kMost) {
        return name;
    }
    CFStringGetCharacters(cfString(name).get(), CFRangeMake(0, static_cast<CFIndex>(units.size())), units.data());
    // A pair of surrogates that is cut apart would be no text any more.
    const auto isSecondHalf = [](char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; };
    std::size_t head = kMost - kEnd;
    std::size_t tail = units.size() - kEnd;
    head -= isSecondHalf(units[head]) ? 1 : 0;
    tail += isSecondHalf(units[tail]) ? 1 : 0;
    units = units.substr(0, head) + u"…" + units.substr(tail);
    return utf8(CFRef<CFStringRef>::adopt(
                    CFStringCreateWithCharacters(nullptr, units.data(), static_cast<CFIndex>(units.size())))
                    .get());
}

std::string fieldText(ControlRef field) {
    CFStringRef text = nullptr;
    GetControlData(field, kControlEntireControl, kControlEditTextCFStringTag, sizeof text, &text, nullptr);
    return utf8(CFRef<CFStringRef>::adopt(text).get());
}

void setFieldText(ControlRef field, CFStringRef text) {
    SetControlData(field, kControlEntireControl, kControlEditTextCFStringTag, sizeof text, &text);
}

CFStringRef faultText(PageRangeFault fault) {
    switch (fault) {
        case PageRangeFault::order:
            return CFSTR("Page Range Order");
        case PageRangeFault::beyondDocument:
            return CFSTR("Page Range Beyond Document");
        default:
            return CFSTR("Page Range Syntax");
    }
}

}  // namespace

// ---- Making

Result<std::unique_ptr<PrintDialog>> PrintDialog::make(CFBundleRef bundle, PluginHost& plugin, Setup setup) {
    std::unique_ptr<PrintDialog> dialog(new PrintDialog(bundle, plugin, std::move(setup)));
    if (auto failure = dialog->openWindow()) {
        return *failure;
    }
    markStart("window");
    dialog->installHandlers();
    const Setup& first = dialog->setup_;
    dialog->printers_.emplace(dialog->control(kPrinterMenu), first.printerChoice, first.printer.name());
    dialog->showDocument();
    const auto start = dialog->startSession(first.printer, first.settings, first.installedOptions.get());
    if (start == PluginHost::Start::refused && first.printer.isOfMaker()) {
        return Failure{ExitStatus::unusableInput, plugin.path() + ": its settings panels do not start"};
    }
    markStart("panels");
    return dialog;
}

PrintDialog::PrintDialog(CFBundleRef bundle, PluginHost& plugin, Setup setup)
    : bundle_(bundle), plugin_(plugin), setup_(std::move(setup)) {}

PrintDialog::~PrintDialog() {
    plugin_.stop(noErr);
    DisposeWindow(window_);
}

std::optional<Failure> PrintDialog::openWindow() {
    IBNibRef nib = nullptr;
    OSStatus status = CreateNibReferenceWithCFBundle(bundle_, CFSTR("PrintDialog"), &nib);
    if (status == noErr) {
        status = CreateWindowFromNib(nib, CFSTR("PrintDialog"), &window_);
        DisposeNibReference(nib);
    }
    switch (status) {
        case noErr:
            return std::nullopt;
        case kNibNotFoundErr: {
            const auto url = CFRef<CFURLRef>::adopt(CFBundleCopyBundleURL(bundle_));
            std::array<UInt8, 4096> path{};
            CFURLGetFileSystemRepresentation(url.get(), true, path.data(), static_cast<CFIndex>(path.size()));
            return unusable(reinterpret_cast<const char*>(path.data()), "its nib PrintDialog is missing");
        }
        default:
            // The toolbox has told already which file does not load, and why.
            return Failure{ExitStatus::unusableInput, {}};
    }
}

void PrintDialog::installHandlers() {
    // Before the maker's panels are there: their handlers come first and may hold the dialog open.
    static constexpr std::array kEvents{EventTypeSpec{kEventClassControl, kEventControlHit},
                                        EventTypeSpec{kEventClassCommand, kEventCommandProcess},
                                        EventTypeSpec{kEventClassWindow, kEventWindowShown}};
    InstallWindowEventHandler(window_, handleEvent, kEvents.size(), kEvents.data(), this, nullptr);
    static constexpr EventTypeSpec kTyping{kEventClassTextInput, kEventTextInputUnicodeForKeyEvent};
    InstallControlEventHandler(control(kPageRangeField), handleRangeTyping, 1, &kTyping, this, nullptr);
}

ControlRef PrintDialog::control(HostControl number) const {
    const ControlID id{kHostSignature, number};
    ControlRef found = nullptr;
    GetControlByID(window_, &id, &found);
    return found;
}

void PrintDialog::setText(HostControl number, const CFRef<CFStringRef>& text) const {
    const CFStringRef string = text.get();
    SetControlData(control(number), kControlEntireControl, kControlStaticTextCFStringTag, sizeof string, &string);
}

CFOptionFlags PrintDialog::tell(CFOptionFlags level, const CFRef<CFStringRef>& header,
                                const CFRef<CFStringRef>& message) const {
    CFOptionFlags response = 0;
    CFUserNotificationDisplayAlert(0, level, nullptr, nullptr, nullptr, header.get(), message.get(), nullptr, nullptr,
                                   nullptr, &response);
    return response;
}

PluginHost::Start PrintDialog::startSession(const Printer& printer, const JobSettings& settings,
                                            CFDictionaryRef installed) {
    plugin_.stop(noErr);
    session_ = std::make_unique<PrintSession>(printer, settings, installed, setup_.document.name);
    printer_ = printer;
    fillPaperSizes();
    showSettings();
    const auto start = plugin_.start(control(kMakersPlace), session_->get());
    const bool hasPanels = start == PluginHost::Start::started;
    SetControlVisibility(control(kMakersPlace), hasPanels, true);
    SetControlVisibility(control(kNoMakersPanels), !hasPanels, true);
    if (!hasPanels) {
        setText(kNoMakersPanels, localized(bundle_, CFSTR("No Maker's Panels"), printer.name()));
    }
    return start;
}

// ---- Showing

void PrintDialog::showDocument() const {
    const std::int64_t pages = setup_.document.pageCount;
    setText(kDocumentName, cfString(shortened(setup_.document.name)));
    setText(kDocumentPages, pages == 1 ? localized(bundle_, CFSTR("One Page"))
                                       : localized(bundle_, CFSTR("Number of Pages"), std::to_string(pages)));
}

void PrintDialog::showSettings() {
    SetControl32BitMinimum(control(kCopies), 1);
    SetControl32BitMaximum(control(kCopies), kMostCopies);
    SetControl32BitValue(control(kCopies), session_->copies());
    const std::string range = session_->pageRange();
    SetControl32BitValue(control(kPages), range.empty() ? kAllPages : kSomePages);
    setFieldText(control(kPageRangeField), cfString(range).get());
    SetControlVisibility(
        control(kCollate),
        session_->choices().offers("Collate", "True") && session_->choices().offers("Collate", "False"), true);
    showSharedSettings();
}

void PrintDialog::showSharedSettings() {
    SetControl32BitValue(control(kCollate), session_->choice(kCollateKeyword) == "True" ? 1 : 0);
    SetControl32BitValue(control(kOrientation), session_->orientation());
    const auto chosen = session_->choice(kPageSizeKeyword);
    SInt32 item = 0;
    for (CFIndex i = 0; i < PMPrinterCountPapers(printer_.get()); ++i) {
        PMPaper paper{};
        PMPrinterGetIndPaper(printer_.get(), i, &paper);
        item = utf8(paper.name) == chosen ? static_cast<SInt32>(i) + 1 : item;
    }
    SetControl32BitValue(control(kPaperSize), item);
}

void PrintDialog::fillPaperSizes() {
    const MenuRef menu = GetControlPopupMenuHandle(control(kPaperSize));
    DeleteMenuItems(menu, 1, CountMenuItems(menu));
    for (CFIndex i = 0; i < PMPrinterCountPapers(printer_.get()); ++i) {
        PMPaper paper{};
        PMPrinterGetIndPaper(printer_.get(), i, &paper);
        AppendMenuItemTextWithCFString(menu, paper.title, 0, 0, nullptr);
    }
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
    struct HitRow {
        HostControl number;
        void (PrintDialog::*act)();
    };
    // clang-format off
    static constexpr HitRow kHits[] = {
        // control, what happens
        {kPrinterMenu, &PrintDialog::printerChosen},
        {kCopies, &PrintDialog::copiesChanged},
        {kCollate, &PrintDialog::collateChanged},
        {kPages, &PrintDialog::pagesChanged},
        {kPaperSize, &PrintDialog::paperSizeChosen},
        {kOrientation, &PrintDialog::orientationChosen},
    };
    // clang-format on
    ControlID id{};
    GetControlID(control, &id);
    if (id.signature != kHostSignature) {
        showSharedSettings();  // one of the maker's controls: it may have written a setting that stands here too
        return eventNotHandledErr;
    }
    for (const HitRow& row : kHits) {
        if (row.number == id.id) {
            (this->*row.act)();
            return noErr;
        }
    }
    return eventNotHandledErr;
}

OSStatus PrintDialog::handleCommand(OSType command) {
    switch (command) {
        case kCommandOK:
            accept();
            return noErr;
        case kCommandCancel:
            end({ExitStatus::cancelled, {}});
            return noErr;
        default:
            return eventNotHandledErr;
    }
}

void PrintDialog::handleShown() {
    markStart("first-frame");
    if (startIsMeasured()) {
        end({ExitStatus::cancelled, {}});
        return;
    }
    printers_->addQueues();
    if (auto shown = std::exchange(shown_, nullptr)) {
        shown();
    }
}

/// Who types a range wants it.
OSStatus PrintDialog::handleRangeTyping(EventHandlerCallRef, EventRef, void* self) {
    SetControl32BitValue(static_cast<PrintDialog*>(self)->control(kPages), kSomePages);
    return eventNotHandledErr;
}

// ---- What the user does

/// The maker's panels may show the same setting: they write all of theirs first, and read the changed one afterwards.
template <typename Change>
void PrintDialog::changeSharedSetting(Change change) {
    plugin_.copyControlsToTickets();
    change();
    session_->updatePaperRectangle();
    plugin_.copyTicketsToControls();
    showSharedSettings();
}

void PrintDialog::printerChosen() {
    if (printers_->chosen() == printers_->settled()) {
        return;
    }
    Result<Printer> printer = openPrinter(printers_->chosen());
    if (!printer) {
        tell(kCFUserNotificationCautionAlertLevel, localized(bundle_, CFSTR("Printer Unusable Header")),
             cfString(printer.failure().line));
        printers_->revert();
        return;
    }
    printers_->settle();
    plugin_.copyControlsToTickets();
    startSession(*printer, session_->copySettings(), nullptr);
}

void PrintDialog::copiesChanged() {
    session_->setCopies(GetControl32BitValue(control(kCopies)));
}

void PrintDialog::collateChanged() {
    const bool collate = GetControl32BitValue(control(kCollate)) == 1;
    changeSharedSetting([&] { session_->setChoice(kCollateKeyword, collate ? CFSTR("True") : CFSTR("False")); });
}

void PrintDialog::pagesChanged() {
    if (GetControl32BitValue(control(kPages)) == kSomePages) {
        SetKeyboardFocus(window_, control(kPageRangeField));
    }
}

void PrintDialog::paperSizeChosen() {
    PMPaper paper{};
    if (PMPrinterGetIndPaper(printer_.get(), GetControl32BitValue(control(kPaperSize)) - 1, &paper) == noErr) {
        changeSharedSetting([&] { session_->setChoice(kPageSizeKeyword, paper.name); });
    }
}

void PrintDialog::orientationChosen() {
    const SInt32 orientation = GetControl32BitValue(control(kOrientation));
    changeSharedSetting([&] { session_->setOrientation(orientation); });
}

bool PrintDialog::takePageRange() {
    if (GetControl32BitValue(control(kPages)) == kAllPages) {
        session_->setPageRange({});
        return true;
    }
    const PageRange range = readPageRange(fieldText(control(kPageRangeField)), setup_.document.pageCount);
    if (range.fault == PageRangeFault::none) {
        session_->setPageRange(range.pages);
        return true;
    }
    tell(kCFUserNotificationCautionAlertLevel, localized(bundle_, CFSTR("Page Range Header")),
         localized(bundle_, faultText(range.fault), std::to_string(setup_.document.pageCount)));
    SetKeyboardFocus(window_, control(kPageRangeField));
    return false;
}

void PrintDialog::accept() {
    plugin_.copyControlsToTickets();
    session_->updatePaperRectangle();
    showSharedSettings();
    if (!takePageRange()) {
        return;
    }
    script::stopWatchdog();  // a long document may take its time
    const auto notSent = sendJob(setup_.document, printer_, *session_, setup_.jobOut, bundle_);
    if (notSent) {
        tell(kCFUserNotificationStopAlertLevel, localized(bundle_, CFSTR("Job Failed Header")), cfString(*notSent));
        if (!setup_.scripted) {
            return;  // the settings are still there, for another printer or another try
        }
    }
    const auto notWritten =
        setup_.ticketOut.empty() ? std::nullopt : writeSettingsFile(session_->copySettings(), setup_.ticketOut);
    if (notWritten) {
        tell(kCFUserNotificationCautionAlertLevel, localized(bundle_, CFSTR("Settings Not Written Header")),
             cfString(*notWritten));
    }
    if (notSent) {
        end({ExitStatus::notSent, *notSent});
    } else if (notWritten) {
        end({ExitStatus::unusableInput, *notWritten});
    } else {
        end({ExitStatus::success, {}});
    }
}

// ---- Beginning and end

PrintDialog::Outcome PrintDialog::run(std::function<void()> shown) {
    shown_ = std::move(shown);
    if (!setup_.scripted) {
        restoreWindowPlace(window_);
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
        rememberWindowPlace(window_);
    }
    HideWindow(window_);
    QuitAppModalLoopForWindow(window_);
}

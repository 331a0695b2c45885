// The print dialog: the settings that every printer has, and beside them the maker's panels.
#pragma once

#include "host/dialog/conflict_line.h"
#include "host/dialog/dialog_controls.h"
#include "host/dialog/dialog_documents.h"
#include "host/dialog/dialog_presets.h"
#include "host/dialog/dialog_window.h"
#include "host/dialog/extension_tabs.h"
#include "host/dialog/general_settings.h"
#include "host/dialog/plugin_host.h"
#include "host/dialog/preview_column.h"
#include "host/dialog/printer_menu.h"
#include "host/job/job_setup.h"
#include "host/settings/print_session.h"
#include "platform/foundation/CFBundle.h"
#include "platform/toolbox/Events.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

class PrintDialog {
public:
    /// For a program that wants settings, and makes its document by them.
    struct Preparing {
        PagesOffered pages;
        /// Takes what was chosen; why that is not possible, in a line.
        std::function<std::optional<std::string>(const PrintSession& session, PagesAsked pages)> take;
    };
    struct Setup {
        JobSetup job;                 // its document is what there is of the first one
        PrinterChoice printerChoice;  // of the job's printer, which is shown first
        std::string pageDrawer;       // the program that draws pages
        DialogDocuments::Setup documents;
        bool scripted = false;
        std::optional<Preparing> preparing;  // in place of a document
    };

    /// How the dialog ended; the line is empty unless something failed.
    struct Outcome {
        ExitStatus status;
        std::string line;
    };

    /// Fills the window and starts the maker's panels in it. Bundle and plug-in must outlive the dialog.
    static Result<std::unique_ptr<PrintDialog>> make(CFBundleRef bundle, PluginHost& plugin, DialogWindow window,
                                                     Setup setup);
    ~PrintDialog();
    PrintDialog(const PrintDialog&) = delete;
    PrintDialog& operator=(const PrintDialog&) = delete;

    WindowRef window() const { return window_; }

    /// Shows the dialog until it ends. `shown` is called when its first frame is on the screen and the queues are in
    /// its menu.
    Outcome run(std::function<void()> shown);

    /// Ends the dialog as if by its Cancel button, with another status or line where that is said. Only the first end
    /// of a dialog counts.
    void end(Outcome outcome);

    /// A sentence for each conflict between the settings, as they were when the user last paused.
    std::vector<std::string> conflicts() const { return conflicts_->report().sentences(); }

    /// Brings what the window says about the settings up to date: done whenever the user pauses.
    void settle();
    /// Waits for what the window still lacks: the preview's picture.
    void finishPictures();

private:
    PrintDialog(CFBundleRef bundle, PluginHost& plugin, DialogWindow window, Setup setup);

    static OSStatus handleEvent(EventHandlerCallRef next, EventRef event, void* self);
    OSStatus handleHit(ControlRef control);
    OSStatus handleCommand(OSType command);
    void handleShown();

    void installHandlers();
    ControlRef control(HostControl number) const { return hostControl(window_, number); }

    void makePresets();
    void makeDocuments();
    void showDocument(const Document& document);
    void tellOfDocument(const std::string& sentence);
    /// Tells when the document's file is not any more what is shown, and printed.
    void tellOfOtherFile();
    /// Makes a session for the printer from the settings, and starts the maker's panels on it.
    PluginHost::Start startSession(const JobSettings& settings);
    /// Changes the session's settings: the maker's panels write all of theirs first, and read the changed ones
    /// afterwards.
    void changeShared(const std::function<void()>& change);
    void showPrinterNote() const;
    /// Print and its kin are for pages that there are, and for where they can go.
    void enablePrinting(bool hasPages) const;
    bool isNowhere() const { return setup_.job.target.way == JobWay::queue && printer_.queue().empty(); }
    /// Shows what the settings ask for beside what the printer does by itself.
    void showSummary();
    /// Takes what the maker's panels show into the tickets.
    void takeMakersSettings();

    // What the user does
    void printerChosen();
    /// Goes on with the printer's present defaults, when it can still be opened.
    void renewPrinter();
    void remedyChosen(const std::vector<SettingChange>& changes);
    /// Takes back what the line tells has changed by itself, with what brought it about.
    void undoChange();
    void accept();
    /// Asks about conflicts. False when the user wants to go back.
    bool acceptConflicts();
    void savePDF();
    /// Gives the settings to the program that asked for them, and ends the dialog unless that fails.
    void handOver();
    /// Makes the job, or one of each document, and ends the dialog unless that fails.
    void print(const JobTarget& target);
    /// Waits for the document that is shown; false when it does not come.
    bool hasDocument();
    /// Tells what the job leaves out of what was chosen. False when the user then wants to go back.
    bool acceptLeftOut(JobWay way) const;

    CFBundleRef bundle_;  // lent
    PluginHost& plugin_;
    Setup setup_;
    WindowRef window_;  // owned
    std::optional<GeneralSettings> general_;
    std::optional<PrinterMenu> printers_;
    std::optional<DialogDocuments> documents_;
    std::optional<DialogPresets> presets_;
    std::optional<ExtensionTabs> tabs_;
    Printer printer_;
    CFRef<CFDictionaryRef> installed_;  // options of the printer, on top of its own; may be null
    Size preparedFor_;                  // the paper of documents that have none of their own
    bool isOtherFileTold_ = false;
    std::string summary_;  // as it is shown
    std::unique_ptr<PrintSession> session_;
    std::optional<ConflictLine> conflicts_;
    std::optional<PreviewColumn> preview_;
    std::function<void()> shown_;
    EventLoopTimerRef pause_ = nullptr;
    std::optional<Outcome> outcome_;
};

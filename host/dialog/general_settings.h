// The settings that every printer has, beside the maker's panels: the left side of the dialog.
#pragma once

#include "host/dialog/dialog_controls.h"
#include "host/dialog/page_settings.h"
#include "host/dialog/paper_size_menu.h"
#include "host/dialog/paper_source_menu.h"
#include "host/job/document.h"
#include "host/settings/page_range.h"
#include "host/settings/pages_asked.h"
#include "host/settings/print_session.h"
#include "platform/foundation/CFBundle.h"
#include "platform/toolbox/Events.h"

#include <functional>
#include <optional>
#include <string>

class GeneralSettings {
public:
    /// Runs a change of settings that the maker's panels may show too, with them told before and afterwards.
    using ChangeShared = std::function<void(const std::function<void()>& change)>;

    /// The window and the bundle of its texts must outlive this. Shows the document.
    GeneralSettings(WindowRef window, CFBundleRef texts, const Document& document, ChangeShared changeShared);

    /// Shows another document, or more of it.
    void showDocument(const Document& document);
    /// How many are printed.
    void setDocumentCount(std::size_t count) { documentCount_ = count; }
    /// The page that the user was looking at, which is offered if the document has it; 0 for none.
    void setCurrentPage(int page) { currentPage_ = page; }
    /// There are no pages yet: a program makes them as they are asked for here, and offers some.
    void offerPages(const PagesOffered& offered);
    /// Which of them are asked for.
    PagesAsked pagesAsked() const;
    /// Says something in the place of its pages; empty for the pages.
    void tell(const std::string& sentence);

    /// Shows a session's settings from now on. The pages to print are the document's: they stay from session to
    /// session.
    void show(PrintSession& session);
    /// Shows the settings that the maker's panels may have changed too.
    void showShared();

    /// Takes what the user did with one of these controls; false for any other control.
    bool handleHit(SInt32 number);

    /// Takes the pages to print into the session, unless they make no sense.
    PageRangeFault takePages();
    /// The same, and why they make no sense; empty when they do.
    std::string takePagesOrFault();
    /// The same; false when they make no sense, which their field says, and then has the focus.
    bool takePageRange();

private:
    static OSStatus handleRangeTyping(EventHandlerCallRef next, EventRef event, void* self);

    ControlRef control(HostControl number) const { return hostControl(window_, number); }
    void showPageRange(const std::string& range) const;
    void showPageFault() const;
    PageRange typedPages() const;
    void showCollating();

    // What the user does
    void copiesChanged();
    void collateChanged();
    void pagesChanged();
    void paperSizeChosen();
    void paperSourceChosen();
    void orientationChosen();

    WindowRef window_;
    CFBundleRef texts_;
    std::int64_t pageCount_ = 0;
    std::size_t documentCount_ = 1;
    int currentPage_ = 0;
    std::optional<PagesOffered> offered_;  // by a program that makes them afterwards
    ChangeShared changeShared_;
    PaperSizeMenu paperSizes_;
    PaperSourceMenu paperSources_;
    PageSettings pages_;
    std::string whyNotCollated_;  // with what is installed; empty when it can be done
    std::string whyNotUncollated_;
    PrintSession* session_ = nullptr;  // lent; null before the first one is shown
};

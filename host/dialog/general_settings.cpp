#include "host/dialog/general_settings.h"

#include "host/dialog/custom_size_dialog.h"
#include "host/settings/conflicts.h"
#include "host/settings/page_range.h"
#include "host/settings/texts.h"
#include "platform/foundation/CFNumberFormatter.h"
#include "platform/foundation/text.h"

namespace {

#define kCollateKeyword CFSTR("Collate")
#define kPageSizeKeyword CFSTR("PageSize")

// The items of the radio group of pages.
constexpr SInt32 kAllPages = 1;
constexpr SInt32 kSomePages = 2;
constexpr SInt32 kCurrentPageOnly = 3;
constexpr SInt32 kSelectedPagesOnly = 4;

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

GeneralSettings::GeneralSettings(WindowRef window, CFBundleRef texts, const Document& document,
                                 ChangeShared changeShared)
    : window_(window),
      texts_(texts),
      changeShared_(std::move(changeShared)),
      paperSizes_(control(kPaperSize), texts),
      paperSources_(window, texts),
      pages_(window) {
    static constexpr EventTypeSpec kTyping{kEventClassTextInput, kEventTextInputUnicodeForKeyEvent};
    InstallControlEventHandler(control(kPageRangeField), handleRangeTyping, 1, &kTyping, this, nullptr);
    showDocument(document);
}

// ---- Showing

void GeneralSettings::showDocument(const Document& document) {
    pageCount_ = document.pageCount;
    setStaticText(control(kDocumentName), makeString(shortened(document.name)));
    SetControlTitleWithCFString(control(kCurrentPage),
                                localized(texts_, CFSTR("Current Page"), std::to_string(currentPage_)).get());
    SetControlVisibility(control(kCurrentPage), currentPage_ > 0 && currentPage_ <= pageCount_, true);
    tell({});
    showPageFault();
}

void GeneralSettings::offerPages(const PagesOffered& offered) {
    offered_ = offered;
    SetControlTitleWithCFString(control(kCurrentPage), localized(texts_, CFSTR("Current Page Unknown")).get());
    SetControlVisibility(control(kCurrentPage), offered.hasCurrent, true);
    SetControlVisibility(control(kSelectedPages), offered.hasSelected, true);
    if (offered.proposed == PagesAsked::current || offered.proposed == PagesAsked::selected) {
        SetControl32BitValue(control(kPages),
                             offered.proposed == PagesAsked::current ? kCurrentPageOnly : kSelectedPagesOnly);
    }
    tell(utf8Text(localized(texts_, CFSTR("Pages Follow")).get()));
}

PagesAsked GeneralSettings::pagesAsked() const {
    switch (GetControl32BitValue(control(kPages))) {
        case kSomePages:
            return PagesAsked::range;
        case kCurrentPageOnly:
            return PagesAsked::current;
        case kSelectedPagesOnly:
            return PagesAsked::selected;
        default:
            return PagesAsked::all;
    }
}

void GeneralSettings::tell(const std::string& sentence) {
    if (!sentence.empty()) {
        setStaticText(control(kDocumentPages), makeString(sentence));
        return;
    }
    const auto pages = pageCount_ == 1 ? localized(texts_, CFSTR("One Page"))
                                       : localized(texts_, CFSTR("Number of Pages"), std::to_string(pageCount_));
    setStaticText(control(kDocumentPages), documentCount_ <= 1
                                               ? pages
                                               : localized(texts_, CFSTR("Pages and Documents"),
                                                           {utf8Text(pages.get()), std::to_string(documentCount_)}));
}

void GeneralSettings::show(PrintSession& session) {
    if (session_ == nullptr) {
        showPageRange(session.pageRange());
    }
    session_ = &session;
    paperSizes_.fill(session);
    paperSources_.fill(session);
    SetControl32BitMinimum(control(kCopies), 1);
    SetControl32BitMaximum(control(kCopies), kMostCopies);
    SetControl32BitValue(control(kCopies), session.copies());
    SetControlVisibility(control(kCollate),
                         session.choices().offers("Collate", "True") && session.choices().offers("Collate", "False"),
                         true);
    whyNotCollated_ = obstacleOf(session, texts_, "Collate", "True");
    whyNotUncollated_ = obstacleOf(session, texts_, "Collate", "False");
    showShared();
}

void GeneralSettings::showPageRange(const std::string& range) const {
    SetControl32BitValue(control(kPages), range.empty() ? kAllPages : kSomePages);
    setFieldText(control(kPageRangeField),
                 CFRef<CFStringRef>::adopt(CFNumberListCreateLocalized(nullptr, makeString(range).get())));
    showPageFault();
}

void GeneralSettings::showShared() {
    showCollating();
    SetControl32BitValue(control(kOrientation), session_->orientation());
    paperSizes_.show(*session_);
    paperSources_.show(*session_);
    pages_.show(*session_);
}

/// A box that cannot be changed for what is not installed is gray, unless that would keep what is not possible.
void GeneralSettings::showCollating() {
    const ControlRef box = control(kCollate);
    const bool collates = session_->choice(kCollateKeyword) == "True";
    const std::string& now = collates ? whyNotCollated_ : whyNotUncollated_;
    const std::string& other = collates ? whyNotUncollated_ : whyNotCollated_;
    const bool isGray = now.empty() && !other.empty();
    SetControl32BitValue(box, collates ? 1 : 0);
    isGray ? DisableControl(box) : EnableControl(box);
    HMSetControlHelpContent(box, (isGray ? makeString(other) : localized(texts_, CFSTR("Collate Help"))).get());
}

// ---- What the user does

bool GeneralSettings::handleHit(SInt32 number) {
    struct HitRow {
        HostControl number;
        void (GeneralSettings::*act)();
    };
    // clang-format off
    static constexpr HitRow kHits[] = {
        // control, what happens
        {kCopies, &GeneralSettings::copiesChanged},
        {kCollate, &GeneralSettings::collateChanged},
        {kPages, &GeneralSettings::pagesChanged},
        {kPaperSize, &GeneralSettings::paperSizeChosen},
        {kPaperSource, &GeneralSettings::paperSourceChosen},
        {kOrientation, &GeneralSettings::orientationChosen},
    };
    // clang-format on
    for (const HitRow& row : kHits) {
        if (row.number == number) {
            (this->*row.act)();
            return true;
        }
    }
    return pages_.handleHit(number, session_);
}

/// Who types a range wants it.
OSStatus GeneralSettings::handleRangeTyping(EventHandlerCallRef next, EventRef event, void* self) {
    const auto& settings = *static_cast<const GeneralSettings*>(self);
    SetControl32BitValue(settings.control(kPages), kSomePages);
    const OSStatus status = CallNextEventHandler(next, event);  // the field takes the text
    settings.showPageFault();
    return status;
}

void GeneralSettings::copiesChanged() {
    session_->setCopies(GetControl32BitValue(control(kCopies)));
}

void GeneralSettings::collateChanged() {
    const bool collate = GetControl32BitValue(control(kCollate)) == 1;
    changeShared_([&] { session_->setChoice(kCollateKeyword, collate ? CFSTR("True") : CFSTR("False")); });
}

void GeneralSettings::pagesChanged() {
    if (GetControl32BitValue(control(kPages)) == kSomePages) {
        SetKeyboardFocus(window_, control(kPageRangeField));
    }
    showPageFault();
}

void GeneralSettings::paperSizeChosen() {
    std::string size = paperSizes_.chosen();
    if (paperSizes_.isSizeWanted()) {
        paperSizes_.show(*session_);  // until there is an answer
        size = askCustomSize(texts_, *session_).value_or(std::string());
    }
    if (!size.empty()) {
        changeShared_([&] { session_->setChoice(kPageSizeKeyword, makeString(size).get()); });
    }
}

void GeneralSettings::paperSourceChosen() {
    if (const std::string source = paperSources_.chosen(); !source.empty()) {
        changeShared_([&] { session_->setChoice(CFSTR("InputSlot"), makeString(source).get()); });
    }
}

void GeneralSettings::orientationChosen() {
    const SInt32 orientation = GetControl32BitValue(control(kOrientation));
    changeShared_([&] { session_->setOrientation(orientation); });
}

PageRangeFault GeneralSettings::takePages() {
    if (const SInt32 pages = GetControl32BitValue(control(kPages)); pages != kSomePages) {
        const bool isKnown = pages == kCurrentPageOnly && !offered_;
        session_->setPageRange(isKnown ? std::to_string(currentPage_) : std::string());
        return PageRangeFault::none;
    }
    const PageRange range = typedPages();
    if (range.fault == PageRangeFault::none) {
        session_->setPageRange(range.pages);
    }
    return range.fault;
}

std::string GeneralSettings::takePagesOrFault() {
    const PageRangeFault fault = takePages();
    return fault == PageRangeFault::none
               ? std::string()
               : utf8Text(localized(texts_, faultText(fault), std::to_string(pageCount_)).get());
}

PageRange GeneralSettings::typedPages() const {
    // What is beyond a document is known when that is there.
    return readPageRange(fieldText(control(kPageRangeField)), pageCount_ > 0 ? pageCount_ : kMostPlannedPages);
}

/// A field in which nobody has typed yet is empty, not wrong.
void GeneralSettings::showPageFault() const {
    const bool isAsked = GetControl32BitValue(control(kPages)) == kSomePages;
    const bool isEmpty = fieldText(control(kPageRangeField)).empty();
    const PageRangeFault fault = isAsked ? typedPages().fault : PageRangeFault::none;
    const bool isFault = fault != PageRangeFault::none;
    const auto text = isFault ? localized(texts_, faultText(fault), std::to_string(pageCount_)) : CFRef<CFStringRef>();
    HIViewSetFieldMessage(control(kPageRangeField), text.get(), isFault && !isEmpty);
}

bool GeneralSettings::takePageRange() {
    if (takePages() == PageRangeFault::none) {
        return true;
    }
    SetKeyboardFocus(window_, control(kPageRangeField));
    return false;
}

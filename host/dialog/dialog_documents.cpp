#include "host/dialog/dialog_documents.h"

#include "host/dialog/dialog_controls.h"
#include "host/dialog/document_password.h"
#include "host/dialog/notice.h"
#include "host/dialog/preparing_window.h"
#include "host/settings/texts.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Menus.h"

#include <filesystem>

namespace {

using namespace std::chrono_literals;

constexpr double kSecondsBetweenLooks = 0.05;
/// Then the user is told how to end it.
constexpr auto kLong = 20s;

}  // namespace

DialogDocuments::DialogDocuments(WindowRef window, CFBundleRef texts, Setup setup, Dialog dialog)
    : window_(window),
      texts_(texts),
      programs_(std::move(setup.programs)),
      isScripted_(setup.scripted),
      dialog_(std::move(dialog)) {
    for (std::string& path : setup.paths) {
        slots_.push_back({std::move(path), nullptr});
    }
    if (!slots_.empty()) {
        slots_.front().opening = std::move(setup.first);
        isArrived_ = slots_.front().opening->advance(0ms) && !slots_.front().opening->isLocked();
    }
    fillMenu();
}

DialogDocuments::~DialogDocuments() {
    RemoveEventLoopTimer(timer_);
}

/// The name of one document is a text, and of several there is a menu.
void DialogDocuments::fillMenu() {
    const ControlRef popUp = hostControl(window_, kDocumentMenu);
    const MenuRef menu = GetControlPopupMenuHandle(popUp);
    DeleteMenuItems(menu, 1, CountMenuItems(menu));
    for (const Slot& slot : slots_) {
        const std::string name = slot.opening ? slot.opening->document().name
                                 : slot.path == OpeningDocument::kStandardInput
                                     ? utf8Text(localized(texts_, CFSTR("Standard Input")).get())
                                     : readable(std::filesystem::path(slot.path).filename().string());
        MenuItemIndex item = 0;
        AppendMenuItemTextWithCFString(menu, makeString(shortened(name)).get(), 0, 0, &item);
    }
    SetControl32BitValue(popUp, static_cast<SInt32>(shown_ + 1));
    SetControlVisibility(popUp, slots_.size() > 1, true);
    SetControlVisibility(hostControl(window_, kDocumentName), slots_.size() <= 1, true);
}

void DialogDocuments::begin() {
    if (!isArrived_) {
        show(0);
    }
}

void DialogDocuments::choose() {
    const auto chosen = static_cast<std::size_t>(GetControl32BitValue(hostControl(window_, kDocumentMenu)) - 1);
    if (chosen >= slots_.size() || chosen == shown_) {
        return;
    }
    std::string fault;
    if (!isScripted_) {
        show(chosen);
    } else if (bring(chosen, &fault) == Brought::failed) {
        showNotice(kCFUserNotificationStopAlertLevel, localized(texts_, CFSTR("Job Failed Header")), makeString(fault));
    }
}

/// What there is of it; the rest follows.
OpeningDocument& DialogDocuments::show(std::size_t index) {
    shown_ = index;
    Slot& slot = slots_.at(index);
    if (!slot.opening) {
        slot.opening = std::make_unique<OpeningDocument>(slot.path, programs_);
    }
    if (slot.opening->isToBePrepared()) {
        slot.opening->prepare(dialog_.paper());
    }
    SetControl32BitValue(hostControl(window_, kDocumentMenu), static_cast<SInt32>(index + 1));
    isArrived_ = false;
    since_ = std::chrono::steady_clock::now();
    const Document& document = slot.opening->document();
    dialog_.show(document);
    if (document.pageCount == 0) {
        dialog_.tell(utf8Text(localized(texts_, CFSTR("Document Preparing"), shortened(document.name)).get()));
    }
    RemoveEventLoopTimer(timer_);
    InstallEventLoopTimer(
        kSecondsBetweenLooks, kSecondsBetweenLooks,
        [](EventLoopTimerRef, void* self) { static_cast<DialogDocuments*>(self)->look(); }, this, &timer_);
    return *slot.opening;
}

void DialogDocuments::look() {
    if (isArrived_ || FrontNonFloatingWindow() != window_) {
        return;  // the user is busy with another window
    }
    OpeningDocument& opening = *slots_.at(shown_).opening;
    if (!opening.advance(0ms)) {
        if (std::chrono::steady_clock::now() - since_ > kLong) {
            dialog_.tell(utf8Text(
                localized(texts_, CFSTR("Document Preparing Long"), shortened(opening.document().name)).get()));
        }
        return;
    }
    std::string fault;
    const Brought brought = settle(&opening, &fault);
    if (brought == Brought::ready) {
        return;
    }
    if (brought == Brought::failed) {
        showNotice(kCFUserNotificationStopAlertLevel, localized(texts_, CFSTR("Job Failed Header")), makeString(fault));
    }
    if (slots_.size() == 1) {
        dialog_.giveUp({brought == Brought::failed ? ExitStatus::unusableInput : ExitStatus::cancelled, fault});
    }
}

/// A document that is there, is locked, or cannot be printed.
DialogDocuments::Brought DialogDocuments::settle(OpeningDocument* opening, std::string* fault) {
    isArrived_ = true;
    RemoveEventLoopTimer(timer_);
    timer_ = nullptr;
    const bool isGivenUp = opening->isLocked() && !isScripted_ && !askDocumentPassword(texts_, opening);
    auto opened = opening->finish();
    if (opened) {
        dialog_.tell({});
        dialog_.show(*opened);
        return Brought::ready;
    }
    *fault = isGivenUp ? std::string() : opened.failure().line;
    dialog_.tell(readable(opened.failure().line));
    return isGivenUp ? Brought::cancelled : Brought::failed;
}

DialogDocuments::Brought DialogDocuments::bring(std::size_t index, std::string* fault) {
    OpeningDocument* const opening = slots_.at(index).opening.get();
    if (index == shown_ && isArrived_ && opening->finish()) {
        return Brought::ready;
    }
    OpeningDocument& shown = show(index);
    if (!isScripted_ && !waitInWindow(texts_, &shown)) {
        return Brought::cancelled;
    }
    shown.advance(-1ms);
    return settle(&shown, fault);
}

void DialogDocuments::drop(const std::vector<bool>& printed) {
    std::vector<Slot> left;
    for (std::size_t i = 0; i < slots_.size(); ++i) {
        if (!printed.at(i)) {
            left.push_back(std::move(slots_[i]));
        }
    }
    if (left.size() == slots_.size()) {
        slots_ = std::move(left);
        return;
    }
    slots_ = std::move(left);
    shown_ = 0;
    fillMenu();
    show(0);
}

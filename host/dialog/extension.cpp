#include "host/dialog/extension.h"

#include "host/script/panels.h"
#include "platform/foundation/CFCollections.h"

#include <algorithm>
#include <utility>

namespace {

/// Summaries that an extension hands out are the dialog's to release. This dialog shows none: every setting is beside
/// the maker's panels already.
void discardSummaries(const PDEInterface::Table& operations, PDEContext context) {
    CFArrayRef titles = nullptr;
    CFArrayRef summaries = nullptr;
    operations.GetSummaryText(context, &titles, &summaries);
    CFRelease(titles);
    CFRelease(summaries);
}

}  // namespace

std::unique_ptr<Extension> Extension::start(const PDEInterface::Table& operations, ControlRef place, SInt32 number,
                                            PMPrintSession session) {
    std::unique_ptr<Extension> started(new Extension(operations, session));
    OSType creator = 0;
    CFStringRef kind = nullptr;
    CFStringRef title = nullptr;
    UInt32 width = 0;
    UInt32 height = 0;
    if (operations.Prologue(&started->context_, &creator, &kind, &title, &width, &height) != noErr) {
        started->context_ = nullptr;
        return nullptr;
    }
    started->title_ = CFRef<CFStringRef>::retain(title);
    started->makePane(place, number, width, height);
    UInt32 flags = 0;
    const OSStatus status = operations.Initialize(started->context_, &flags, nullptr, started->pane_, session);
    if (status != noErr) {
        started->stop(status);
        return nullptr;
    }
    started->copyTicketsToControls();
    discardSummaries(operations, started->context_);
    return started;
}

void Extension::makePane(ControlRef place, SInt32 number, UInt32 width, UInt32 height) {
    Rect bounds{};
    GetControlBounds(place, &bounds);
    // With large text the place is larger than the plug-in asks for, and so is all that it puts there.
    bounds.right = std::max(bounds.right, static_cast<SInt16>(bounds.left + static_cast<SInt16>(width)));
    bounds.bottom = std::max(bounds.bottom, static_cast<SInt16>(bounds.top + static_cast<SInt16>(height)));
    CreateUserPaneControl(GetControlOwner(place), &bounds, kControlSupportsEmbedding, &pane_);
    const ControlID id{script::kExtensionPaneSignature, number};
    SetControlID(pane_, &id);
    EmbedControl(pane_, place);
    HideControl(pane_);
    DeactivateControl(pane_);
}

bool Extension::hasFocus() const {
    ControlRef control = nullptr;
    GetKeyboardFocus(GetControlOwner(pane_), &control);
    while (control != nullptr && control != pane_) {
        control = GetSuperControl(control);
    }
    return control != nullptr;
}

void Extension::open() {
    if (context_ != nullptr && !isOpen_) {
        ShowControl(pane_);
        ActivateControl(pane_);
        isOpen_ = operations_.Open(context_) == noErr;
        wasOpened_ = wasOpened_ || isOpen_;
    }
}

void Extension::close() {
    if (context_ != nullptr && std::exchange(isOpen_, false)) {
        HideControl(pane_);
        DeactivateControl(pane_);
        operations_.Close(context_);
    }
}

void Extension::stop(OSStatus status) {
    if (context_ == nullptr) {
        return;
    }
    if (isOpen_) {
        operations_.Close(context_);
    }
    operations_.Terminate(context_, status);
    DisposeControl(pane_);
    context_ = nullptr;
    pane_ = nullptr;
    isOpen_ = false;
}

void Extension::copyTicketsToControls() {
    if (context_ != nullptr) {
        operations_.Sync(context_, session_, true);
    }
}

void Extension::copyControlsToTickets() {
    if (context_ != nullptr && wasOpened_) {
        operations_.Sync(context_, session_, false);
    }
}

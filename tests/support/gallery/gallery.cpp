#include "tests/support/gallery/gallery.h"

#include "core/features/printer_features.h"
#include "host/script/quoted.h"
#include "model/settings/plugin_state.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Menus.h"
#include "platform/toolbox/Windows.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

constexpr OSType kSignature = FourCharCode("Glry");
constexpr SInt32 kPieces = 1;
constexpr SInt32 kPlace = 2;

Gallery* gGallery = nullptr;  // there is one

}  // namespace

Result<std::unique_ptr<Gallery>> Gallery::make(const Setup& setup) {
    std::unique_ptr<Gallery> gallery(new Gallery(setup));
    IBNibRef nib = nullptr;
    if (CreateNibReferenceWithCFBundle(setup.ownBundle, CFSTR("Gallery"), &nib) != noErr ||
        CreateWindowFromNib(nib, CFSTR("Gallery"), &gallery->window_) != noErr) {
        return Failure{ExitStatus::unusableInput, "the gallery's own window does not load"};
    }
    DisposeNibReference(nib);
    static constexpr std::array kEvents{EventTypeSpec{kEventClassControl, kEventControlHit},
                                        EventTypeSpec{kEventClassCommand, kEventCommandProcess},
                                        EventTypeSpec{kEventClassWindow, kEventWindowShown}};
    InstallWindowEventHandler(gallery->window_, handleEvent, kEvents.size(), kEvents.data(), gallery.get(), nullptr);
    gallery->session_ = std::make_unique<PrintSession>(setup.printer, setup.settings, setup.installed.get(), "Gallery");
    gGallery = gallery.get();
    SetPDEBundle(setup.plugin);
    SetCurrentPrintSession(gallery->session_->get());
    SetPDESyncProc(syncShownPanel);
    if (LoadPrinterFeatures(gallery->session_->get()) != noErr) {
        return Failure{ExitStatus::unusableInput, "the printer is not the maker's"};
    }
    const MenuRef menu = GetControlPopupMenuHandle(gallery->control(kPieces));
    AppendMenuItemTextWithCFString(menu, CFSTR("Open…"), 0, 0, nullptr);
    for (const std::string& name : gallery->names()) {
        AppendMenuItemTextWithCFString(menu, makeString(name).get(), 0, 0, nullptr);
    }
    SetControl32BitValue(gallery->control(kPieces), 1);
    return gallery;
}

Gallery::~Gallery() {
    closePanel();
    UnloadPrinterFeatures();
    SetPDESyncProc(nullptr);
    SetCurrentPrintSession(nullptr);
    SetPDEBundle(nullptr);
    DisposeWindow(window_);
    gGallery = nullptr;
}

std::vector<std::string> Gallery::names() const {
    std::vector<std::string> names = pieceNames();
    for (CFBundleRef bundle : {setup_.plugin, setup_.host}) {
        std::ranges::copy(nibWindowNames(bundle), std::back_inserter(names));
    }
    return names;
}

ControlRef Gallery::control(SInt32 number) const {
    const ControlID id{kSignature, number};
    ControlRef control = nullptr;
    GetControlByID(window_, &id, &control);
    return control;
}

std::optional<std::string> Gallery::open(const std::string& name) {
    OSStatus status = noErr;
    if (const Piece* piece = findPiece(name)) {
        status = piece->panel != nullptr ? openPanel(piece->panel)
                                         : piece->runDialog({setup_.plugin, session_->printSettings()});
    } else if (name.find('/') != std::string::npos) {
        status = runNibWindow(setup_.plugin, name);
        if (status == kNibNotFoundErr) {
            status = runNibWindow(setup_.host, name);
        }
    } else {
        return "there is nothing called " + quoted(name) + " to open";
    }
    return status == noErr ? std::nullopt
                           : std::optional(quoted(name) + " does not open: status " + std::to_string(status));
}

OSStatus Gallery::openPanel(PanelInterfaceGetter getter) {
    closePanel();
    PlugInIntf* interface = nullptr;
    getter(&interface);
    panel_ = interface->table->operations;
    std::free(interface->table);
    std::free(interface);

    OSType creator = 0;
    CFStringRef kind = nullptr;
    CFStringRef title = nullptr;
    UInt32 width = 0;
    UInt32 height = 0;
    if (const OSStatus status = panel_.Prologue(&context_, &creator, &kind, &title, &width, &height); status != noErr) {
        context_ = nullptr;
        return status;
    }
    Rect bounds{};
    GetControlBounds(control(kPlace), &bounds);
    CreateUserPaneControl(window_, &bounds, kControlSupportsEmbedding, &pane_);
    EmbedControl(pane_, control(kPlace));
    UInt32 flags = 0;
    OSStatus status = panel_.Initialize(context_, &flags, nullptr, pane_, session_->get());
    if (status == noErr) {
        status = panel_.Sync(context_, session_->get(), true);
    }
    return status == noErr ? panel_.Open(context_) : status;
}

void Gallery::closePanel() {
    if (context_ != nullptr) {
        panel_.Sync(context_, session_->get(), false);
        panel_.Close(context_);
        panel_.Terminate(context_, noErr);
        context_ = nullptr;
    }
    DisposeControl(pane_);
    pane_ = nullptr;
}

OSStatus Gallery::syncShownPanel(PMPrintSession session, Boolean ticketsToControls) {
    const Gallery& gallery = *gGallery;
    return gallery.context_ != nullptr ? gallery.panel_.Sync(gallery.context_, session, ticketsToControls) : noErr;
}

OSStatus Gallery::handleEvent(EventHandlerCallRef, EventRef event, void* self) {
    auto& gallery = *static_cast<Gallery*>(self);
    if (GetEventClass(event) == kEventClassWindow) {
        if (auto shown = std::exchange(gallery.shown_, nullptr)) {
            shown();
        }
        return noErr;
    }
    if (GetEventClass(event) == kEventClassControl) {
        ControlRef control = nullptr;
        GetEventParameter(event, kEventParamDirectObject, typeControlRef, nullptr, sizeof control, nullptr, &control);
        if (control != gallery.control(kPieces)) {
            return eventNotHandledErr;
        }
        const SInt32 item = GetControl32BitValue(control);
        if (item > 1) {
            gallery.open(gallery.names()[static_cast<std::size_t>(item) - 2]);
        }
        return noErr;
    }
    HICommand command{};
    GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr, &command);
    switch (command.commandID) {
        case FourCharCode("ok  "):
            gallery.closePanel();
            gallery.accepted_ = true;
            gallery.end();
            return noErr;
        case FourCharCode("not!"):
            gallery.end();
            return noErr;
        default:
            return eventNotHandledErr;
    }
}

bool Gallery::run(std::function<void()> shown) {
    shown_ = std::move(shown);
    RunAppModalLoopForWindow(window_);
    return accepted_;
}

void Gallery::end() {
    HideWindow(window_);
    QuitAppModalLoopForWindow(window_);
}

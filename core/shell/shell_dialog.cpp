#include "core/shell/shell_dialog.h"

#include "core/features/printer_model.h"
#include "core/shell/shell_events.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Menus.h"
#include "platform/toolbox/Windows.h"
#include "ui/localization.h"
#include "ui/message_text.h"
#include "ui/nib_window.h"

#include <cstdio>
#include <iterator>
#include <utility>

namespace {

constexpr EventTypeSpec kHits[] = {{kEventClassControl, kEventControlHit}};
constexpr EventTypeSpec kSelectorEvents[] = {{kEventClassControl, kEventControlHit},
                                             {kEventClassMenu, kEventMenuEnableItems}};
constexpr EventTypeSpec kWindowEvents[] = {{kEventClassCommand, kEventCommandProcess},
                                           {FourCharCode("TPDE"), FourCharCode("TbdC")}};

ControlRef FindShellControl(WindowRef window, SInt32 number) {
    const ControlID id{kShellSignature, number};
    ControlRef control = nullptr;
    GetControlByID(window, &id, &control);
    return control;
}

OSStatus RemoveHandler(EventHandlerRef* handler) {
    EventHandlerRef installed = std::exchange(*handler, nullptr);
    return installed == nullptr ? noErr : RemoveEventHandler(installed);
}

OSStatus LoadShellWindow(const PDEShellContext& context, WindowFromNib* window) {
    return window->load(context.bundle.get(), CFSTR("PDE_Shell"), CFSTR("Window"));
}

void FillSelector(PDEShellContext* context) {
    const MenuRef menu = GetControlPopupMenuHandle(context->selector);
    DeleteMenuItems(menu, 1, CountMenuItems(menu));
    context->forEachPanel([menu](const PanelRecord& panel) {
        const CFStringRef title = panel.title ? panel.title.get() : CFSTR("");
        AppendMenuItemTextWithCFString(menu, title, 0, 0, nullptr);
    });
    SetControl32BitMaximum(context->selector, CountMenuItems(menu));
    InstallControlEventHandler(context->selector, pdeShellEventHandler, std::size(kSelectorEvents), kSelectorEvents,
                               context, nullptr);
}

void PrepareStepButton(ControlRef button, CFStringRef imageName, PDEShellContext* context) {
    const CGImageRef image = context->images->image(imageName);
    SetControlData(button, kControlEntireControl, kControlContentTag, sizeof image, &image);
    InstallControlEventHandler(button, pdeShellEventHandler, std::size(kHits), kHits, context, nullptr);
    HideControl(button);
}

/// Says that the panels are another model's, where they are.
void ShowUnknownModel(ControlRef label, CFBundleRef bundle) {
    const CFStringRef model = UnknownModelName();
    SetControlVisibility(label, model != nullptr, false);
    if (model != nullptr) {
        const auto pattern = CopyLocalizedText(bundle, CFSTR("Unknown Model"));
        const auto message = CopyFilledInMessage(pattern.get(), {model});
        const CFStringRef text = message.get();
        SetControlData(label, kControlEntireControl, kControlStaticTextCFStringTag, sizeof text, &text);
    }
}

/// Opens a panel when its pane is needed. Most dialogs end without a look at most panels.
void OpenPanelOf(ControlRef pane, void* userData) {
    static_cast<PDEShellContext*>(userData)->forEachPanel([pane](PanelRecord& panel) {
        if (panel.pane == pane) {
            panel.opened = true;
            panel.table.operations.Open(panel.context);
        }
    });
}

/// Moves the shell pane from the nib's window into the dialog, on the parent pane's top left corner.
void EmbedShellPane(PDEShellContext* context) {
    Rect parent{};
    GetControlBounds(context->parentPane, &parent);
    MoveControl(context->shellPane, parent.left, parent.top);
    EmbedControl(context->shellPane, context->parentPane);
    ShowControl(context->shellPane);
}

}  // namespace

void AttachToDialog(ControlRef parentPane, PDEShellContext* context) {
    context->parentPane = parentPane;
    context->window = GetControlOwner(parentPane);
    GetWindowDefaultButton(context->window, &context->defaultButton);
    GetWindowCancelButton(context->window, &context->cancelButton);
    CFBundleRef bundle = context->bundle.get();
    SetControlProperty(context->defaultButton, FourCharCode("TPDE"), FourCharCode("MBND"), sizeof bundle, &bundle);

    context->buttonHandler = NewEventHandlerUPP(pdeShellEventHandler);
    RemoveHandler(&context->defaultButtonHandlerRef);
    RemoveHandler(&context->cancelButtonHandlerRef);
    InstallControlEventHandler(context->defaultButton, context->buttonHandler, std::size(kHits), kHits, context,
                               &context->defaultButtonHandlerRef);
    InstallControlEventHandler(context->cancelButton, context->buttonHandler, std::size(kHits), kHits, context,
                               &context->cancelButtonHandlerRef);
}

OSStatus CreatePanelPanes(PDEShellContext* context) {
    WindowFromNib window;
    if (const OSStatus status = LoadShellWindow(*context, &window); status != noErr) {
        std::fputs(status == kNibWindowNotFoundErr ? "Initialize()::CreateWindowFromNib() failed.\n"
                                                   : "Initialize()::CreateNibReferenceWithCFBundle() failed.\n",
                   stderr);
        return kPMInvalidPDEContext;
    }
    Rect bounds{};
    GetControlBounds(FindShellControl(window.get(), kPanelArea), &bounds);
    context->forEachPanel([context, &bounds](PanelRecord& panel) {
        const ControlID id{FourCharCode("TSgb"), panel.number};
        if (panel.pane == nullptr) {
            CreateUserPaneControl(context->window, &bounds, kControlSupportsEmbedding, &panel.pane);
        }
        SetControlID(panel.pane, &id);
        HideControl(panel.pane);
    });
    return noErr;
}

OSStatus BuildShellPane(PDEShellContext* context) {
    WindowFromNib window;
    if (const OSStatus status = LoadShellWindow(*context, &window); status != noErr) {
        return status;
    }
    context->images = std::make_unique<ImageImportManager>(context->bundle.get());
    context->shellPane = FindShellControl(window.get(), kShellPane);
    context->selector = FindShellControl(window.get(), kPanelSelector);
    context->container = FindShellControl(window.get(), kPanelContainer);
    context->area = FindShellControl(window.get(), kPanelArea);
    FillSelector(context);
    PrepareStepButton(FindShellControl(window.get(), kPreviousPanel), CFSTR("MacUp.png"), context);
    PrepareStepButton(FindShellControl(window.get(), kNextPanel), CFSTR("MacDown.png"), context);
    ShowUnknownModel(FindShellControl(window.get(), kUnknownModelText), context->bundle.get());
    // Last, because it gives everything in the pane its final place.
    EmbedShellPane(context);

    Rect area{};
    GetControlBounds(context->area, &area);
    context->forEachPanel([context, &area](PanelRecord& panel) {
        SetControlBounds(panel.pane, &area);
        EmbedControl(panel.pane, context->container);
        SetControlContentProc(panel.pane, OpenPanelOf, context);
    });
    return noErr;
}

void InstallWindowHandler(PDEShellContext* context) {
    if (context->windowHandlerRef == nullptr) {
        context->windowHandler = NewEventHandlerUPP(pdeShellEventHandler);
        InstallWindowEventHandler(context->window, context->windowHandler, std::size(kWindowEvents), kWindowEvents,
                                  context, &context->windowHandlerRef);
    }
}

void RemoveWindowHandler(PDEShellContext* context) {
    RemoveHandler(&context->windowHandlerRef);
    DisposeEventHandlerUPP(context->windowHandler);
}

OSStatus DetachFromDialog(PDEShellContext* context) {
    OSStatus status = noErr;
    for (EventHandlerRef* handler :
         {&context->windowHandlerRef, &context->defaultButtonHandlerRef, &context->cancelButtonHandlerRef}) {
        if (*handler != nullptr) {
            status = RemoveHandler(handler);
        }
    }
    DisposeEventHandlerUPP(context->buttonHandler);
    if (IsValidWindowPtr(context->window)) {
        context->forEachPanel([](PanelRecord& panel) { DisposeControl(std::exchange(panel.pane, nullptr)); });
        DisposeControl(std::exchange(context->shellPane, nullptr));
    }
    return status;
}

#include "core/shell/shell_panel.h"

#include "core/features/printer_features.h"
#include "core/features/printer_model.h"
#include "core/shell/built_in_panels.h"
#include "core/shell/shell_context.h"
#include "core/shell/shell_dialog.h"
#include "core/shell/shell_selection.h"
#include "model/settings/plugin_state.h"
#include "model/settings/ticket_access.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFURL.h"
#include "platform/toolbox/Help.h"

#include <new>

namespace {

PDEShellContext* gContext = nullptr;

OSStatus Sync(PMPDEContext opaque, PMPrintSession session, Boolean ticketsToControls);

OSStatus InitContext(PDEShellContext** context) {
    *context = new (std::nothrow) PDEShellContext{};
    if (*context == nullptr) {
        return kPMInvalidPDEContext;
    }
    (*context)->bundle = CFRef<CFBundleRef>::retain(CFBundleGetBundleWithIdentifier(kPDEBundleIdentifier));
    (*context)->title = CFRef<CFStringRef>::adopt(
        CFBundleCopyLocalizedString((*context)->bundle.get(), CFSTR("PDE Shell"), nullptr, CFSTR("Localizable")));
    gCurrentPanel = 0;
    return noErr;
}

OSStatus RegisterMyHelpBook(const PDEShellContext& context) {
    const auto url = CFRef<CFURLRef>::adopt(CFBundleCopyBundleURL(context.bundle.get()));
    FSRef folder{};
    return CFURLGetFSRef(url.get(), &folder) ? AHRegisterHelpBook(&folder) : fnfErr;
}

OSStatus SyncGlobalContext(PMPrintSession session, Boolean ticketsToControls) {
    return Sync(reinterpret_cast<PMPDEContext>(gContext), session, ticketsToControls);
}

/// The settings that every job of these printers carries, whatever the panels say.
void WriteFixedSettings(PMPrintSession session) {
    PMTicketRef ticket = 0;
    if (GetTicketFromSession(session, kPDE_PMPrintSettingsKey, &ticket) != noErr) {
        return;
    }
    const void* keys[] = {CFSTR("TPIFOptionExceptions"), CFSTR("TPIFOptionInserts")};
    const void* values[] = {kCFBooleanTrue, kCFBooleanTrue};
    const auto options = CFRef<CFDictionaryRef>::adopt(CFDictionaryCreate(
        kCFAllocatorDefault, keys, values, 2, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    PMTicketSetCFDictionary(ticket, kTicketCreator, CFSTR("com.tavro.print.TPIFOptions"), options.get(), kPMUnlocked);
    PMTicketSetCFBoolean(ticket, kTicketCreator, CFSTR("com.tavro.print.RotateBooklet180Degrees"), kCFBooleanTrue,
                         kPMUnlocked);
}

// ---- The operations

OSStatus Prologue(PMPDEContext* opaque, OSType* creator, CFStringRef* kind, CFStringRef* title, UInt32* maximumWidth,
                  UInt32* maximumHeight) {
    PDEShellContext* context = nullptr;
    const OSStatus status = InitContext(&context);
    *opaque = reinterpret_cast<PMPDEContext>(context);
    if (status != noErr) {
        return status;
    }
    gContext = context;
    SetPDEBundle(context->bundle.get());
    SetPDESyncProc(SyncGlobalContext);
    *maximumWidth = 540;
    *maximumHeight = 491;
    if (context->title) {
        *title = context->title.get();
    }
    *kind = kPDEPanelKind;
    *creator = FourCharCode("pde ");
    LoadBuiltInPanels(context);
    return noErr;
}

OSStatus Initialize(PMPDEContext opaque, PMPDEFlags* flags, PMPDERef reference, ControlRef parentPane,
                    PMPrintSession session) {
    PDEShellContext* context = ShellContext(opaque);
    if (context == nullptr || session == nullptr) {
        return kPMInvalidPDEContext;
    }
    context->session = session;
    SetCurrentPrintSession(session);
    if (const OSStatus status = LoadPrinterFeatures(session); status != noErr) {
        return status;
    }
    ChoosePanels(context, ListOfModel(CFSTR("Panels")));
    AttachToDialog(parentPane, context);
    RegisterMyHelpBook(*context);
    if (const OSStatus status = CreatePanelPanes(context); status != noErr) {
        return status;
    }
    context->forEachPanel([=](PanelRecord& panel) {
        panel.table.operations.Initialize(panel.context, flags, reference, panel.pane, session);
    });
    return Sync(opaque, session, true);
}

OSStatus Sync(PMPDEContext opaque, PMPrintSession session, Boolean ticketsToControls) {
    PDEShellContext* context = ShellContext(opaque);
    if (context == nullptr || session == nullptr) {
        return kPMInvalidPrintSession;
    }
    if (!ticketsToControls) {
        context->forEachPanel([](const PanelRecord& panel) { MakeControlContent(panel.pane); });
    }
    // The selected panel comes last, so that its values win where panels share keys.
    for (const bool selected : {false, true}) {
        context->forEachPanel([=](PanelRecord& panel) {
            if ((panel.number == lastTabIndex) == selected) {
                panel.table.operations.Sync(panel.context, session, ticketsToControls);
            }
        });
    }
    if (!ticketsToControls) {
        WriteFixedSettings(session);
    }
    return noErr;
}

OSStatus GetSummaryText(PMPDEContext opaque, CFArrayRef* titles, CFArrayRef* summaries) {
    PDEShellContext* context = ShellContext(opaque);
    if (context == nullptr) {
        return kPMInvalidPDEContext;
    }
    *titles = nullptr;
    *summaries = nullptr;
    context->forEachPanel(
        [=](PanelRecord& panel) { panel.table.operations.GetSummaryText(panel.context, titles, summaries); });
    // Panels lend their arrays; what the dialog gets is its own.
    for (CFArrayRef* const left : {titles, summaries}) {
        if (*left != nullptr) {
            CFRetain(*left);
        }
    }
    return noErr;
}

OSStatus Open(PMPDEContext opaque) {
    PDEShellContext* context = ShellContext(opaque);
    if (context == nullptr || context->parentPane == nullptr) {
        return kPMInvalidPDEContext;
    }
    InstallWindowHandler(context);
    if (context->opened) {
        context->forEachPanel([](PanelRecord& panel) {
            if (panel.opened) {
                panel.table.operations.Open(panel.context);
            }
            MakeControlContent(panel.pane);
        });
    } else {
        if (const OSStatus status = BuildShellPane(context); status != noErr) {
            return status;
        }
        context->opened = true;
    }
    if (lastTabIndex < 1 || lastTabIndex > context->panelCount()) {
        lastTabIndex = 1;
    }
    selectPanel(lastTabIndex, context);
    SetControl32BitValue(context->selector, lastTabIndex);
    return noErr;
}

OSStatus Close(PMPDEContext opaque) {
    PDEShellContext* context = ShellContext(opaque);
    if (context == nullptr) {
        return kPMInvalidPDEContext;
    }
    context->forEachPanel([](PanelRecord& panel) {
        if (panel.opened) {
            panel.table.operations.Close(panel.context);
        }
    });
    RemoveWindowHandler(context);
    return noErr;
}

OSStatus Terminate(PMPDEContext opaque, OSStatus dialogStatus) {
    PDEShellContext* context = ShellContext(opaque);
    if (context == nullptr) {
        return kPMInvalidPDEContext;
    }
    for (const PanelRecord& panel : context->panels) {
        panel.table.operations.Terminate(panel.context, dialogStatus);
    }
    const OSStatus status = DetachFromDialog(context);
    delete context;
    gContext = nullptr;
    SetPDESyncProc(nullptr);
    SetCurrentPrintSession(nullptr);
    UnloadPrinterFeatures();
    SetPDEBundle(nullptr);
    return status;
}

}  // namespace

const PDEOperations kShellOperations = {Prologue, Initialize, Sync, GetSummaryText, Open, Close, Terminate};

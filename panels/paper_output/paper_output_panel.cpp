// The Paper and Output panel: paper, sides, finishing, output and the kind of job.

#include "panels/paper_output/paper_output_panel.h"
#include "core/features/installable_options.h"
#include "panels/paper_output/paper_output_commands.h"
#include "panels/paper_output/paper_output_controls.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFString.h"
#include "ui/nib_window.h"
#include "ui/panel_operations.h"

#include <iterator>
#include <new>
#include <utility>

namespace {

_PaperOutputContext* InitContext() {
    auto* context = new (std::nothrow) _PaperOutputContext;
    if (context != nullptr) {
        context->bundle = CFBundleGetBundleWithIdentifier(kPDEBundleIdentifier);
        context->title = CopyPanelTitle(context->bundle, CFSTR("PaperOutput"));
    }
    return context;
}

PaperOutputScope Scope(const _PaperOutputContext& context) {
    return {context.collateStaplePairs, context.duplexPopup != nullptr, IsControlActive(context.bookletButton) != 0,
            IsControlVisible(context.pane) != 0};
}

OSStatus Sync(PMPDEContext opaque, PMPrintSession session, Boolean ticketsToControls) {
    if (opaque == nullptr) {
        return kPMInvalidPDEContext;
    }
    PMTicketRef ticket = 0;
    if (const OSStatus status = GetTicketForSync(opaque, session, &ticket); status != noErr) {
        return status;
    }
    _PaperOutputContext* context = PaperOutputContext(opaque);
    if (ticketsToControls) {
        ReadPaperOutputSettings(ticket, Scope(*context), &context->settings);
        ShowPaperOutputSettings(*context);
    } else {
        WritePaperOutputSettings(&context->settings, Scope(*context), ticket);
    }
    return noErr;
}

OSStatus Initialize(PMPDEContext opaque, PMPDEFlags*, PMPDERef, ControlRef parentPane, PMPrintSession session) {
    _PaperOutputContext* context = PaperOutputContext(opaque);
    if (context == nullptr || session == nullptr) {
        return kPMInvalidPDEContext;
    }
    context->hostPane = parentPane;
    context->collateStaplePairs = CollateStaplePairs();
    return Sync(opaque, session, true);
}

OSStatus Open(PMPDEContext opaque) {
    _PaperOutputContext* context = PaperOutputContext(opaque);
    if (context == nullptr) {
        return kPMInvalidPDEContext;
    }
    if (std::exchange(context->opened, true)) {
        return noErr;
    }
    const CFStringRef window = getInstalledFeature(CFSTR("BookletFoldKey")) ? CFSTR("Professional") : CFSTR("Std_Adv");
    if (const OSStatus status =
            EmbedPaneFromNib(context->bundle, CFSTR("PaperOutputOffice"), window, {kPanelSignature, kPaperOutputPane},
                             context->hostPane, &context->pane);
        status != noErr) {
        return status;
    }
    PreparePaperOutputControls(context);
    ShowPaperOutputSettings(*context);

    static constexpr EventTypeSpec kHits[] = {{kEventClassControl, kEventControlHit}};
    static constexpr EventTypeSpec kCommands[] = {{kEventClassCommand, kEventCommandProcess}};
    InstallControlEventHandler(context->pane, pdeShellPaperOutputCommandHandler, std::size(kCommands), kCommands,
                               context, &context->commandHandler);
    return InstallControlEventHandler(context->pane, pdeShellPaperOutputEventHandler, std::size(kHits), kHits, context,
                                      &context->hitHandler);
}

OSStatus Terminate(PMPDEContext opaque, OSStatus) {
    _PaperOutputContext* context = PaperOutputContext(opaque);
    if (context == nullptr) {
        return kPMInvalidPDEContext;
    }
    RemoveEventHandler(context->hitHandler);
    RemoveEventHandler(context->commandHandler);
    ReleasePaperOutputControls(context);
    delete context;
    return noErr;
}

}  // namespace

TAVRO_PLUGIN_EXPORT OSStatus GetPaperOutputPanelInterface(PlugInIntf** interface) {
    return MakePanelInterface(
        {PanelPrologue<InitContext>, Initialize, Sync, GetNoSummaryText, Open, CloseWithoutWork, Terminate}, interface);
}

bool IsPaperOutputPanel(const PDEOperations& operations) {
    return operations.Prologue == PanelPrologue<InitContext>;
}

// The Special Pages panel: covers, inserts and exceptions of a job in one list.

#include "model/settings/ticket_access.h"
#include "panels/special_pages/special_pages_commands.h"
#include "panels/special_pages/special_pages_context.h"
#include "panels/special_pages/special_pages_list.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Windows.h"
#include "ui/nib_window.h"
#include "ui/panel_operations.h"

#include <cstdio>
#include <iterator>
#include <utility>

namespace {

enum ControlNumber : SInt32 {
    kPane = 1,
    kAddCoversImage = 101,
    kAddInsertsImage = 201,
    kAddExceptionsImage = 301,
    kList = 1000,
    kEditButton = 1200,
    kDeleteButton = 1300,
    kDeleteAllButton = 1400,
};

_SpecialPagesContext* Context(PMPDEContext context) {
    return reinterpret_cast<_SpecialPagesContext*>(context);
}

_SpecialPagesContext* InitContext() {
    return MakePanelRecord<_SpecialPagesContext>(CFSTR("SpecialPagesTitle"));
}

ControlRef Find(const _SpecialPagesContext& context, SInt32 number) {
    ControlRef control = nullptr;
    HIViewFindByID(context.userPane, {kSpecialPagesSignature, number}, &control);
    return control;
}

/// Says which part of the nib is missing.
void ReportFailure(OSStatus status) {
    const char* reason = "!! Failed to get user pane control reference.";
    if (status == kNibNotFoundErr) {
        reason = "!! Failed to load nib from bundle.";
    } else if (status == kNibWindowNotFoundErr) {
        reason = "!! Failed to create window from nib.";
    }
    std::puts(reason);
}

OSStatus InitializeSpecialPages(_SpecialPagesContext* context) {
    context->addCoversImage = Find(*context, kAddCoversImage);
    context->addInsertsImage = Find(*context, kAddInsertsImage);
    context->addExceptionsImage = Find(*context, kAddExceptionsImage);
    context->editButton = Find(*context, kEditButton);
    context->deleteButton = Find(*context, kDeleteButton);
    context->deleteAllButton = Find(*context, kDeleteAllButton);
    context->list = Find(*context, kList);
    ConfigureSpecialPagesListAndInstallCallbacks(context->list, SpecialPagesListItemNotificationCallback);

    static constexpr EventTypeSpec kDraws[] = {{kEventClassControl, kEventControlDraw}};
    static constexpr EventTypeSpec kHits[] = {{kEventClassControl, kEventControlHit}};
    static constexpr EventTypeSpec kKeys[] = {{kEventClassKeyboard, kEventRawKeyDown}};
    for (const ControlRef image : {context->addCoversImage, context->addInsertsImage, context->addExceptionsImage}) {
        InstallControlEventHandler(image, SpecialPagesEventHandler, std::size(kDraws), kDraws, nullptr, nullptr);
    }
    OSStatus status = InstallControlEventHandler(context->userPane, SpecialPagesEventHandler, std::size(kHits), kHits,
                                                 nullptr, &context->eventHandler);
    if (status == noErr) {
        status = InstallControlEventHandler(context->list, SpecialPagesListKeyHandler, std::size(kKeys), kKeys, nullptr,
                                            &context->keyHandler);
    }
    UpdateSpecialPagesSummary();
    return status;
}

// ---- The operations

OSStatus Sync(PMPDEContext opaque, PMPrintSession session, Boolean ticketsToControls) {
    _SpecialPagesContext* context = Context(opaque);
    if (context == nullptr) {
        return kPMInvalidPDEContext;
    }
    if (const OSStatus status = GetTicketForSync(opaque, session, &context->ticket); status != noErr) {
        return status;
    }
    if (!ticketsToControls) {
        return WriteSpecialPages(&context->records, context->ticket);
    }
    ReadSpecialPages(context->ticket, &context->records);
    UpdateSpecialPagesSummary();
    return noErr;
}

OSStatus Prologue(PMPDEContext* opaque, OSType* creator, CFStringRef* kind, CFStringRef* title, UInt32* maximumWidth,
                  UInt32* maximumHeight) {
    gSpecialPages = InitContext();
    return AnswerPrologue(gSpecialPages, opaque, creator, kind, title, maximumWidth, maximumHeight);
}

OSStatus Initialize(PMPDEContext opaque, PMPDEFlags*, PMPDERef, ControlRef parentPane, PMPrintSession session) {
    _SpecialPagesContext* context = Context(opaque);
    if (context == nullptr || session == nullptr || parentPane == nullptr) {
        return kPMInvalidPDEContext;
    }
    context->hostPane = parentPane;
    return Sync(opaque, session, true);
}

OSStatus Open(PMPDEContext opaque) {
    _SpecialPagesContext* context = Context(opaque);
    if (context == nullptr) {
        return kPMInvalidPDEContext;
    }
    if (std::exchange(context->opened, true)) {
        return noErr;
    }
    if (const OSStatus status =
            EmbedPaneFromNib(context->bundle, CFSTR("SpecialPages"), CFSTR("SpecialPages"),
                             {kSpecialPagesSignature, kPane}, context->hostPane, &context->userPane);
        status != noErr) {
        ReportFailure(status);
        return status;
    }
    return InitializeSpecialPages(context);
}

OSStatus Terminate(PMPDEContext opaque, OSStatus) {
    _SpecialPagesContext* context = Context(opaque);
    if (context == nullptr) {
        return kPMInvalidPDEContext;
    }
    RemoveEventHandler(context->eventHandler);
    RemoveEventHandler(context->keyHandler);
    if (gSpecialPages == context) {
        gSpecialPages = nullptr;
    }
    delete context;
    return noErr;
}

}  // namespace

TAVRO_PLUGIN_EXPORT OSStatus GetSpecialPagesPanelInterface(PlugInIntf** interface) {
    return MakePanelInterface({Prologue, Initialize, Sync, GetNoSummaryText, Open, CloseWithoutWork, Terminate},
                              interface);
}

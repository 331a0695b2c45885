#include "ui/panel_operations.h"

#include "model/settings/plugin_state.h"
#include "model/settings/ticket_access.h"
#include "platform/foundation/CFBundle.h"
#include "platform/toolbox/Controls.h"

CFRef<CFStringRef> CopyPanelTitle(CFBundleRef bundle, CFStringRef key) {
    return CFRef<CFStringRef>::adopt(CFBundleCopyLocalizedString(bundle, key, key, CFSTR("Localizable")));
}

OSStatus AnswerPrologue(PMPDEContext made, CFStringRef ownTitle, PMPDEContext* context, OSType* creator,
                        CFStringRef* kind, CFStringRef* title, UInt32* maximumWidth, UInt32* maximumHeight) {
    *context = made;
    if (made == nullptr) {
        return kPMInvalidPDEContext;
    }
    *creator = kPanelSignature;
    *kind = kPDEPanelKind;
    *maximumWidth = 0;
    *maximumHeight = 0;
    if (ownTitle != nullptr) {
        *title = ownTitle;
    }
    return noErr;
}

OSStatus GetTicketForSync(PMPDEContext context, PMPrintSession session, PMTicketRef* ticket) {
    if (context == nullptr || session == nullptr) {
        return kPMInvalidPrintSession;
    }
    return GetTicketFromSession(session, kPDE_PMPrintSettingsKey, ticket);
}

OSStatus GetNoSummaryText(PMPDEContext context, CFArrayRef* titles, CFArrayRef* summaries) {
    *titles = nullptr;
    *summaries = nullptr;
    return context == nullptr ? kPMInvalidPDEContext : noErr;
}

OSStatus CloseWithoutWork(PMPDEContext context) {
    return context == nullptr ? kPMInvalidPDEContext : noErr;
}

ControlRef FindPanelControl(ControlRef pane, SInt32 number) {
    ControlRef control = nullptr;
    HIViewFindByID(pane, {kPanelSignature, number}, &control);
    return control;
}

ControlRef GetEventControl(EventRef event) {
    ControlRef control = nullptr;
    GetEventParameter(event, kEventParamDirectObject, typeControlRef, nullptr, sizeof control, nullptr, &control);
    return control;
}

SInt32 GetPanelControlNumber(ControlRef control) {
    ControlID id{};
    return GetControlID(control, &id) == noErr && id.signature == kPanelSignature ? id.id : 0;
}

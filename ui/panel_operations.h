// What panels do alike: their answers to the shell, and finding their controls.
#pragma once

#include "core/features/panel_interface.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/printing/PMTicket.h"
#include "platform/toolbox/Events.h"
#include "ui/nib_window.h"

#include <new>
#include <optional>
#include <utility>

/// The creator of every panel and the signature of the controls of its pane.
inline constexpr OSType kPanelSignature = FourCharCode("Tshl");

/// The panel's title from the table "Localizable"; the key itself when it has no text.
CFRef<CFStringRef> CopyPanelTitle(CFBundleRef bundle, CFStringRef key);

/// Prologue for a panel that has made its context: the context, the creator, the kind, the title (lent, and left alone
/// when it is null) and no maximum size. For a null context that alone, and kPMInvalidPDEContext.
OSStatus AnswerPrologue(PMPDEContext made, CFStringRef ownTitle, PMPDEContext* context, OSType* creator,
                        CFStringRef* kind, CFStringRef* title, UInt32* maximumWidth, UInt32* maximumHeight);

/// The same from the panel's own record, which has a `title`.
template <typename Record>
OSStatus AnswerPrologue(Record* made, PMPDEContext* context, OSType* creator, CFStringRef* kind, CFStringRef* title,
                        UInt32* maximumWidth, UInt32* maximumHeight) {
    return AnswerPrologue(reinterpret_cast<PMPDEContext>(made), made == nullptr ? nullptr : made->title.get(), context,
                          creator, kind, title, maximumWidth, maximumHeight);
}

/// A panel's record with its `bundle` (lent) and its `title`; null when there is no memory for it.
template <typename Record>
Record* MakePanelRecord(CFStringRef titleKey) {
    auto* record = new (std::nothrow) Record{};
    if (record != nullptr) {
        record->bundle = CFBundleGetBundleWithIdentifier(kPDEBundleIdentifier);
        record->title = CopyPanelTitle(record->bundle, titleKey);
    }
    return record;
}

/// Prologue of a panel whose record `make` makes.
template <auto make>
OSStatus PanelPrologue(PMPDEContext* context, OSType* creator, CFStringRef* kind, CFStringRef* title,
                       UInt32* maximumWidth, UInt32* maximumHeight) {
    return AnswerPrologue(make(), context, creator, kind, title, maximumWidth, maximumHeight);
}

/// Initialize of a panel that reads the tickets: its record keeps the `hostPane`. kPMInvalidPDEContext without context
/// or session.
template <typename Record, auto sync>
OSStatus InitializePanel(PMPDEContext context, PMPDEFlags*, PMPDERef, ControlRef parentPane, PMPrintSession session) {
    if (context == nullptr || session == nullptr) {
        return kPMInvalidPDEContext;
    }
    reinterpret_cast<Record*>(context)->hostPane = parentPane;
    return sync(context, session, true);
}

/// What Open begins with: the record's `pane` comes out of the nib into its `hostPane`. Nothing when Open goes on, else
/// what it answers: noErr when the record was `opened` before, kPMInvalidPDEContext without one, the status of the nib.
template <typename Record>
std::optional<OSStatus> EmbedPanelOnce(Record* record, CFStringRef nibName, CFStringRef windowName, SInt32 pane) {
    if (record == nullptr) {
        return kPMInvalidPDEContext;
    }
    if (std::exchange(record->opened, true)) {
        return noErr;
    }
    const OSStatus status =
        EmbedPaneFromNib(record->bundle, nibName, windowName, {kPanelSignature, pane}, record->hostPane, &record->pane);
    return status == noErr ? std::nullopt : std::optional(status);
}

/// Terminate of a panel that has nothing but its record. kPMInvalidPDEContext without one.
template <typename Record>
OSStatus TerminatePanel(PMPDEContext context, OSStatus) {
    delete reinterpret_cast<Record*>(context);
    return context == nullptr ? kPMInvalidPDEContext : noErr;
}

/// The ticket between which and its controls a panel syncs: the session's print settings. kPMInvalidPrintSession
/// without context or session, else the status of finding the ticket.
OSStatus GetTicketForSync(PMPDEContext context, PMPrintSession session, PMTicketRef* ticket);

/// GetSummaryText of a panel that has none: both null. kPMInvalidPDEContext without context.
OSStatus GetNoSummaryText(PMPDEContext context, CFArrayRef* titles, CFArrayRef* summaries);

/// Close of a panel that has nothing to end there. kPMInvalidPDEContext without context.
OSStatus CloseWithoutWork(PMPDEContext context);

/// A control of the panel's pane by its number; null when there is none.
ControlRef FindPanelControl(ControlRef pane, SInt32 number);

/// The control that an event is about; null when it is about something else.
ControlRef GetEventControl(EventRef event);
/// The number of a control with the panels' signature; 0 for any other.
SInt32 GetPanelControlNumber(ControlRef control);

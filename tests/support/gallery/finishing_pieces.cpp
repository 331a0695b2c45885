#include "tests/support/gallery/finishing_pieces.h"

#include "model/settings/plugin_state.h"
#include "model/settings/ticket_access.h"
#include "panels/paper_output/booklet_creation_dialog.h"
#include "panels/paper_output/finishing_commands.h"
#include "panels/paper_output/finishing_menu.h"
#include "panels/paper_output/separators_dialog.h"
#include "tests/support/finishing_features.h"

namespace {

#define kOptionsKey CFSTR("com.tavro.print.FinishingOptions")
#define kCustomKey CFSTR("com.tavro.print.FinishingCustom")
#define kOffsetKey CFSTR("com.tavro.print.FinishingOffset")
#define kSubsetKey CFSTR("com.tavro.print.FinishingOffsetEnableSubset")
#define kPagesKey CFSTR("com.tavro.print.FinishingOffsetPagesPerSubset")
#define kBookletKey CFSTR("com.tavro.print.BookletLayout")
#define kOutlinesKey CFSTR("com.tavro.print.BookletDrawOutlines")
#define kFoldKey CFSTR("com.tavro.print.BookletFoldStaple")
#define kNewSizeKey CFSTR("com.tavro.print.BookletForceNewSize")

/// Runs a dialog on a printer that has all features of finishing.
template <typename Run>
OSStatus withFinisher(Run run) {
    PMTicketRef info = 0;
    GetTicketFromSession(GetCurrentPrintSession(), kPDE_PMPrinterInfoKey, &info);
    PPDContext ppd = nullptr;
    ppdOpenCompiledPPDFromTicket(info, &ppd);
    OSStatus status = noErr;
    {
        const InstalledFinisher finisher(info, ppd, AllFinishingFeatures());
        status = run();
    }
    LoadInstallableOptions(info, ppd, InstalledFeatures);
    ppdCloseCompiledPPDFromTicket(ppd);
    return status;
}

OSStatus runFinishingCommand(const PieceRecords& records, OSType command) {
    const PMTicketRef ticket = records.ticket;
    FinishingSettings settings;
    settings.options = GetTicketNumber(ticket, kOptionsKey, settings.options);
    settings.offset = GetTicketNumber(ticket, kOffsetKey, settings.offset);
    settings.enableSubset = GetTicketNumber(ticket, kSubsetKey, settings.enableSubset);
    settings.pagesPerSubset = GetTicketNumber(ticket, kPagesKey, settings.pagesPerSubset);
    CFStringRef custom = nullptr;
    if (PMTicketGetCFString(ticket, kPMTopLevel, kPMTopLevel, kCustomKey, &custom) == noErr) {
        settings.custom = CFRef<CFStringRef>::retain(custom);
    }
    const OSStatus status = withFinisher([&] { return CarryOutFinishingCommand(records.bundle, command, &settings); });
    SetTicketNumber(ticket, kTicketCreator, kOptionsKey, settings.options);
    SetTicketNumber(ticket, kTicketCreator, kOffsetKey, settings.offset);
    SetTicketNumber(ticket, kTicketCreator, kSubsetKey, settings.enableSubset);
    SetTicketNumber(ticket, kTicketCreator, kPagesKey, settings.pagesPerSubset);
    if (settings.custom) {
        PMTicketSetCFString(ticket, kTicketCreator, kCustomKey, settings.custom.get(), kPMUnlocked);
    }
    return status;
}

}  // namespace

OSStatus runStaplePosition(const PieceRecords& records) {
    return runFinishingCommand(records, FourCharCode("Stp1"));
}

OSStatus runFold(const PieceRecords& records) {
    return runFinishingCommand(records, kFinishingFold);
}

OSStatus runMultipleFinishing(const PieceRecords& records) {
    return runFinishingCommand(records, kFinishingMultiple);
}

OSStatus runCustomFinishing(const PieceRecords& records) {
    return runFinishingCommand(records, kFinishingCustom);
}

OSStatus runOffset(const PieceRecords& records) {
    return runFinishingCommand(records, kOffsetCommand);
}

OSStatus runSeparators(const PieceRecords& records) {
    SInt32 option = 0;
    SInt32 color = 0;
    SyncSeparatorsFromTicket(records.ticket, &option, &color);
    const OSStatus status = RunModalSeparatorsDialog(records.bundle, &option, &color);
    SyncSeparatorsToTicket(records.ticket, option, color);
    return status;
}

OSStatus runBookletCreation(const PieceRecords& records) {
    const PMTicketRef ticket = records.ticket;
    BookletCreation booklet{.on = GetTicketNumber(ticket, kBookletKey, 0) != 0,
                            .drawOutlines = GetTicketNumber(ticket, kOutlinesKey, 0),
                            .foldOption = GetTicketNumber(ticket, kFoldKey, 1),
                            .forceNewSize = false,
                            .size = GetTicketNumber(ticket, kNewSizeKey, 0)};
    booklet.forceNewSize = booklet.size != 0;
    const OSStatus status = withFinisher([&] { return RunModalBookletCreationDialog(records.bundle, &booklet); });
    SetTicketNumber(ticket, kTicketCreator, kBookletKey, booklet.on);
    SetTicketNumber(ticket, kTicketCreator, kOutlinesKey, booklet.drawOutlines);
    SetTicketNumber(ticket, kTicketCreator, kFoldKey, booklet.foldOption);
    SetTicketNumber(ticket, kTicketCreator, kNewSizeKey, booklet.forceNewSize ? booklet.size : 0);
    return status;
}

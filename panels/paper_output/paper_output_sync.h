// The settings of the Paper and Output panel, and their items in the print settings ticket.
#pragma once

#include "jobtypes/records/fax_recipient_list.h"
#include "jobtypes/records/job_type.h"
#include "model/stock/stock.h"
#include "panels/paper_output/collate_staple.h"
#include "panels/paper_output/finishing_choices.h"
#include "panels/paper_output/output_color.h"
#include "panels/paper_output/output_destination.h"
#include "panels/paper_output/separators_dialog.h"

#include <memory>

/// The settings, at first as a ticket without items has them. Ticket values throughout.
struct PaperOutputSettings {
    PaperOutputSettings();

    Stock stock;  // the job's own paper
    SInt32 separatorOption = kSeparatorsNone;
    SInt32 separatorColor = kStockColorWhite;

    FinishingSettings finishing;
    SInt32 collateStaple = kCollated;  // see collate_staple.h
    SInt32 foldOptions = 1;            // of the option map of "TRFoldOptions"

    SInt32 duplex = 1;  // of the option map of "Duplex"
    // A booklet, its outlines, and the paper that it is printed on when that is not the job's: a page size.
    bool booklet = false;
    SInt32 drawOutlines = 0;
    bool forceNewSize = false;
    SInt32 bookletSize = 0;

    SInt32 outputDestination = kOutputAutomatic;  // kTicketValueUnset: none is asked for
    SInt32 outputColor = kOutputInColor;

    JobType job;
    CFRef<CFMutableDictionaryRef> jobDictionary;  // the job's record as it was read, with what else stands in it
    CFRef<CFMutableDictionaryRef> faxOptions;     // keys in jobtypes/records/fax_options.h; null when there are none
    // Null when there is none. A list can be long: while it is as the ticket has it, it is not copied. Whoever changes
    // it calls MakeFaxRecords() first.
    std::unique_ptr<FaxRecipientList> faxRecipients;
    CFRef<CFArrayRef> faxRecipientsInTicket;  // the ticket's own array; null when the list may differ from it
};

/// What there is to read and write: on the printer, and of the panel's controls.
struct PaperOutputScope {
    PPDKeywordPairs collateStaplePairs;
    bool hasDuplexControl = false;
    bool isBookletControlActive = false;
    bool isShown = true;
};

/// Reads all settings. What is missing, of another type or without a meaning on this printer is as in a new record; the
/// job's passcode, time, name and place stay as they are in the settings when the ticket has none.
void ReadPaperOutputSettings(PMTicketRef ticket, const PaperOutputScope& scope, PaperOutputSettings* settings);

/// Writes all settings, and asks for the PPD's options that go with them as far as the PPD has them.
void WritePaperOutputSettings(PaperOutputSettings* settings, const PaperOutputScope& scope, PMTicketRef ticket);

// ---- What a choice changes

/// Takes a choice of the collate and staple menu over. It ends what an earlier one folded or punched, and a booklet's
/// folds; the sides of a booklet become those of a job that turns over its long edge.
void ChooseCollateStaple(SInt32 choice, const PPDKeywordPairs& pairs, PaperOutputSettings* settings);

/// Settles the sides after the booklet dialog: a booklet turns over its short edge, a job that is none any more over
/// its long edge. Its folds leave none of the collate and staple menu.
void SettleBooklet(bool wasBooklet, const PPDKeywordPairs& pairs, PaperOutputSettings* settings);

/// The value that the pop-up of the sides shows.
SInt32 ShownDuplex(const PaperOutputSettings& settings);

/// The options of a fax and its recipients, made when there are none yet, to be changed by the caller.
void MakeFaxRecords(PaperOutputSettings* settings);

// The settings of the Layout panel: booklets, and how they are finished.
#pragma once

#include "model/records/booklet_fold.h"
#include "platform/printing/PMTicket.h"

struct LayoutSettings {
    SInt32 bookletLayout;  // 1 on, 0 off
    SInt32 drawOutlines;   // 1 with the outlines of the booklet's pages; kept, but without effect, when it is off
    bool foldInstalled;    // the printer has a booklet folder
    SInt32 foldOption;     // ticket value of the TRFoldOptions option; -1 for an option that has none
};

/// Reads the settings from the ticket, and from the installed options whether there is a folder. Without a folder the
/// fold option is kFoldNotInstalled; with one, and none asked for, kFoldNone. Outlines are read for a booklet only.
void ReadLayoutSettings(PMTicketRef ticket, LayoutSettings* settings);

/// Writes the settings, and with them the sides on which the job is printed. A back cover that has become the same as
/// the front cover is taken out of the ticket.
void WriteLayoutSettings(const LayoutSettings& settings, PMTicketRef ticket);

/// The sides (a value of PlexMap) of a job that has been printed on others: a booklet turns over its short edge. A job
/// that was one, or was turned over that edge for another reason, turns over the long edge as soon as it is none.
SInt32 SidesForLayout(bool booklet, SInt32 sides);

/// The file name of the picture of the layout, constant.
CFStringRef LayoutPicture(const LayoutSettings& settings);

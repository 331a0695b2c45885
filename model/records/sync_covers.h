// The job's covers in the print settings ticket.
#pragma once

#include "model/records/special_page.h"
#include "platform/printing/PMTicket.h"

enum CoversDirection : UInt8 { kCoversToTicket = 0, kCoversFromTicket = 1 };

/// kCoversToTicket writes each cover's dictionary, or removes it when there is no such cover, and tells the driver by
/// PPD main keywords: "JCLCovers" whether there is a front cover, with or without a back cover, and what is printed on
/// it ("None" without a front cover, and for a front cover printed on one side only); and the front cover's type and
/// colour in "JCLMediaType" and "JCLMediaColor", or, with a back cover, in "JCLFrontBackMediaType" and
/// "JCLFrontBackMediaColor". The back cover's own paper is in its dictionary alone.
///
/// kCoversFromTicket makes the covers from the dictionaries; null for one that is not there.
///
/// Returns the status of the last step on the ticket, which is the back cover's when reading; 0, with nothing done,
/// for any other direction.
OSStatus SyncCovers(PMTicketRef ticket, UInt8 direction, std::unique_ptr<Cover>* frontCover,
                    std::unique_ptr<Cover>* backCover);

// What kind of job it is: printed at once, held behind a passcode, printed at a time of day, faxed.
//
// The record stands in the print settings ticket as a dictionary. A passcode that goes into it becomes part of the
// ticket; nothing else may show it.
#pragma once

#include "model/settings/record_ticket.h"
#include "platform/foundation/DateTimeUtils.h"

/// The ticket's item.
#define kJobTypeTicketKey CFSTR("com.tavro.print.JobType")
// In its dictionary: a value of JobTypeMap, digits, seconds since 1904 in local time, and two texts.
#define kJobTypeKey CFSTR("JobType")
#define kSecurePrintPasswordKey CFSTR("SecurePrintPassword")
#define kDelayedPrintTimeKey CFSTR("DelayedPrintTime")
#define kSavedJobNameKey CFSTR("SavedJobName")
#define kSavedJobLocationKey CFSTR("SavedJobLocation")
/// The item with the name that the application gave the job.
#define kJobNameTicketKey CFSTR("com.apple.print.JobInfo.PMJobName")

// Values of JobTypeMap. The last is in no menu; tickets of other editions hold it.
inline constexpr SInt32 kJobTypeNormal = 1;
inline constexpr SInt32 kJobTypeSave = 3;
inline constexpr SInt32 kJobTypePrintAndSave = 4;
inline constexpr SInt32 kJobTypeFax = 5;
inline constexpr SInt32 kJobTypeSecurePrint = 6;
inline constexpr SInt32 kJobTypeDelayedPrint = 7;
inline constexpr SInt32 kJobTypeSampleSet = 8;
inline constexpr SInt32 kJobTypeOfOtherEditions = 9;

/// Whether jobs of the type have something to set up.
bool JobTypeHasSetup(SInt32 jobType);

struct JobType {
    SInt32 jobType = kJobTypeNormal;
    SInt32 mediaType = 1;
    bool useJobName = true;
    CFRef<CFStringRef> savedJobName;
    CFRef<CFStringRef> savedJobLocation;
    CFRef<CFStringRef> passcode;  // decimal digits; null or empty for none
    LongDateTime delayedPrintTime = 0;

    /// Takes over what the ticket says: the result is a mutable copy of its dictionary, or a new one when it has none.
    /// Kind, medium and the use of the job's name are then those of the dictionary, or the defaults; the rest stays as
    /// it was where the dictionary is silent.
    [[nodiscard]] CFRef<CFMutableDictionaryRef> read(PMTicketRef ticket);

    /// Writes all fields into the dictionary. A job that uses its own name takes it from the ticket, and is called
    /// "Unknown" in the user's language when it has none.
    void write(CFMutableDictionaryRef dictionary, PMTicketRef ticket);
};

/// The moment at which a job is printed that is to be printed at the clock's time of day: today, or tomorrow when that
/// is over. The clock's date does not matter.
LongDateTime NextTimeOfDay(const LongDateRec& clock, LongDateTime now);

/// The same digits as ASCII characters; characters that are no decimal digits of any script are left out.
[[nodiscard]] CFRef<CFStringRef> CopyASCIIDigits(CFStringRef digits);

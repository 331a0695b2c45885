// The items that the panels leave in the print settings ticket, each under its key. Those of a record of their own
// stand with the record: jobtypes/records/job_type.h, jobtypes/records/fax_options.h.
#pragma once

#include "platform/foundation/CFString.h"

// Paper, covers, inserts and exceptions
#define kJobLevelStockItem CFSTR("com.tavro.print.JobLevelStock")               // Stock
#define kFrontCoverItem CFSTR("com.tavro.print.SpecialPages.FrontCover")        // Cover
#define kBackCoverItem CFSTR("com.tavro.print.SpecialPages.BackCover")          // Cover
#define kInsertListItem CFSTR("com.tavro.print.SpecialPages.InsertList")        // array of Insert
#define kExceptionListItem CFSTR("com.tavro.print.SpecialPages.ExceptionList")  // array of ExceptionPage
#define kSeparatorOptionItem CFSTR("com.tavro.print.SeparatorOption")           // a value of SeparatorOptionMap
#define kSeparatorColorItem CFSTR("com.tavro.print.SeparatorColor")  // a value of the option map of "MediaColor"

// Finishing: numbers, and a text of the user's
#define kFinishingOptionsItem CFSTR("com.tavro.print.FinishingOptions")
#define kFinishingCustomItem CFSTR("com.tavro.print.FinishingCustom")
#define kFinishingOffsetItem CFSTR("com.tavro.print.FinishingOffset")                          // kOffsetOff, kOffsetOn
#define kFinishingOffsetEnableSubsetItem CFSTR("com.tavro.print.FinishingOffsetEnableSubset")  // 0, 1
#define kFinishingOffsetPagesPerSubsetItem CFSTR("com.tavro.print.FinishingOffsetPagesPerSubset")
#define kFinishingSlipSheetItem CFSTR("com.tavro.print.FinishingSlipSheet")  // kSlipSheetsOn
#define kFinishingDuplexItem CFSTR("com.tavro.print.FinishingDuplex")        // of the option map of "Duplex"
#define kDuplexingItem CFSTR("com.apple.print.PrintSettings.PMDuplexing")    // the same, for applications
#define kFinishingOutputDestinationItem CFSTR("com.tavro.print.FinishingOutputDestination")  // of "OutputBin"
#define kFinishingOutputColorItem CFSTR("com.tavro.print.FinishingOutputColor")  // kOutputInBlackAndWhite, …InColor
#define kFinishingCollateStapleItem CFSTR("com.tavro.print.FinishingCollateStaple")

// Booklets
#define kBookletLayoutItem CFSTR("com.tavro.print.BookletLayout")              // boolean
#define kBookletDrawOutlinesItem CFSTR("com.tavro.print.BookletDrawOutlines")  // 0, 1
#define kBookletForceNewSizeItem CFSTR("com.tavro.print.BookletForceNewSize")  // boolean; the size is the stock's
#define kBookletFoldStapleItem CFSTR("com.tavro.print.BookletFoldStaple")      // of the option map of "TRFoldOptions"
#define kBookletLayoutOrderItem CFSTR("com.tavro.print.AdvancedBookletLayoutOrderStr")  // kBookletOrder…

// Images
#define kFullColorOptionsItem CFSTR("com.tavro.print.FullColorOptions")               // FullColorOptions
#define kInvertImageOptionsItem CFSTR("com.tavro.print.InvertImageOptions")           // dictionary of the two
#define kNegativeImageKey CFSTR("NegativeImage")                                      // 0, 1
#define kMirrorImageKey CFSTR("MirrorImage")                                          // 0, 1
#define kRotateImage180Item CFSTR("com.tavro.print.AdvancedRotateImage180")           // 0, 1
#define kWatermarkItem CFSTR("com.tavro.print.watermark.Watermark")                   // the name of a stored one
#define kWatermarkFirstPageOnlyItem CFSTR("com.tavro.print.watermark.FirstPageOnly")  // 0, 1
#define kWatermarkOptionItem CFSTR("com.tavro.print.watermark.Option")  // kWatermarkBehind, kWatermarkInFront

// The job
#define kEmitTPIFItem CFSTR("com.tavro.print.EmitTPIF")  // 0, 1: instructions for the printer's controller
#define kJobNotesMessageName "com.tavro.print.JobNotesMessage"
#define kJobNotesSheetMessageName "com.tavro.print.JobNotesSheetMessage"
#define kJobNotesJobNameName "com.tavro.print.JobNotesJobName"
#define kJobNotesSenderNameName "com.tavro.print.JobNotesSenderName"
#define kJobNotesRecipientName "com.tavro.print.JobNotesRecipient"
#define kJobNotesMessageItem CFSTR(kJobNotesMessageName)
#define kJobNotesSheetMessageItem CFSTR(kJobNotesSheetMessageName)
#define kJobNotesJobNameItem CFSTR(kJobNotesJobNameName)
#define kJobNotesSenderNameItem CFSTR(kJobNotesSenderNameName)
#define kJobNotesRecipientItem CFSTR(kJobNotesRecipientName)

inline constexpr SInt32 kOffsetOff = 1;
inline constexpr SInt32 kOffsetOn = 2;
inline constexpr SInt32 kSlipSheetsOn = 2;
inline constexpr SInt32 kOutputInBlackAndWhite = 1;
inline constexpr SInt32 kOutputInColor = 2;
inline constexpr SInt32 kBookletOrderRightToLeft = 1;
inline constexpr SInt32 kBookletOrderLeftToRight = 2;
inline constexpr SInt32 kWatermarkBehind = 1;
inline constexpr SInt32 kWatermarkInFront = 2;

// Names of what the maker's panels leave in the print settings ticket, where more than one source here reads it.
//
// The plug-in that writes the items is known by its factory only, so their names stand here a second time.
#pragma once

#include "platform/foundation/CFString.h"

// A number
#define kOutputColorItem CFSTR("com.tavro.print.FinishingOutputColor")
inline constexpr SInt32 kOutputBlackAndWhite = 1;
inline constexpr SInt32 kOutputColor = 2;
// Dictionaries
#define kJobTypeItem CFSTR("com.tavro.print.JobType")
#define kJobTypeEntry CFSTR("JobType")  // in it: PanelChoices::JobType
#define kJobLevelStockItem CFSTR("com.tavro.print.JobLevelStock")
#define kFaxOptionsItem CFSTR("com.tavro.print.FaxOptions")
// An array
#define kFaxRecipientsItem CFSTR("com.tavro.print.FaxRecipientList")
// A name and two numbers
#define kWatermarkItem CFSTR("com.tavro.print.watermark.Watermark")
#define kWatermarkFirstPageOnlyItem CFSTR("com.tavro.print.watermark.FirstPageOnly")
#define kWatermarkOptionItem CFSTR("com.tavro.print.watermark.Option")

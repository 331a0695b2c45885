// The settings of the Image Options panel that are options of the PPD: each is the position of one in the PPD's list.
#pragma once

#include "platform/foundation/CFRef.h"
#include "platform/printing/PMTicket.h"

/// The options lists (see ppd_ui_dictionary.h) of the three main keywords. Null for one that the printer does not have,
/// or has with a number of options that the panel's controls cannot show.
struct ImageOptionLists {
    CFRef<CFArrayRef> resolution;    // any number
    CFRef<CFArrayRef> imageQuality;  // seven, from the lightest to the darkest
    CFRef<CFArrayRef> economode;     // off and on
};
ImageOptionLists CopyImageOptionLists();

/// Positions from 0.
struct ImageOptionsSettings {
    SInt32 resolutionIndex;
    SInt32 imageQualityIndex;
    SInt32 economodeIndex;
};

/// Reads the options that the ticket asks for. Without any: the first resolution, the middle of the qualities, off.
ImageOptionsSettings ReadImageOptions(PMTicketRef ticket, const ImageOptionLists& lists);

void WriteResolution(SInt32 index, const ImageOptionLists& lists, PMTicketRef ticket);
void WriteImageQuality(SInt32 index, const ImageOptionLists& lists, PMTicketRef ticket);
void WriteEconomode(SInt32 index, const ImageOptionLists& lists, PMTicketRef ticket);

// Lighten/Darken is shown from -3 to 3, the quality in the middle of the list as 0.
inline constexpr SInt32 kMiddleImageQuality = 3;
inline constexpr SInt32 kLightest = -kMiddleImageQuality;
inline constexpr SInt32 kDarkest = kMiddleImageQuality;
constexpr SInt32 LevelForImageQuality(SInt32 index) {
    return index - kMiddleImageQuality;
}
constexpr SInt32 ImageQualityForLevel(SInt32 level) {
    return level + kMiddleImageQuality;
}

/// The file name of the picture of a page with or without toner saver, constant.
CFStringRef TonerPicture(SInt32 economodeIndex);

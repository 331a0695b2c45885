// The print dialog's own controls, signature 'Host'. docs/script-language.md lists them for scripts.
#pragma once

#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFRef.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Windows.h"

#include <string>

inline constexpr OSType kHostSignature = FourCharCode("Host");

enum HostControl : SInt32 {
    kDocumentName = 1,
    kDocumentPages = 2,
    kDocumentMenu = 3,  // of several documents
    kPrinterMenu = 10,
    kPrinterNote = 11,  // hidden when there is nothing to say
    kPresetMenu = 12,
    kPresetActions = 13,
    kCopies = 20,
    kCollate = 21,
    kPages = 30,  // radio group: 1 all pages, 2 a range, 3 the current page, 4 what is selected
    kPageRangeField = 31,
    kPageSubset = 32,
    kReverseOrder = 33,
    kCurrentPage = 35,       // the button of the group; hidden when no program has said which it is
    kSelectedPages = 36,     // the button of the group; hidden when no program knows of any
    kPageRangeMessage = 34,  // what is wrong with the range
    kPaperSize = 40,
    kOrientation = 41,  // its items are the orientations of the page format ticket
    kPaperSource = 42,
    kPaperSourceLabel = 43,
    kScaling = 44,  // these menus have the items of the driver's enumerations, in their order
    kScalingPercent = 45,
    kNumberUp = 46,
    kNumberUpOrder = 47,
    kBorders = 48,
    kMakersPlace = 50,
    kNoMakersPanels = 51,
    kMakersTabs = 52,  // of the plug-in's extensions; hidden where there is one
    kPrint = 60,
    kCancel = 61,
    kSavePDF = 62,
    kSummaryPlace = 69,
    kSummary = 70,  // text view
    kConflictText = 71,
    kConflictButton = 72,
    kConflictSign = 73,
    kOtherRemedy = 74,
    kUndoChange = 75,
    // The column that shows what will come out.
    kPreviewPlace = 80,
    kPreviewSheet = 81,
    kPreviewFirst = 82,
    kPreviewBack = 83,
    kPreviewNumber = 84,
    kPreviewCount = 85,
    kPreviewForward = 86,
    kPreviewLast = 87,
    kPreviewStack = 88,
    kShowPreview = 89,
    // The dialog that asks for the name of a preset.
    kPresetName = 100,
    kPresetNameOK = 101,
    kPresetNameCancel = 102,
    kPresetForAll = 103,  // hidden where other programs can have none
    kPresetForAllName = 104,
    // The window that asks for the password of a print server.
    kServerQuestion = 110,
    kServerUser = 111,
    kServerPassword = 112,
    kServerPasswordOK = 113,
    kServerPasswordCancel = 114,
    // The window that shows how far a job is.
    kJobProgressTitle = 120,
    kJobProgressBar = 121,
    kJobProgressState = 122,
    kJobProgressCancel = 123,
    // The window that asks for the password of a document.
    kDocumentPasswordQuestion = 140,
    kDocumentPassword = 141,
    kDocumentPasswordFault = 142,
    kDocumentPasswordOK = 143,
    kDocumentPasswordCancel = 144,
    // The window that asks for a paper size.
    kCustomWidth = 130,
    kCustomLength = 131,
    kCustomWidthLimits = 132,
    kCustomLengthLimits = 133,
    kCustomUnit = 134,
    kCustomOK = 135,
    kCustomCancel = 136,
};

/// The window of a nib that has one, both of the name; null when it cannot be made: the toolbox has told why.
WindowRef makeWindow(CFBundleRef bundle, CFStringRef name);

/// Null when the window has no such control.
ControlRef hostControl(WindowRef window, HostControl number);

void setStaticText(ControlRef label, const CFRef<CFStringRef>& text);
std::string fieldText(ControlRef field);
void setFieldText(ControlRef field, const CFRef<CFStringRef>& text);

// The dialog that asks how sets are offset from one another in the tray.
#pragma once

#include "panels/paper_output/finishing_choices.h"

inline constexpr SInt32 kMostPagesPerSubset = 999;

// Its items.
inline constexpr SInt32 kOffsetItemNone = 1;
inline constexpr SInt32 kOffsetItemSets = 2;
inline constexpr SInt32 kOffsetItemSubsets = 3;

/// The item that shows the settings. Numbers that have no meaning show as no offset.
SInt32 OffsetItem(const FinishingSettings& settings);
/// The pages of a subset, within what the dialog can show.
SInt32 ShownPagesPerSubset(const FinishingSettings& settings);
/// Takes an item over, and the pages of a subset with kOffsetItemSubsets.
void SetOffsetItem(FinishingSettings* settings, SInt32 item, SInt32 pagesPerSubset);

/// Shows the dialog (nib "FinishingDialogs", window "Offset"). The settings change on OK only. Returns the status of
/// loading the nib.
OSStatus RunModalOffsetDialog(CFBundleRef bundle, FinishingSettings* settings);

// The dialog that asks how a booklet is finished.
#pragma once

#include "platform/toolbox/Events.h"

/// Shows the dialog (nib "BookletCreation", window "BookletFinishing") with the choice that *foldOption (a BookletFold)
/// stands for. The choice replaces *foldOption when the user ends it with OK. The pictures show the outlines of the
/// booklet's pages when `drawOutlines` is set. paramErr without foldOption, else the status of loading the nib.
OSStatus RunModalBookletFinishingDialog(CFBundleRef bundle, Boolean drawOutlines, SInt32* foldOption);

// Its items: 1 no finishing, 2 fold, 3 fold and staple.

/// The item that shows a fold option. Options that do not finish a booklet show as no finishing.
SInt32 BookletFinishingItem(SInt32 foldOption);
SInt32 FoldOptionForBookletFinishingItem(SInt32 item);
/// The file name of an item's picture, constant.
CFStringRef BookletFinishingPicture(SInt32 item, bool drawOutlines);

// The dialogs that pick places on the sheet, with a picture of each: for one kind of finishing, and for several
// together.
#pragma once

#include "panels/paper_output/finishing_choices.h"

/// Shows the dialog (nib "FinishingDialogs", window "Position") with the choices of the kind that the printer offers,
/// the one with *value in front when it is among them. *value changes on OK only. paramErr for a kind that the printer
/// does not offer, else the status of loading the nib.
OSStatus RunModalPositionPicker(CFBundleRef bundle, OSType kind, SInt32* value);

/// The same for several kinds together (window "Multiple"): one choice, or none, of each part that the printer has. A
/// single one, and none at all, are what they would be by themselves.
OSStatus RunModalMultipleFinishingDialog(CFBundleRef bundle, SInt32* value);

// What the items of the finishing menu do.
#pragma once

#include "panels/paper_output/finishing_choices.h"

/// Carries a command of the finishing menu out on the settings. A kind with several choices is asked for in a dialog
/// first, and Cancel leaves the settings as they are. 'Sgbm' is another name of kFinishingSignatureBooklet.
///
/// eventNotHandledErr for any other command, that of the booklet creation included; else the status of showing the
/// dialog.
OSStatus CarryOutFinishingCommand(CFBundleRef bundle, OSType command, FinishingSettings* settings);

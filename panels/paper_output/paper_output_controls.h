// The controls of the Paper and Output panel: what they offer, and the settings in them.
#pragma once

#include "panels/paper_output/paper_output_context.h"

/// Finds the controls of the pane, fills their menus and takes away those for which the printer has nothing to choose.
void PreparePaperOutputControls(_PaperOutputContext* context);
/// Takes back what PreparePaperOutputControls() installed.
void ReleasePaperOutputControls(_PaperOutputContext* context);

/// Shows all settings, as far as there are controls yet.
void ShowPaperOutputSettings(const _PaperOutputContext& context);

/// The paper in words, with the separators when it is transparent, and the button for them.
void ShowStock(const _PaperOutputContext& context);
/// The finishing in words, and the marks of its menu.
void ShowFinishing(const _PaperOutputContext& context);
/// The sides, which nobody chooses for a booklet.
void ShowSides(const _PaperOutputContext& context);
void ShowCollateStaple(const _PaperOutputContext& context);

/// Enables the button of the job types that have something to set up.
void HideShowJobTypeSetupButton(const _PaperOutputContext& context);

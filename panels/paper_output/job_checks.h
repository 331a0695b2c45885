// What a job of a certain type needs before it can be sent.
#pragma once

#include "core/features/panel_interface.h"
#include "panels/paper_output/paper_output_sync.h"

enum class MissingForJob { nothing, passcode, faxRecipients };

/// What the job lacks: a passcode for secure print, recipients for a fax that the printer can send.
MissingForJob FindMissingForJob(const PaperOutputSettings& settings);

/// Looks at the settings of the Paper and Output panel, whose context it takes, and has the user put right what is
/// missing: a notice about the passcode, the fax setup for recipients. True when something was missing and the dialog
/// is to stay open.
bool AskForWhatJobLacks(PMPDEContext paperOutput);

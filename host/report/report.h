// What the program tells on standard output without printing anything: as lines for people, or as one JSON document for
// programs, whose fields docs/automation.md describes.
#pragma once

#include "host/job/job_setup.h"
#include "host/settings/printer.h"
#include "host/settings/result.h"
#include "platform/foundation/CFBundle.h"
#include "platform/toolbox/Windows.h"

#include <string>

enum class ReportForm { lines, json };

// Most give the program's end: with success, or with a failure whose line has not been told yet. `texts` is the
// program's own bundle.

/// Settings that cannot go together, a line each; unusableInput, without a line of its own, when there are any. Choices
/// that the printer does not offer are lines on standard error. The document has, beside these, what would be printed:
/// all settings and, where the setup has a document, its sheets.
Failure reportCheck(const JobSetup& setup, CFBundleRef texts, ReportForm form);

/// What a job's file puts on each sheet and tells the printer, in the words of the printer's PPD; no secrets. The
/// failure names the file: one that is no job, or whose PostScript ends with an error behind the sheets that were told.
Failure reportProof(const std::string& path, const Printer& printer, CFBundleRef texts, ReportForm form);

/// Every panel of the dialog's window with its controls and menus, and before them the window's other controls; each is
/// shown first.
void reportControls(WindowRef window, ReportForm form);

/// The print server's queues with their instances, the default one first. May wait for the server some seconds.
Failure reportPrinters(ReportForm form);

/// The user's presets by their names. Those that cannot be read are lines on standard error, or stand in the document.
Failure reportPresets(ReportForm form);

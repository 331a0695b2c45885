// What of a job's settings may be kept for other jobs.
//
// A secret is never kept: a passcode, a card number, an authorization. Nor is the printer, or what one document alone
// has: its name and its range of pages. The last used settings apply to a document of which nobody has thought yet, so
// they say only how the printer prints (paper, sides, finishing, quality, layout): no copies, no orientation, no job
// type, fax or notes, no watermark, no covers, inserts or exceptions.
#pragma once

#include "host/settings/settings_file.h"

/// What a named preset keeps.
JobSettings presetContent(const JobSettings& settings);

/// What the last used settings of a printer keep.
JobSettings lastUsedContent(const JobSettings& settings);

/// Whether a preset of the one settings is a preset of the other. An item that says nothing (0, false, an empty text or
/// list) is as good as a missing one.
bool isSamePreset(const JobSettings& one, const JobSettings& other);

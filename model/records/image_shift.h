// Image shift: how far the printed image moves on each side of the paper, to stay clear of tabs or of a binding.
#pragma once

#include "model/settings/job_context.h"
#include "platform/foundation/CFRef.h"

#include <cstddef>

/// Ten 32-bit words, the layout that dialogs and records share. Words without a name have no meaning here.
struct _IS_Options {
    SInt32 valid;  // 1 once initialised or read from a ticket
    SInt32 word2;
    SInt32 word3;
    SInt32 option;  // what the user chose; kTicketValueUnset for no shift
    SInt32 word5;
    SInt32 inches;  // 1: the shifts are in inches, 0: in millimetres
    SInt32 x1;      // side 1
    SInt32 x2;      // side 2
    SInt32 y1;
    SInt32 y2;

    bool operator==(const _IS_Options&) const = default;
};
static_assert(sizeof(_IS_Options) == 10 * sizeof(SInt32));
static_assert(offsetof(_IS_Options, option) == 3 * sizeof(SInt32));
static_assert(offsetof(_IS_Options, inches) == 5 * sizeof(SInt32));
static_assert(offsetof(_IS_Options, x1) == 6 * sizeof(SInt32) && offsetof(_IS_Options, x2) == 7 * sizeof(SInt32));
static_assert(offsetof(_IS_Options, y1) == 8 * sizeof(SInt32) && offsetof(_IS_Options, y2) == 9 * sizeof(SInt32));

/// A dialog that edits image shift options.
struct _ImageShiftContext {
    CFBundleRef bundle;    // lent
    _IS_Options* options;  // lent
    SInt32 words[3];       // the dialog's own
};

/// Makes the options valid with no shift, in inches; the shifts themselves and word 5 stay as they are. A context gets
/// the bundle and the options, its own words become 0. Context and options may be null.
void ImageShiftInitialize(CFBundleRef bundle, _ImageShiftContext* context, _IS_Options* options);

/// A new dictionary of the options; nothing when they are null or not valid, or for no shift. The same for every part
/// of a job.
[[nodiscard]] CFRef<CFMutableDictionaryRef> ImageShiftCreateTicketFromOptions(const _IS_Options* options,
                                                                              JobContext context);

/// Makes the options those of a dictionary, and valid. What it lacks becomes no shift, inches and 0.
void ImageShiftSetOptionsFromTicket(_IS_Options* options, CFDictionaryRef ticket);

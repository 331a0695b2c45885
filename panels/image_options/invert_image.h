// Negative and mirrored pages: the options, their dictionary in the ticket, and their controls in the Image Options
// panel.
#pragma once

#include "platform/foundation/CFRef.h"
#include "platform/printing/PMTicket.h"
#include "platform/toolbox/ToolboxTypes.h"

struct II_Options {
    bool valid;  // false before InvertImageInitialize
    bool negative;
    bool mirror;
};

/// The controls: the group, and its two check boxes. Null until the panel is opened.
struct InvertImageContext {
    ControlRef group;
    ControlRef negative;
    ControlRef mirror;
};

/// Neither option, no controls.
void InvertImageInitialize(InvertImageContext* context, II_Options* options);

/// Takes the controls from the panel's pane.
void InvertImageOpen(ControlRef pane, InvertImageContext* context);

/// Shows the options in the controls.
void InvertImageSetControls(const InvertImageContext& context, const II_Options& options);
/// The options as the controls show them; those of the record while there are no controls.
II_Options InvertImageGetOptions(const InvertImageContext& context, const II_Options& options);

/// The options of a ticket; what it lacks is off.
II_Options InvertImageReadOptions(PMTicketRef ticket);
/// Writes the options, those that are off too. Nothing happens for a record that is not valid.
void InvertImageWriteOptions(const II_Options& options, PMTicketRef ticket);
/// The ticket's dictionary of the options.
CFRef<CFDictionaryRef> InvertImageCreateTicketFromOptions(const II_Options& options);

/// The file name of the picture of a page with these options, constant.
CFStringRef InvertImagePicture(const II_Options& options);

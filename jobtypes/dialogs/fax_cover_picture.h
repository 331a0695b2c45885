// The pictures that the user keeps for cover sheets.
#pragma once

#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"

/// Asks for a picture file and puts it into the store; its name there is the file's, and a picture that has the name
/// already is replaced. Null when the user wants none, or after a notice when the file is no picture.
CFRef<CFStringRef> RunModalFaxCoverPictureChooser(CFBundleRef bundle);

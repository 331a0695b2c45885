// The plug-in's help.
#pragma once

#include "platform/foundation/CFBase.h"

/// Shows an anchor of the bundle's help book when one is given, else a page of it (null: the start page). paramErr
/// when the bundle names no help book, else the help viewer's status.
OSStatus DisplayHelp(CFBundleRef bundle, CFStringRef anchor, CFStringRef page);

// Bundles inside the plug-in.
#pragma once

#include "platform/foundation/CFBase.h"

/// Opens the bundle of that name in the plug-in's PlugIns folder and loads its executable. True with a new reference
/// in *privateBundle, which the caller releases; false with null there.
Boolean LoadPrivateBundle(CFBundleRef bundle, CFStringRef name, CFBundleRef* privateBundle);

// The texts of the dialog's own bundle.
#pragma once

#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFRef.h"

#include <string>

/// The text of a key in the table "Localizable".
CFRef<CFStringRef> localized(CFBundleRef bundle, CFStringRef key);

/// The same with `value` in place of "%1".
CFRef<CFStringRef> localized(CFBundleRef bundle, CFStringRef key, const std::string& value);

// The texts of the dialog's own bundle.
#pragma once

#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFRef.h"

#include <string>
#include <vector>

/// The text of a key in the table "Localizable".
CFRef<CFStringRef> localized(CFBundleRef bundle, CFStringRef key);

/// The same with `value` in place of "%1".
CFRef<CFStringRef> localized(CFBundleRef bundle, CFStringRef key, const std::string& value);

/// The same with values in place of "%1", "%2" and so on, nine at the most.
CFRef<CFStringRef> localized(CFBundleRef bundle, CFStringRef key, const std::vector<std::string>& values);

/// The sentences, each in a line of its own; several with marks in front.
std::string listed(CFBundleRef bundle, const std::vector<std::string>& sentences);

/// Words with the language's comma between them; empty ones are left out.
std::string joined(CFBundleRef bundle, const std::vector<std::string>& words);

/// What fits on one line of the dialog, in UTF-16 code units: of a longer name the middle is left out.
inline constexpr std::size_t kOneLine = 38;
std::string shortened(const std::string& name, std::size_t most = kOneLine);

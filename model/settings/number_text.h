// Numbers as the user writes them.
#pragma once

#include "platform/foundation/CFBase.h"

/// A new string of the value in the user's notation with exactly that many decimal places (0 to 15).
CFStringRef CreateLocalizedCFStringFromNumberWithDecimals(double value, CFIndex decimals);

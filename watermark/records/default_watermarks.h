// The watermarks that a user has before making any.
#pragma once

#include "platform/foundation/CFBase.h"

/// Stores the three watermarks draft, confidential and copy, and their list in this order. Their texts, which are their
/// names, are the bundle's for the user's language.
///
/// Their position is the lower left corner of the text's box, y upwards, which the text is turned about: the English
/// texts stand in the middle of a portrait Letter page. Offsets of 0 ask for the middle of whatever page it is.
void CreateDefaultWatermarks(CFBundleRef bundle);

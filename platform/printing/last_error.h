// The reason of the last failure, as PMGetLastErrorText hands it out.
#pragma once

#include "platform/foundation/CFBase.h"

#include <string>
#include <string_view>

/// Forgets the last reason; every call that may fail begins with it.
void clearLastError();

/// Keeps that line and returns the status.
OSStatus failWith(OSStatus status, std::string_view subject, std::string_view reason);

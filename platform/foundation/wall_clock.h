// The system's clock as the platform reads it. Private to the platform; tests put another one in its place.
#pragma once

#include <ctime>

/// Seconds since 1 January 1970, 00:00 UTC.
using WallClock = std::time_t (*)();

/// Puts a clock in the place of the system's; null brings that back.
void setWallClock(WallClock clock);

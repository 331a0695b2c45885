// When the program has come how far, for the benchmark of its start.
#pragma once

/// Whether $TAVRO_START_MARKS is set: the program then prints its marks and leaves at its first frame.
bool startIsMeasured();
/// Whether it is "first-picture": the program goes on until the preview has its first one.
bool firstPictureIsMeasured();

/// Prints "NAME MICROSECONDS" (of the monotonic clock) when the start is measured.
void markStart(const char* name);
